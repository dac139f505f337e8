// Tests of the mean differences of pairs.
#include <algorithm>
#include <cmath>
#include <limits>

#include "component/Analysis.h"
#include "component/NormalMean.h"

namespace BayesComponent {

namespace {

// Differences with the size of what was subtracted, by which their rounding is judged: 0.3 - 0.1 and 0.4 -
// 0.2 are a constant difference, though not the same double.
struct Differences {
  MomentCollector fMoments;
  double fLargest = 0;

  double RoundingNoise() {
    const double noise = std::numeric_limits<double>::epsilon() * fLargest;
    return fMoments.Total().Count() * noise * noise;
  }
};

class RelatedSamples : public Analysis {
 public:
  RelatedSamples(const BSNSettings& settings, StatusList& statuses)
      : fvFirsts(settings.GetCovariates()),
        fvSeconds(settings.Get2ndRelatedList()),
        fvSamples(fvFirsts.size()),
        fMean(settings, {kTooFewPairs, kConstantDifference}, statuses) {}

  std::vector<int> RequiredSlots() const override {
    std::vector<int> slots = fvFirsts;
    slots.insert(slots.end(), fvSeconds.begin(), fvSeconds.end());
    return slots;
  }

  void Accumulate(const double* record, double weight) override {
    for (std::size_t i = 0; i < fvFirsts.size(); ++i) {
      const double first = record[fvFirsts[i]];
      const double second = record[fvSeconds[i]];
      if (!IsGiven(first) || !IsGiven(second)) continue;
      fvSamples[i].fMoments.Add(first - second, weight);
      fvSamples[i].fLargest = std::max({fvSamples[i].fLargest, std::abs(first), std::abs(second)});
    }
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    auto data = std::make_shared<MCBSN_850::BSN2SampleRelatedOutputStats::Data>();
    data->fvFirsts = fvFirsts;
    data->fvSeconds = fvSeconds;
    for (std::size_t i = 0; i < fvFirsts.size(); ++i) {
      Differences& sample = fvSamples[i];
      fMean.Append(sample.fMoments.Total(), sample.RoundingNoise(), i, static_cast<int>(i), *data);
    }
    return std::make_unique<MCBSN_850::BSN2SampleRelatedOutputStats>(data);
  }

 private:
  std::vector<int> fvFirsts;
  std::vector<int> fvSeconds;
  std::vector<Differences> fvSamples;
  NormalMean fMean;
};

}  // namespace

std::unique_ptr<Analysis> MakeRelatedSamples(const BSNSettings& settings, StatusList& statuses) {
  return std::make_unique<RelatedSamples>(settings, statuses);
}

}  // namespace BayesComponent
