// One-sample tests of Poisson rates.
#include <algorithm>
#include <cmath>

#include "component/Analysis.h"
#include "component/CountInference.h"
#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

class PoissonModel : public CountModel {
 public:
  ConjugatePrior JeffreysPrior() const override { return {0.5, 0}; }

  bool IsNullValue(double value) const override { return value > 0; }

  ConjugatePrior Update(const ConjugatePrior& prior, const CountSample& sample) const override {
    return {prior.fFirst + sample.fTotal, prior.fSecond + sample.fN};
  }

  std::unique_ptr<const Distribution> DistributionOf(const ConjugatePrior& prior) const override {
    return std::make_unique<GammaDistribution>(prior.fFirst, prior.fSecond);
  }

  Density KernelOf(const ConjugatePrior& prior) const override {
    return
        [prior](double rate) { return std::pow(rate, prior.fFirst - 1) * std::exp(-prior.fSecond * rate); };
  }

  Likelihood LikelihoodOf(const CountSample& sample) const override {
    const auto lnL = [sample](double rate) { return -Deviance(sample.fTotal, sample.fN * rate); };
    return {lnL, std::make_unique<GammaDistribution>(sample.fTotal + 1, sample.fN)};
  }

  double LogBF01(const CountSample& sample, double nullValue,
                 const ConjugatePrior& alternative) const override {
    return LogBF01Poisson(sample.fTotal, sample.fN, nullValue, alternative);
  }

  double LogBF01(const CountSample& sample, const ConjugatePrior& null,
                 const ConjugatePrior& alternative) const override {
    return LogBF01Poisson(sample.fTotal, sample.fN, null, alternative);
  }
};

struct Counts {
  CountSample fSample{0, 0};
  double fSmallest = kMissing;
  double fLargest = kMissing;

  void Add(double count, double weight) {
    fSmallest = fSample.fN == 0 ? count : std::min(fSmallest, count);
    fLargest = fSample.fN == 0 ? count : std::max(fLargest, count);
    fSample.fTotal += weight * count;
    fSample.fN += weight;
  }
};

class OneSamplePoisson : public Analysis {
 public:
  OneSamplePoisson(const BSNSettings& settings, StatusList& statuses)
      : fvSlots(settings.GetCovariates()), fvCounts(fvSlots.size()), fInference(settings, fModel, statuses) {}

  std::vector<int> RequiredSlots() const override { return fvSlots; }

  void Accumulate(const double* record, double weight) override {
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      if (IsGiven(record[fvSlots[i]])) fvCounts[i].Add(record[fvSlots[i]], weight);
    }
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    auto data = std::make_shared<MCBSN_850::BSN1SamplePoisnOutputStats::Data>();
    data->fvVariables = fvSlots;
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      data->fvNs.push_back(fvCounts[i].fSample.fN);
      data->fvSmallest.push_back(fvCounts[i].fSmallest);
      data->fvLargest.push_back(fvCounts[i].fLargest);
      fInference.Append(fvCounts[i].fSample, i, {data->fBayesFactors, data->fPosterior, data->fCurves});
    }
    return std::make_unique<MCBSN_850::BSN1SamplePoisnOutputStats>(data);
  }

 private:
  std::vector<int> fvSlots;
  std::vector<Counts> fvCounts;
  PoissonModel fModel;
  CountInference fInference;
};

}  // namespace

std::unique_ptr<Analysis> MakeOneSamplePoisson(const BSNSettings& settings, StatusList& statuses) {
  return std::make_unique<OneSamplePoisson>(settings, statuses);
}

}  // namespace BayesComponent
