// One-sample tests of proportions.
#include <cmath>

#include "component/Analysis.h"
#include "component/CountInference.h"
#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

// The code of a success in the record; that of a failure is 0, and no other value counts.
constexpr int kSuccess = 1;

class BinomialModel : public CountModel {
 public:
  ConjugatePrior JeffreysPrior() const override { return {0.5, 0.5}; }

  bool IsNullValue(double value) const override { return value > 0 && value < 1; }

  ConjugatePrior Update(const ConjugatePrior& prior, const CountSample& sample) const override {
    return {prior.fFirst + sample.fTotal, prior.fSecond + (sample.fN - sample.fTotal)};
  }

  std::unique_ptr<const Distribution> DistributionOf(const ConjugatePrior& prior) const override {
    return std::make_unique<BetaDistribution>(prior.fFirst, prior.fSecond);
  }

  Density KernelOf(const ConjugatePrior& prior) const override {
    return [prior](double p) { return std::pow(p, prior.fFirst - 1) * std::pow(1 - p, prior.fSecond - 1); };
  }

  Likelihood LikelihoodOf(const CountSample& sample) const override {
    const double failures = sample.fN - sample.fTotal;
    const auto lnL = [sample, failures](double p) {
      return -Deviance(sample.fTotal, sample.fN * p) - Deviance(failures, sample.fN * (1 - p));
    };
    return {lnL, std::make_unique<BetaDistribution>(sample.fTotal + 1, failures + 1)};
  }

  double LogBF01(const CountSample& sample, double nullValue,
                 const ConjugatePrior& alternative) const override {
    return LogBF01Binomial(sample.fTotal, sample.fN, nullValue, alternative);
  }

  double LogBF01(const CountSample& sample, const ConjugatePrior& null,
                 const ConjugatePrior& alternative) const override {
    return LogBF01Binomial(sample.fTotal, sample.fN, null, alternative);
  }
};

class OneSampleBinomial : public Analysis {
 public:
  OneSampleBinomial(const BSNSettings& settings, StatusList& statuses)
      : fvSlots(settings.GetFactors()),
        fvSamples(fvSlots.size(), CountSample{0, 0}),
        fInference(settings, fModel, statuses) {}

  std::vector<int> RequiredSlots() const override { return fvSlots; }

  void Accumulate(const double* record, double weight) override {
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      const double code = record[fvSlots[i]];
      if (code != kSuccess && code != 0) continue;
      fvSamples[i].fN += weight;
      if (code == kSuccess) fvSamples[i].fTotal += weight;
    }
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    auto data = std::make_shared<MCBSN_850::BSN1SampleBinoOutputStats::Data>();
    data->fvVariables = fvSlots;
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      const double n = fvSamples[i].fN;
      const double successes = fvSamples[i].fTotal;
      data->fvNs.push_back(n);
      data->fvSuccesses.push_back(successes);
      data->fvFailures.push_back(n - successes);
      data->fvSuccessCodes.push_back(kSuccess);
      data->fvSuccessProportions.push_back(Shown(successes / n));
      data->fvFailureProportions.push_back(Shown((n - successes) / n));
      fInference.Append(fvSamples[i], i, {data->fBayesFactors, data->fPosterior, data->fCurves});
    }
    return std::make_unique<MCBSN_850::BSN1SampleBinoOutputStats>(data);
  }

 private:
  std::vector<int> fvSlots;
  std::vector<CountSample> fvSamples;
  BinomialModel fModel;
  CountInference fInference;
};

}  // namespace

std::unique_ptr<Analysis> MakeOneSampleBinomial(const BSNSettings& settings, StatusList& statuses) {
  return std::make_unique<OneSampleBinomial>(settings, statuses);
}

}  // namespace BayesComponent
