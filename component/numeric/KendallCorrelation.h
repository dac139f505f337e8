// Inference on Kendall's tau by the asymptotic normality of its standardised estimate.
//
// J. van Doorn, A. Ly, M. Marsman & E.-J. Wagenmakers (2018), Bayesian inference for Kendall's rank
// correlation coefficient, Am. Stat. 72:303-308. A rough approximation for n below 20 or strong association.
#pragma once

#include <memory>

#include "component/numeric/CorrelationDistribution.h"

namespace BayesComponent {

class KendallLikelihood {
 public:
  // tau-b of n cases; its standardised T* = 3 tau sqrt(n (n - 1)) / sqrt(2 (2n + 5)) is taken as normal with
  // mean 1.5 sqrt(n) tau and variance 1.
  KendallLikelihood(double tau, double n);
  // ln of the likelihood of a population value, relative to its maximum over [-1, 1].
  double LogOf(double tau) const;
  // u of the value at which the likelihood is largest, or of the last one before +-1.
  double Anchor() const { return fAnchor; }

  // The likelihood times (1 - rho^2)^c drho/du as a function of the distance in u from Anchor(): a
  // posterior's density of u, and the rough width of its peak.
  LogFunction Times(double c) const;
  double WidthTimes(double c) const;
  // ln BF01 of tau = tau0 under that prior, normalised, from ln of the integral of the above.
  double LogBF01(double tau0, double c, double lnIntegral) const;

  // The posterior of tau under the prior (1 - rho^2)^c, tau = (2/pi) asin(rho). Null for an improper prior:
  // this likelihood doesn't vanish at +-1, so that the posterior is improper too.
  std::unique_ptr<CorrelationDistribution> Posterior(double c, const GaussLobatto& quadrature) const;
  // The likelihood, normalised over [-1, 1].
  std::unique_ptr<CorrelationDistribution> Normalised(const GaussLobatto& quadrature) const;

 private:
  double LogAt(double distance) const;
  std::optional<double> Mode(double c) const;

  double fSlope;     // 1.5 sqrt(n)
  double fEstimate;  // T* / slope, beyond +-1 for a small sample
  double fAnchor;
};

}  // namespace BayesComponent
