#include <stdexcept>
#include <utility>

#include "host/adapter/RecordLayout.h"
#include "platform/host/Output.h"

using BayesHost::RecordSlot;

ACAVarValidSpecs::ACAVarValidSpecs(bool, bool, bool) : fpState(std::make_unique<State>()) {}
ACAVarValidSpecs::~ACAVarValidSpecs() = default;

namespace {

int Append(ACAVarValidSpecs::State& state, const RecordSlot& slot) {
  const int index = static_cast<int>(state.fvSlots.size());
  state.fvSlots.push_back(slot);
  if (slot.fCategorical) state.fvCategorical.push_back(index);
  return index;
}

// A variable asked for twice obeys the stricter rule of the two.
void Merge(RecordSlot& slot, const RecordSlot& other) {
  if (slot.fCategorical != other.fCategorical) {
    throw std::logic_error("one variable is registered both as categories and as a scale");
  }
  slot.fMissingPasses &= other.fMissingPasses;
  slot.fMissingPassesInLastPass &= other.fMissingPassesInLastPass;
  slot.fUserMissingIsMissing |= other.fUserMissingIsMissing;
}

}  // namespace

int ACAVarValidSpecs::AddVariable(int index, bool categorical, bool missingPasses, bool userMissingIsMissing,
                                  bool missingPassesInLastPass) {
  const RecordSlot slot{index, categorical, missingPasses, missingPassesInLastPass, userMissingIsMissing};
  const int known = GetRecVarIndex(index);
  if (known < 0 || known == fpState->fWeightSlot) return Append(*fpState, slot);
  Merge(fpState->fvSlots[static_cast<std::size_t>(known)], slot);
  return known;
}

void ACAVarValidSpecs::AddVariables(const std::vector<int>& indices, std::vector<int>& slots,
                                    bool categorical, bool missingPasses, bool userMissingIsMissing,
                                    bool missingPassesInLastPass) {
  std::vector<int> added;
  added.reserve(indices.size());
  for (const int index : indices) {
    added.push_back(
        AddVariable(index, categorical, missingPasses, userMissingIsMissing, missingPassesInLastPass));
  }
  slots = std::move(added);
}

int ACAVarValidSpecs::AddFreeVariable(bool categorical) {
  return Append(*fpState, {-1, categorical, true, true, true});
}

// The weight has a slot of its own even when it is analysed as well: the slot holds the rounded weight.
int ACAVarValidSpecs::SetWeightVar() {
  if (fpState->fWeightSlot < 0) {
    fpState->fWeightSlot =
        Append(*fpState, {ProcedureDataSource().GetWeightVarIndex(), false, true, true, true});
  }
  return fpState->fWeightSlot;
}

int ACAVarValidSpecs::GetRecVarIndex(int index) const {
  int found = -1;
  for (int slot = 0; slot < GetNRecordVars(); ++slot) {
    if (index < 0 || GetZARQVarIndex(slot) != index) continue;
    found = slot;
    if (slot != fpState->fWeightSlot) break;
  }
  return found;
}

int ACAVarValidSpecs::GetZARQVarIndex(int slot) const {
  const bool known = slot >= 0 && slot < GetNRecordVars();
  return known ? fpState->fvSlots[static_cast<std::size_t>(slot)].fVariable : -1;
}

int ACAVarValidSpecs::GetNRecordVars() const {
  return static_cast<int>(fpState->fvSlots.size());
}

bool ACAVarValidSpecs::GetRecordCatVar(int slot) const {
  return fpState->fvSlots[static_cast<std::size_t>(slot)].fCategorical;
}

const std::vector<int>& ACAVarValidSpecs::GetRecCatVars() const {
  return fpState->fvCategorical;
}

void ACAVarValidSpecs::Display() const {
  ACACommonDisplay::DisplayI("Record slots", GetNRecordVars());
  ACACommonDisplay::DisplayI("Weight slot", fpState->fWeightSlot);
  for (const RecordSlot& slot : fpState->fvSlots) {
    ACACommonDisplay::DisplayI("Dictionary index", slot.fVariable);
    ACACommonDisplay::DisplayBV(
        "Categorical, missing passes, in last pass, user-missing is missing",
        {slot.fCategorical, slot.fMissingPasses, slot.fMissingPassesInLastPass, slot.fUserMissingIsMissing});
  }
}

void ACAVarValidSpecs::DisplayVarNames(const ZARQ_DataSource& dataSource) const {
  for (const RecordSlot& slot : fpState->fvSlots) {
    BP_ToFront(BP_Character(slot.IsFree() ? "(free)" : dataSource.GetVariable(slot.fVariable).GetName()));
  }
}
