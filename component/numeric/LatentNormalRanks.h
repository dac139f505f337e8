// Inference on the correlation of two latent normal variables of which only the ranks are observed, by data
// augmentation.
//
// J. van Doorn, A. Ly, M. Marsman & E.-J. Wagenmakers (2020), Bayesian rank-based hypothesis testing for the
// rank sum test, the signed rank test, and Spearman's rho, J. Appl. Stat. 47:2984-3006. The latent
// pairs are bivariate normal with means 0 and variances 1, their ranks are the sample's, ties share their
// bounds. Two deviations: rho is drawn by slice sampling, which needs no tuning; and each margin is also
// shifted and stretched as a whole, since single values between two neighbours move a whole margin hardly at
// all (J. S. Liu & C. Sabatti, 2000, Generalised Gibbs sampler, Biometrika 87:353-369).
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "component/numeric/Distribution.h"
#include "component/numeric/RandomStream.h"
#include "component/numeric/RankStatistics.h"

namespace BayesComponent {

// The density of rho given the latent pairs, on the scale u = artanh(rho): it depends on them through two
// sums.
class ConditionalOfRho {
 public:
  // `sumPlus`: the sum of ((x + y)/2)^2, `sumMinus`: that of ((x - y)/2)^2 over n pairs; prior
  // (1 - rho^2)^c.
  ConditionalOfRho(double n, double c, double sumPlus, double sumMinus);
  double LogKernel(double u) const;
  // Finds the normalising constant, which LogDensity needs.
  // `draw`: a typical value of u.
  void Normalise(double draw);
  double LogDensity(double u) const { return LogKernel(u) - fLogNormaliser; }
  // Less than half the standard deviation of u.
  double Step() const { return fStep; }

 private:
  double fPower;
  double fStep;
  double fSumPlus;
  double fSumMinus;
  double fLogNormaliser = 0;
};

// The posterior of Spearman's coefficient (6/pi) asin(rho/2): moments and quantiles from the draws, the
// density from the mean of conditional densities.
class RankPosterior : public Distribution {
 public:
  RankPosterior(std::vector<double> draws, std::vector<ConditionalOfRho> conditionals);
  std::optional<double> Mode() const override { return fMode; }
  std::optional<double> Mean() const override { return fMean; }
  std::optional<double> Variance() const override { return fVariance; }
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

 private:
  std::vector<double> fvDraws;
  std::vector<ConditionalOfRho> fvConditionals;
  double fMean;
  double fVariance;
  double fMode;
};

struct LatentQuestion {
  double fC;      // of the prior (1 - rho^2)^c, c > -1
  double fNullU;  // artanh of the null value of rho
  long fSamples;  // draws that are kept, 1 or more
};

struct LatentAnswer {
  std::shared_ptr<const RankPosterior> fPosterior;
  // ln of the posterior density of u at the null value, the mean over all draws of the conditional one.
  double fLogDensityAtNull;
};

// The weights are whole numbers of cases; neither variable is constant. `isCancelled` is asked now and then;
// once it says yes the answer is worthless.
LatentAnswer InferLatentRanks(const std::vector<WeightedPair>& pairs, const LatentQuestion& question,
                              RandomStream& random, const std::function<bool()>& isCancelled);

}  // namespace BayesComponent
