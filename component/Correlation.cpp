// Correlations of all pairs of variables.
#include <algorithm>
#include <cmath>
#include <limits>

#include "component/Analysis.h"
#include "component/CorrelationInference.h"
#include "component/CorrelationRecord.h"
#include "component/Tasks.h"
#include "component/numeric/PairMoments.h"

namespace BayesComponent {

namespace {

using Data = MCBSN_850::BSNPearsonCorrelationOutputStats::Data;

constexpr double kLeastCases = 3;

// What one pass keeps of the data: all that a coefficient needs of every pair.
class PairData {
 public:
  virtual ~PairData() = default;
  // Values of all variables, NaN for those that the case lacks.
  virtual void Add(const std::vector<double>& values, double weight) = 0;
  // After the last case.
  virtual void Close() {}
  virtual PairSample SampleOf(std::size_t pair) const = 0;
};

using Pairs = std::vector<std::pair<int, int>>;

class MomentData : public PairData {
 public:
  MomentData(std::size_t variables, const Pairs& pairs) : fMoments(variables, pairs) {}

  void Add(const std::vector<double>& values, double weight) override { fMoments.Add(values, weight); }
  void Close() override { fMoments.Close(); }

  PairSample SampleOf(std::size_t pair) const override {
    const CoMoments& moments = fMoments.Of(pair);
    return {moments.Count(), moments.HasConstant(), moments.Correlation(), {}};
  }

 private:
  PairMoments fMoments;
};

// The cases themselves: ranks need them all.
class CaseData : public PairData {
 public:
  CaseData(const Pairs& pairs, double (*coefficient)(const std::vector<WeightedPair>&))
      : fvPairs(pairs), fpCoefficient(coefficient) {}

  void Add(const std::vector<double>& values, double weight) override {
    fSize = values.size();
    fvValues.insert(fvValues.end(), values.begin(), values.end());
    fvWeights.push_back(weight);
  }

  PairSample SampleOf(std::size_t pair) const override {
    PairSample sample{0, false, 0, {}};
    for (std::size_t i = 0; i < fvWeights.size(); ++i) {
      const double first = fvValues[i * fSize + static_cast<std::size_t>(fvPairs[pair].first)];
      const double second = fvValues[i * fSize + static_cast<std::size_t>(fvPairs[pair].second)];
      if (std::isnan(first) || std::isnan(second)) continue;
      sample.fvCases.push_back({first, second, fvWeights[i]});
      sample.fN += fvWeights[i];
    }
    sample.fCoefficient = fpCoefficient(sample.fvCases);
    sample.fHasConstant = std::isnan(sample.fCoefficient);
    return sample;
  }

 private:
  const Pairs& fvPairs;
  double (*fpCoefficient)(const std::vector<WeightedPair>&);
  std::size_t fSize = 0;
  std::vector<double> fvValues;
  std::vector<double> fvWeights;
};

double KendallOf(const std::vector<WeightedPair>& pairs) {
  return KendallTauB(pairs);
}

// The data and the method of each coefficient.
struct Coefficient {
  BSNConst::CorrTests fTest;
  std::unique_ptr<PairData> (*fMakeData)(std::size_t variables, const Pairs& pairs);
  PairMethod fInfer;
};

const Coefficient kCoefficients[] = {
    {BSNConst::Pearson,
     [](std::size_t variables, const Pairs& pairs) -> std::unique_ptr<PairData> {
       return std::make_unique<MomentData>(variables, pairs);
     },
     InferPearson},
    {BSNConst::Spearman,
     [](std::size_t, const Pairs& pairs) -> std::unique_ptr<PairData> {
       return std::make_unique<CaseData>(pairs, SpearmanRho);
     },
     InferSpearman},
    {BSNConst::Kendall,
     [](std::size_t, const Pairs& pairs) -> std::unique_ptr<PairData> {
       return std::make_unique<CaseData>(pairs, KendallOf);
     },
     InferKendall},
};

const Coefficient* CoefficientOf(const BSNSettings& settings) {
  const auto* row = std::find_if(std::begin(kCoefficients), std::end(kCoefficients),
                                 [&](const Coefficient& c) { return c.fTest == settings.GetCorrTest(); });
  return row == std::end(kCoefficients) ? nullptr : row;
}

Pairs AllPairs(std::size_t nVariables) {
  Pairs pairs;
  const int n = static_cast<int>(nVariables);
  for (int i = 0; i < n; ++i) {
    for (int j = i + 1; j < n; ++j) pairs.emplace_back(i, j);
  }
  return pairs;
}

// Everything about one pair that is computed apart from the others.
struct PairResult {
  double fN = 0;
  double fCoefficient = kMissing;
  PairInference fInference;
  PosteriorRow fPosterior{kMissing, kMissing, kMissing, kMissing, kMissing};
  CurveSet fCurves;
  StatusList fStatuses;
};

class Correlation : public Analysis {
 public:
  Correlation(const BSNSettings& settings, const Coefficient& coefficient, StatusList& statuses)
      : fSettings(settings),
        fCoefficient(coefficient),
        fStatuses(statuses),
        fvPairs(AllPairs(settings.GetCovariates().size())),
        fpData(coefficient.fMakeData(settings.GetCovariates().size(), fvPairs)),
        fvNs(settings.GetCovariates().size(), 0),
        fvValues(settings.GetCovariates().size()) {}

