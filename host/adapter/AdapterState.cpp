#include "host/adapter/AdapterState.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "host/adapter/RecordLayout.h"

using BayesHost::CaseFate;
using BayesHost::Categories;
using BayesHost::RecordSlot;

namespace {

constexpr double kMissing = MCCommon_850::MCMV::Missing();

std::size_t Index(int i) {
  return static_cast<std::size_t>(i);
}

}  // namespace

void ACAInputAdapter::State::Prepare() {
  fvSplits.clear();
  fvSplits.resize(fpData->GetGroups().size());
  PrepareSlots();
  fBlock = BayesHost::CaseBlock(fVarSpecs.GetState(), *fpData);
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

Categories* ACAInputAdapter::State::FindCategories(int slot) {
  const int place = fvPlaceOfCategories[static_cast<std::size_t>(slot)];
  return place < 0 ? nullptr : &GetSplit().fvCategories[static_cast<std::size_t>(place)];
}

void ACAInputAdapter::State::EnterSplit(int split) {
  fSplit = split;
  fHasRecord = false;
  const std::size_t slots = fvPlaceOfCategories.size();
  BayesHost::SplitData& data = GetSplit();
  data.fvCategories.resize(slots - fvNumeric.size());
  data.fvRanges.resize(slots);
  data.fCounts = {};
  fvSplitValues.clear();
  const BayesHost::SplitIndex::Group& group = fpData->GetGroups()[static_cast<std::size_t>(split)];
  for (const OBS& value : group.fvKey) fvSplitValues.push_back(&value);
}

double ACAInputAdapter::State::Encode(int slot, double value) {
  if (value == kMissing) return kMissing;
  const Categories& categories = *FindCategories(slot);
  const int code = categories.Find(value);
  return code < 0 && fPass == 0 ? categories.Count() : code;
}

bool ACAInputAdapter::State::IsCase(const double* record) {
  const auto holds = [&](int slot, double value) {
    return std::bit_cast<std::uint64_t>(record[slot]) == std::bit_cast<std::uint64_t>(value);
  };
  const std::vector<int>& categorical = fVarSpecs.GetRecCatVars();
  return std::all_of(fvNumeric.begin(), fvNumeric.end(),
                     [&](int slot) { return holds(slot, GetValue(slot)); }) &&
         std::all_of(categorical.begin(), categorical.end(),
                     [&](int slot) { return holds(slot, Encode(slot, GetValue(slot))); });
}

void ACAInputAdapter::State::AcceptRun(std::size_t from) {
  const std::size_t end = fBlock.CountCases();
  fRunFrom = from;
  if (fBlock.IsAllKept() && fWeightSlot < 0) {
    CountValid(static_cast<double>(end - from));
  } else {
    for (std::size_t i = from; i < end; ++i) Count(EnterCase(i));
  }
  if (fPass == 0) LearnRun();
}

void ACAInputAdapter::State::CopyRun(int slot, std::vector<double>& values) {
  fBlock.CopyKept(Index(slot), fRunFrom, values);
}

void ACAInputAdapter::State::Count(CaseFate fate) {
  if (fate == CaseFate::Dropped) CountDropped();
  if (fate == CaseFate::Kept) CountValid(1);
}

void ACAInputAdapter::State::Learn() {
  for (const int slot : fvNumeric) {
    const double value = GetValue(slot);
    if (value != kMissing) GetSplit().fvRanges[Index(slot)].Take(value);
  }
  for (const int slot : fVarSpecs.GetRecCatVars()) LearnCategory(slot, GetValue(slot));
}

// A case that was learnt by itself may be learnt again.
void ACAInputAdapter::State::LearnRun() {
  for (const int slot : fvNumeric) GetSplit().fvRanges[Index(slot)].Take(fBlock.FindRange(Index(slot)));
  for (const int slot : fVarSpecs.GetRecCatVars()) {
    for (std::size_t i = 0; i < fBlock.CountCases(); ++i) {
      if (fBlock.GetFate(i) == CaseFate::Kept) LearnCategory(slot, fBlock.GetValue(Index(slot), i));
    }
  }
}

void ACAInputAdapter::State::LearnCategory(int slot, double value) {
  Categories& categories = *FindCategories(slot);
  if (value == kMissing || categories.Find(value) >= 0) return;
  categories.Add(value, fpData->Decode(fVarSpecs.GetZARQVarIndex(slot), value));
}
