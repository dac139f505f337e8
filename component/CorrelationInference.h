// Inference on the correlation of one pair of variables, by the coefficient that the settings choose.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "component/Results.h"
#include "component/SettingsView.h"
#include "component/numeric/RandomStream.h"
#include "component/numeric/RankStatistics.h"

namespace BayesComponent {

// What the data say about a pair: its cases and its sample coefficient (NaN when it can't be computed), and
// the cases themselves for the coefficient that needs them.
struct PairSample {
  double fN;
  bool fHasConstant;
  double fCoefficient;
  std::vector<WeightedPair> fvCases;
  // Whether curves are wanted: without them nobody asks for the likelihood.
  bool fIsDrawn = false;
};

struct PairInference {
  // Nothing unless the settings ask for it.
  std::optional<LogIntegral> fLogBF01;
  // The quadrature failed and the Bayes factor is a Monte Carlo estimate.
  bool fIsEstimate = false;
  // Null: improper.
  std::shared_ptr<const Distribution> fPosterior;
  bool fPosteriorConverged = true;
  Likelihood fLikelihood;
  Density fPrior;
};

// `isCancelled` is asked now and then; once it says yes the result is worthless.
using PairMethod = PairInference (*)(const PairSample& sample, const BSNSettings& settings,
                                     RandomStream& random, const std::function<bool()>& isCancelled);

PairInference InferPearson(const PairSample& sample, const BSNSettings& settings, RandomStream& random,
                           const std::function<bool()>& isCancelled);
PairInference InferSpearman(const PairSample& sample, const BSNSettings& settings, RandomStream& random,
                            const std::function<bool()>& isCancelled);
PairInference InferKendall(const PairSample& sample, const BSNSettings& settings, RandomStream& random,
                           const std::function<bool()>& isCancelled);

}  // namespace BayesComponent
