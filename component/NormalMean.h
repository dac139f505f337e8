// Inference on one normal mean: a test variable, or the differences of a pair.
#pragma once

#include <memory>

#include "component/Records.h"
#include "component/Results.h"
#include "component/SettingsView.h"
#include "component/StatusList.h"
#include "component/VariancePrior.h"
#include "component/numeric/Moments.h"
#include "component/numeric/NormalBayesFactor.h"

namespace BayesComponent {

// The likelihood of a normal mean with a known variance.
Likelihood MeanLikelihood(double n, double mean, double variance);
// The profile likelihood of a mean of `n` cases, the variance being that of `allCases` >= n cases with this
// sum of squares about their means.
Likelihood MeanProfileLikelihood(double n, double mean, double allCases, double sumOfSquares);

// The codes that tell a variable from a pair.
struct MeanStatusCodes {
  StatusCode fTooFewCases;
  StatusCode fConstant;
};

// What one test asks, and where its statuses point.
struct MeanQuestion {
  double fNullValue;
  double fKnownVariance;  // missing: unknown
  double fG;              // of the alternative; missing: not given
  int fStatusDatum;
};

class NormalMean {
 public:
  NormalMean(const BSNSettings& settings, const MeanStatusCodes& codes, StatusList& statuses);

  // Adds a row with everything that the settings ask for. A sum of squares up to `roundingNoise` is that of a
  // constant.
  void Append(const Moments& sample, double roundingNoise, std::size_t test, int statusDatum,
              MeanTestColumns& columns);

 private:
  // Count, mean and sum of squares; the latter 0 for constants.
  struct Sample {
    double fN;
    double fMean;
    double fDistance;  // mean minus null value
    double fSumOfSquares;
  };
  struct Inference {
    std::unique_ptr<const Distribution> fPosterior;  // null: improper
    std::shared_ptr<const Distribution> fPrior;      // null: flat
  };

  MeanTestRow Test(const Sample& sample, const MeanQuestion& question);
  LogIntegral LogBayesFactor(const MeanTest& test, const MeanQuestion& question);
  void Report(const Sample& sample, const MeanQuestion& question);
  Inference Infer(const Sample& sample, const MeanQuestion& question);
  Inference InferWithKnownVariance(const Sample& sample, double variance);
  Inference InferConjugate(const Sample& sample, const VariancePrior& prior) const;
  Inference InferNoninformative(const Sample& sample, const VariancePrior& prior, int statusDatum);
  VariancePrior UsableVariancePrior();

  const BSNSettings& fSettings;
  MeanStatusCodes fCodes;
  StatusList& fStatuses;
  GaussLobatto fQuadrature;
  RandomStream fRandom;
};

}  // namespace BayesComponent
