// Inference on Pearson's correlation rho of a bivariate normal population from the sample's r and n, the
// means and scales integrated out over flat and 1/(s1 s2) priors.
#pragma once

#include <memory>

#include "component/numeric/CorrelationDistribution.h"
#include "component/numeric/RandomStream.h"

namespace BayesComponent {

struct PearsonSample {
  double fR;  // strictly between -1 and 1
  double fN;
};

// The likelihood of rho that r alone carries. In u = artanh(rho) and z = artanh(r), as functions of the
// distance u - z: cosh(u - z)^-(n - 3/2) cosh(u)^-1/2 2F1(1/2, 1/2; n - 1/2; (1 + rho r)/2), the constant
// cosh(z)^(n - 3/2) left out. H. Hotelling (1953), J. R. Stat. Soc. B 15:193-232, on that scale.
class ReducedLikelihood {
 public:
  // n > 1, not only whole.
  explicit ReducedLikelihood(const PearsonSample& sample);
  double LogAt(double distance) const;
  // Derivative of the above.
  double SlopeAt(double distance) const;
  double Anchor() const { return fZ; }

  // The same times (1 - rho^2)^c drho/du: a posterior's density of u, and the rough width of its peak.
  LogFunction Times(double c) const;
  double WidthTimes(double c) const;
  // Whether that has a finite integral.
  bool IsProperTimes(double c) const { return fN + 1 + 2 * c > 0; }

 private:
  double fZ;
  double fN;
};

// The posterior under the prior (1 - rho^2)^c; null when it is improper. It has no mode when its density is
// unbounded.
std::unique_ptr<CorrelationDistribution> PearsonPosterior(const PearsonSample& sample, double c,
                                                          const GaussLobatto& quadrature);

// ln of (1 - rho^2)^(n/2) (1 - rho r)^-n, the profile likelihood; its maximum is 0. `distance` in u from z.
double LogProfileLikelihood(const PearsonSample& sample, double distance);
// The same, normalised over -1 < rho < 1.
std::unique_ptr<CorrelationDistribution> NormalisedProfileLikelihood(const PearsonSample& sample,
                                                                     const GaussLobatto& quadrature);

// ln BF01 of rho = rho0 with -1 < rho0 < 1 under the Jeffreys-Zellner-Siow prior: R. Wetzels & E.-J.
// Wagenmakers (2012), Psychon. Bull. Rev. 19:1057-1064, after shifting Fisher's z by that of rho0.
LogIntegral LogBF01Jzs(const PearsonSample& sample, double rho0, const GaussLobatto& quadrature);
// The same as a mean over `samples` >= 1 draws of g from its prior.
double LogBF01Jzs(const PearsonSample& sample, double rho0, int samples, RandomStream& random);

// The fraction b of the likelihood, 0 < b < 1, makes the prior (1 - rho^2)^c comparable.
struct FractionalPrior {
  double fC;
  double fB;
};

// ln BF01 of rho = rho0. A. O'Hagan (1995), Fractional Bayes factors for model comparison, J. R. Stat. Soc. B
// 57:99-138. NaN unless n b > 1 and both integrals are finite.
LogIntegral LogBF01Fractional(const PearsonSample& sample, double rho0, const FractionalPrior& prior,
                              const GaussLobatto& quadrature);
// The same with the integrals by importance sampling, `samples` >= 1 draws each.
double LogBF01Fractional(const PearsonSample& sample, double rho0, const FractionalPrior& prior, int samples,
                         RandomStream& random);

}  // namespace BayesComponent
