#include "host/adapter/AdapterState.h"

#include <algorithm>
#include <limits>

#include "host/adapter/RecordLayout.h"

using BayesHost::RecordSlot;

namespace {

constexpr double kMissing = MCCommon_850::MCMV::Missing();
constexpr double kLargest = std::numeric_limits<double>::max();

}  // namespace

void ACAInputAdapter::State::Prepare() {
  fvSplits.clear();
  fvSplits.resize(fpData->GetGroups().size());
  PrepareSlots();
  fRows = BayesHost::CaseRows(fVarSpecs.GetState(), *fpData);
}

void ACAInputAdapter::State::PrepareSlots() {
  const std::vector<RecordSlot>& slots = fVarSpecs.GetState().fvSlots;
  fWeightSlot = fVarSpecs.GetState().fWeightSlot;
  int categorical = 0;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    fvPlaceOfCategories.push_back(slots[i].fCategorical ? categorical++ : -1);
    if (!slots[i].fCategorical) fvNumeric.push_back(static_cast<int>(i));
    if (slots[i].IsFree()) fvFree.push_back(static_cast<int>(i));
  }
}

BayesHost::Categories* ACAInputAdapter::State::FindCategories(int slot) {
  const int place = fvPlaceOfCategories[static_cast<std::size_t>(slot)];
  return place < 0 ? nullptr : &GetSplit().fvCategories[static_cast<std::size_t>(place)];
}

void ACAInputAdapter::State::EnterSplit(int split) {
  fSplit = split;
  fHasRecord = false;
  const std::size_t slots = fvPlaceOfCategories.size();
  BayesHost::SplitData& data = GetSplit();
  data.fvCategories.resize(slots - fvNumeric.size());
  data.fvSmallest.resize(slots, kLargest);
  data.fvLargest.resize(slots, kMissing);
  data.fCounts = {};
  fvSplitValues.clear();
  const BayesHost::SplitIndex::Group& group = fpData->GetGroups()[static_cast<std::size_t>(split)];
  for (const OBS& value : group.fvKey) fvSplitValues.push_back(&value);
}

// The missing value is less than every other.
void ACAInputAdapter::State::Learn(BayesHost::SplitData& split) {
  double* const smallest = split.fvSmallest.data();
  double* const largest = split.fvLargest.data();
  for (const int slot : fvNumeric) {
    const double value = fpCase[slot];
    smallest[slot] = std::min(smallest[slot], value == kMissing ? kLargest : value);
    largest[slot] = std::max(largest[slot], value);
  }
  for (const int slot : fVarSpecs.GetRecCatVars()) {
    const double value = fpCase[slot];
    BayesHost::Categories& categories = *FindCategories(slot);
    if (value == kMissing || categories.Find(value) >= 0) continue;
    categories.Add(value, fpData->Decode(fVarSpecs.GetZARQVarIndex(slot), value));
  }
}
