#include "host/adapter/AdapterState.h"

#include <algorithm>
#include <cmath>

#include "host/adapter/RecordLayout.h"
#include "host/data/Variable.h"

using BayesHost::CaseFate;
using BayesHost::DataSet;
using BayesHost::kScoringPass;
using BayesHost::RecordSlot;

namespace {

constexpr double kMissing = MCCommon_850::MCMV::Missing();

// The numbers that stand for a variable's user-missing values in its column.
std::vector<double> FindUserMissing(const DataSet& data, int variable) {
  std::vector<double> numbers;
  for (const OBS& value : data.GetVariable(variable).GetState().fvUserMissing) {
    numbers.push_back(data.Encode(variable, value));
  }
  return numbers;
}

}  // namespace

void BayesHost::ValueRange::Add(double value) {
  if (value == kMissing) return;
  fMin = fMin == kMissing ? value : std::min(fMin, value);
  fMax = std::max(fMax, value);
}

void ACAInputAdapter::State::Prepare() {
  const std::vector<RecordSlot>& slots = fVarSpecs.GetState().fvSlots;
  fvCase.assign(slots.size(), kMissing);
  fvSplits.clear();
  fvSplits.resize(fpData->GetGroups().size());
  fvUserMissing.assign(slots.size(), {});
  for (std::size_t i = 0; i < slots.size(); ++i) {
    if (!slots[i].IsFree() && slots[i].fUserMissingIsMissing) {
      fvUserMissing[i] = FindUserMissing(*fpData, slots[i].fVariable);
    }
  }
}

void ACAInputAdapter::State::EnterSplit(int split) {
  fSplit = split;
  fHasRecord = false;
  BayesHost::SplitData& data = GetSplit();
  data.fvCategories.resize(fvCase.size());
  data.fvRanges.resize(fvCase.size());
  data.fCounts = {};
  fvSplitValues.clear();
  const BayesHost::SplitIndex::Group& group = fpData->GetGroups()[static_cast<std::size_t>(split)];
  for (const OBS& value : group.fvKey) fvSplitValues.push_back(&value);
}

// Weights count whole cases: rounded, halves away from zero.
bool ACAInputAdapter::State::TakeWeight(double weight) {
  fWeight = weight == kMissing ? 0 : std::round(weight);
  return fWeight > 0;
}

bool ACAInputAdapter::State::IsMissing(std::size_t slot, double value) const {
  const std::vector<double>& userMissing = fvUserMissing[slot];
  return value == kMissing || std::find(userMissing.begin(), userMissing.end(), value) != userMissing.end();
}

CaseFate ACAInputAdapter::State::TakeCase(const double* values) {
  const ACAVarValidSpecs::State& layout = fVarSpecs.GetState();
  bool complete = true;
  fWeight = 1;
  for (std::size_t i = 0; i < layout.fvSlots.size(); ++i) {
    const RecordSlot& slot = layout.fvSlots[i];
    if (slot.IsFree()) continue;
    fvCase[i] = *values++;
    const bool missing = IsMissing(i, fvCase[i]);
    if (missing) fvCase[i] = kMissing;
    if (static_cast<int>(i) == layout.fWeightSlot) {
      if (!TakeWeight(fvCase[i])) return CaseFate::Uncounted;
      fvCase[i] = fWeight;
    } else if (missing) {
      complete &= fPass == kScoringPass ? slot.fMissingPassesInLastPass : slot.fMissingPasses;
    }
  }
  return complete ? CaseFate::Kept : CaseFate::Dropped;
}

void ACAInputAdapter::State::CountDropped() {
  GetSplit().fCounts.fDropped += 1;
  GetSplit().fCounts.fWeightedDropped += fWeight;
}

void ACAInputAdapter::State::Accept() {
  BayesHost::SplitData& split = GetSplit();
  split.fCounts.fValid += 1;
  split.fCounts.fWeightedValid += fWeight;
  if (fPass == 0) Learn(split);
}

void ACAInputAdapter::State::Learn(BayesHost::SplitData& split) {
  const std::vector<RecordSlot>& slots = fVarSpecs.GetState().fvSlots;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    if (slots[i].IsFree()) continue;
    if (!slots[i].fCategorical) {
      split.fvRanges[i].Add(fvCase[i]);
    } else if (fvCase[i] != kMissing && split.fvCategories[i].Find(fvCase[i]) < 0) {
      split.fvCategories[i].Add(fvCase[i], fpData->Decode(slots[i].fVariable, fvCase[i]));
    }
  }
}
