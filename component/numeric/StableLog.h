// Differences of large logarithms, each as one small number.
#pragma once

namespace BayesComponent {

// ln Gamma(x) minus Stirling's (x - 1/2) ln x - x + ln(2 pi)/2, for x > 0.
double StirlingRemainder(double x);

// The deviance term x ln(x/m) + m - x, for x >= 0 and m > 0: 0 at x = m, positive elsewhere.
// C. Loader (2000), Fast and accurate computation of binomial probabilities, report, Bell Laboratories.
double Deviance(double x, double m);

// ln Gamma(x) - ln Gamma(x + 1/2), for x > 0.
double LogGammaHalfStep(double x);

}  // namespace BayesComponent
