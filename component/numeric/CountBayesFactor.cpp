#include "component/numeric/CountBayesFactor.h"

#include <cmath>
#include <numbers>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

// ln B(a, b).
double LogBeta(double a, double b) {
  const double n = a + b;
  return a * std::log(a / n) + b * std::log(b / n) + 0.5 * std::log(2 * std::numbers::pi * n / a / b) +
         StirlingRemainder(a) + StirlingRemainder(b) - StirlingRemainder(n);
}

// ln of B(a + x, b + n - x)/B(a, b) over p^x (1 - p)^(n - x).
double LogMarginal(double x, double n, double p, const ConjugatePrior& prior) {
  const double a = prior.fFirst;
  const double b = prior.fSecond;
  const double total = n + a + b;
  const double first = a + x;
  const double second = b + (n - x);
  return Deviance(first, total * p) + Deviance(second, total * (1 - p)) +
         0.5 * std::log(2 * std::numbers::pi * total / first / second) + StirlingRemainder(first) +
         StirlingRemainder(second) - StirlingRemainder(total) + a * std::log(p) + b * std::log1p(-p) -
         LogBeta(a, b);
}

// ln of the integral of rate^sum exp(-n rate) over the prior, over rate^sum exp(-n rate) at one rate.
double LogMarginalRate(double sum, double n, double rate, const ConjugatePrior& prior) {
  const double a = prior.fFirst;
  const double b = prior.fSecond;
  const double shape = a + sum;
  return Deviance(shape, (b + n) * rate) + 0.5 * std::log(2 * std::numbers::pi / shape) +
         StirlingRemainder(shape) + a * std::log(b * rate) - b * rate - std::lgamma(a);
}

}  // namespace

double LogBF01Binomial(double successes, double n, double nullValue, const ConjugatePrior& alternative) {
  return -LogMarginal(successes, n, nullValue, alternative);
}

double LogBF01Binomial(double successes, double n, const ConjugatePrior& null,
                       const ConjugatePrior& alternative) {
  const double p = (successes + 1) / (n + 2);
  return LogMarginal(successes, n, p, null) - LogMarginal(successes, n, p, alternative);
}

double LogBF01Poisson(double sum, double n, double nullValue, const ConjugatePrior& alternative) {
  return -LogMarginalRate(sum, n, nullValue, alternative);
}

double LogBF01Poisson(double sum, double n, const ConjugatePrior& null, const ConjugatePrior& alternative) {
  const double rate = (sum + 1) / (n + 1);
  return LogMarginalRate(sum, n, rate, null) - LogMarginalRate(sum, n, rate, alternative);
}

}  // namespace BayesComponent
