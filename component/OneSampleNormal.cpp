// One-sample tests of normal means.
#include "component/Analysis.h"
#include "component/NormalMean.h"

namespace BayesComponent {

namespace {

class OneSampleNormal : public Analysis {
 public:
  OneSampleNormal(const BSNSettings& settings, StatusList& statuses)
      : fvSlots(settings.GetCovariates()),
        fvSamples(fvSlots.size()),
        fMean(settings, {kTooFewCases, kConstantVariable}, statuses) {}

  std::vector<int> RequiredSlots() const override { return fvSlots; }

  void Accumulate(const double* record, double weight) override {
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      if (IsGiven(record[fvSlots[i]])) fvSamples[i].Add(record[fvSlots[i]], weight);
    }
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    auto data = std::make_shared<MCBSN_850::BSN1SampleNormOutputStats::Data>();
    data->fvVariables = fvSlots;
    for (std::size_t i = 0; i < fvSlots.size(); ++i)
      fMean.Append(fvSamples[i].Total(), 0, i, fvSlots[i], *data);
    return std::make_unique<MCBSN_850::BSN1SampleNormOutputStats>(data);
  }

 private:
  std::vector<int> fvSlots;
  std::vector<MomentCollector> fvSamples;
  NormalMean fMean;
};

}  // namespace

std::unique_ptr<Analysis> MakeOneSampleNormal(const BSNSettings& settings, StatusList& statuses) {
  return std::make_unique<OneSampleNormal>(settings, statuses);
}

}  // namespace BayesComponent
