// Bayes factors for a proportion and for a rate, as natural logarithms of null over alternative.
//
// Marginal likelihoods of conjugate priors, each relative to the likelihood at one reference value: in a
// billion cases the logarithms themselves reach 1e10, and their difference would keep six decimals.
// Stirling's formula turns what is left into deviances (see StableLog.h), which are as small as the
// difference is.
#pragma once

namespace BayesComponent {

// Shapes of a beta prior, or shape and rate of a gamma prior.
struct ConjugatePrior {
  double fFirst;
  double fSecond;
  // An improper prior has no marginal likelihood.
  bool IsProper() const { return fFirst > 0 && fSecond > 0; }
};

// `successes` among `n` cases. The null is a proportion strictly between 0 and 1 or a proper beta prior.
double LogBF01Binomial(double successes, double n, double nullValue, const ConjugatePrior& alternative);
double LogBF01Binomial(double successes, double n, const ConjugatePrior& null,
                       const ConjugatePrior& alternative);

// Counts of this sum in `n` cases. The null is a rate > 0 or a proper gamma prior.
double LogBF01Poisson(double sum, double n, double nullValue, const ConjugatePrior& alternative);
double LogBF01Poisson(double sum, double n, const ConjugatePrior& null, const ConjugatePrior& alternative);

}  // namespace BayesComponent
