// Correlations on the scale u = artanh(rho) (R. A. Fisher's z), on which likelihoods, priors and posteriors
// have simple tails, and the coefficients that are functions of it.
#pragma once

namespace BayesComponent {

// ln cosh u, to the last digits near 0 and far out.
double LogCosh(double u);

// A coefficient as an increasing function of u.
struct CoefficientScale {
  double (*fValue)(double u);
  // Value(u + distance) - Value(u), without cancellation.
  double (*fDifference)(double u, double distance);
  // ln of the derivative of Value.
  double (*fLogSlope)(double u);
  // The u of a coefficient in [-1, 1]; infinite at the ends.
  double (*fInverse)(double value);
};

// Pearson's rho itself, and what Spearman's and Kendall's coefficients are in a bivariate normal population
// with this rho: (6/pi) asin(rho/2) and (2/pi) asin(rho).
// W. H. Kruskal (1958), Ordinal measures of association, J. Am. Stat. Assoc. 53:814-861.
extern const CoefficientScale kPearsonScale;
extern const CoefficientScale kSpearmanScale;
extern const CoefficientScale kKendallScale;

// The prior proportional to (1 - rho^2)^c as a function of u.
class CorrelationPrior {
 public:
  explicit CorrelationPrior(double c) : fC(c) {}
  bool IsProper() const { return fC > -1; }
  // ln of the density of u, normalised when it is proper.
  double LogDensity(double u) const;
  // The density of a coefficient at one of its values, likewise.
  double Density(const CoefficientScale& scale, double value) const;

 private:
  double fC;
};

}  // namespace BayesComponent
