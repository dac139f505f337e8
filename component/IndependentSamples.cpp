// Tests of the difference of two groups' means.
#include <array>

#include "component/Analysis.h"
#include "component/MeanDifference.h"

namespace BayesComponent {

namespace {

class IndependentSamples : public Analysis {
 public:
  IndependentSamples(const BSNSettings& settings, StatusList& statuses)
      : fvSlots(settings.GetCovariates()),
        fGroupSlot(settings.GetGroupVar()),
        fvSamples(fvSlots.size()),
        fStatuses(statuses),
        fDifference(settings, statuses) {}

  std::vector<int> RequiredSlots() const override {
    std::vector<int> slots = fvSlots;
    slots.push_back(fGroupSlot);
    return slots;
  }

  // Code 0 is group 1 and code 1 group 2; a case with another code belongs to neither.
  void Accumulate(const double* record, double weight) override {
    const double code = record[fGroupSlot];
    if (code != 0 && code != 1) return;
    const std::size_t group = code == 0 ? 0 : 1;
    fHasCases[group] = true;
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      if (IsGiven(record[fvSlots[i]])) fvSamples[i][group].Add(record[fvSlots[i]], weight);
    }
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    if (!fHasCases[0] || !fHasCases[1]) {
      fStatuses.Fail(kGroupTooSmall);
      return nullptr;
    }
    auto data = std::make_shared<MCBSN_850::BSN2SampleIndOutputStats::Data>();
    for (std::size_t i = 0; i < fvSlots.size(); ++i) {
      fDifference.Append({fvSamples[i][0].Total(), fvSamples[i][1].Total()}, fvSlots[i], *data);
    }
    return std::make_unique<MCBSN_850::BSN2SampleIndOutputStats>(data);
  }

 private:
  std::vector<int> fvSlots;
  int fGroupSlot;
  std::vector<std::array<MomentCollector, 2>> fvSamples;
  std::array<bool, 2> fHasCases{false, false};
  StatusList& fStatuses;
  MeanDifference fDifference;
};

}  // namespace

std::unique_ptr<Analysis> MakeIndependentSamples(const BSNSettings& settings, StatusList& statuses) {
  return std::make_unique<IndependentSamples>(settings, statuses);
}

}  // namespace BayesComponent