  std::vector<int> RequiredSlots() const override { return fSettings.GetCovariates(); }

  void Accumulate(const double* record, double weight) override {
    for (std::size_t i = 0; i < fvValues.size(); ++i) {
      const double value = record[fSettings.GetCovariates()[i]];
      fvValues[i] = IsGiven(value) ? value : std::numeric_limits<double>::quiet_NaN();
      if (IsGiven(value)) fvNs[i] += weight;
    }
    fpData->Add(fvValues, weight);
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    fpData->Close();
    std::vector<PairResult> results(fvPairs.size());
    const Cancellation cancellation(fSettings);
    RunTasks(fSettings, results.size(), [&](std::size_t pair) {
      if (!cancellation()) results[pair] = Infer(pair, cancellation);
    });
    if (cancellation()) {
      fStatuses.Fail(kCancelled);
      return nullptr;
    }
    auto data = std::make_shared<Data>();
    data->fvPairs = fvPairs;
    data->fvVariableNs = fvNs;
    for (const PairResult& result : results) Append(result, *data);
    return std::make_unique<MCBSN_850::BSNPearsonCorrelationOutputStats>(data);
  }

 private:
  // Each pair has random numbers of its own, so that neither order nor threads matter.
  PairResult Infer(std::size_t pair, const Cancellation& isCancelled) const {
    PairSample sample = fpData->SampleOf(pair);
    sample.fIsDrawn = static_cast<int>(pair) < fSettings.GetMaxNPlots();
    PairResult result;
    result.fN = sample.fN;
    if (sample.fN >= kLeastCases) result.fCoefficient = Shown(sample.fCoefficient);
    if (const std::optional<StatusCode> obstacle = ObstacleOf(sample)) {
      result.fStatuses.Warn(*obstacle);
      return result;
    }
    RandomStream random(fSettings.GetRandomSeed(), pair);
    result.fInference = fCoefficient.fInfer(sample, fSettings, random, isCancelled);
    if (WantsPosterior(fSettings)) Describe(sample, result);
    return result;
  }

  static std::optional<StatusCode> ObstacleOf(const PairSample& sample) {
    // Sums of squares and products leave this much doubt about the last digits of r.
    constexpr double kRounding = 8 * std::numeric_limits<double>::epsilon();
    if (sample.fN < kLeastCases) return kTooFewCasesForPair;
    if (sample.fHasConstant) return kConstantInPair;
    // Sums left the range of a double.
    if (std::isnan(sample.fCoefficient)) return kNumericFailure;
    if (std::abs(sample.fCoefficient) >= 1 - kRounding) return kPerfectCorrelation;
    return {};
  }

  void Describe(const PairSample& sample, PairResult& result) const {
    const PairInference& inference = result.fInference;
    if (!inference.fPosterior) result.fStatuses.Warn(kNoPosteriorOfCounts);
    if (!inference.fPosteriorConverged) result.fStatuses.Warn(kIntegralNotConverged);
    result.fPosterior = Characterise(inference.fPosterior.get(), fSettings.GetCILevel(), result.fStatuses);
    if (!sample.fIsDrawn) return;
    result.fCurves =
        DrawCurves(fSettings, inference.fLikelihood, inference.fPosterior.get(), inference.fPrior);
  }

  void Append(const PairResult& result, Data& data) {
    data.fvPairNs.push_back(result.fN);
    data.fvCoefficients.push_back(result.fCoefficient);
    fStatuses.Warn(result.fStatuses);
    if (result.fInference.fLogBF01) {
      AppendBayesFactor(*result.fInference.fLogBF01, data.fBayesFactors, fStatuses);
    } else {
      AppendNoBayesFactor(data.fBayesFactors);
    }
    data.fvAreEstimates.push_back(result.fInference.fIsEstimate);
    data.fPosterior.Append(result.fPosterior);
    data.fCurves.Append(result.fCurves);
  }

  const BSNSettings& fSettings;
  const Coefficient& fCoefficient;
  StatusList& fStatuses;
  Pairs fvPairs;
  std::unique_ptr<PairData> fpData;
  std::vector<double> fvNs;
  std::vector<double> fvValues;
};

}  // namespace

std::unique_ptr<Analysis> MakeCorrelation(const BSNSettings& settings, StatusList& statuses) {
  const Coefficient* coefficient = CoefficientOf(settings);
  if (!coefficient) return nullptr;
  return std::make_unique<Correlation>(settings, *coefficient, statuses);
}

}  // namespace BayesComponent
