#include "host/adapter/CaseBlock.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/data/Variable.h"
#include "platform/component/Common.h"

namespace BayesHost {

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

CaseBlock::CaseBlock(const ACAVarValidSpecs::State& layout, const DataSet& data, std::size_t cases) {
  fvFates.reserve(cases);
  std::size_t place = 0;
  for (const RecordSlot& slot : layout.fvSlots) {
    Column column;
    column.fIsFree = slot.IsFree();
    column.fIsWeight = static_cast<int>(fvColumns.size()) == layout.fWeightSlot;
    column.fPasses = slot.fMissingPasses;
    column.fPassesInLastPass = slot.fMissingPassesInLastPass;
    if (!column.fIsFree) column.fPlace = place++;
    if (!column.fIsFree && slot.fUserMissingIsMissing) {
      column.fvUserMissing = FindUserMissing(data, slot.fVariable);
    }
    const bool isAsStored = !column.fIsFree && !column.fIsWeight && column.fvUserMissing.empty();
    if (!isAsStored) column.fvAdapted.assign(cases, kMissing);
    fvColumns.push_back(std::move(column));
  }
}

void CaseBlock::Take(CaseCursor& cursor, std::size_t count, int pass) {
  fpCursor = &cursor;
  fvFates.assign(count, CaseFate::Kept);
  fKept = count;
  for (Column& column : fvColumns) {
    column.fpValues = column.fIsFree ? column.fvAdapted.data() : nullptr;
    if (!column.fIsFree) Judge(column, pass);
  }
}

void CaseBlock::Judge(Column& column, int pass) {
  const ValueRange& range = fpCursor->GetRange(column.fPlace);
  const auto mayOccur = [&range](double value) { return range.MayHold(value); };
  const bool isRecoded = std::any_of(column.fvUserMissing.begin(), column.fvUserMissing.end(), mayOccur);
  if (isRecoded) RecodeUserMissing(column);
  if (column.fIsWeight) {
    RoundWeights(column);
  } else {
    const bool passes = pass == kScoringPass ? column.fPassesInLastPass : column.fPasses;
    if (passes || !(isRecoded || mayOccur(kMissing))) return;
    const double* const values = GetColumn(column);
    for (std::size_t i = 0; i < fvFates.size(); ++i) {
      if (values[i] == kMissing) fvFates[i] = std::max(fvFates[i], CaseFate::Dropped);
    }
  }
  fKept = static_cast<std::size_t>(std::count(fvFates.begin(), fvFates.end(), CaseFate::Kept));
}

void CaseBlock::RecodeUserMissing(Column& column) {
  const double* const values = GetColumn(column);
  std::copy_n(values, fvFates.size(), column.fvAdapted.begin());
  for (const double missing : column.fvUserMissing) {
    for (std::size_t i = 0; i < fvFates.size(); ++i) {
      if (values[i] == missing) column.fvAdapted[i] = kMissing;
    }
  }
  column.fpValues = column.fvAdapted.data();
}

// Weights count whole cases: rounded, halves away from zero.
void CaseBlock::RoundWeights(Column& column) {
  const double* const values = GetColumn(column);
  for (std::size_t i = 0; i < fvFates.size(); ++i) {
    column.fvAdapted[i] = values[i] == kMissing ? 0 : std::round(values[i]);
    if (!(column.fvAdapted[i] > 0)) fvFates[i] = CaseFate::Uncounted;
  }
  column.fpValues = column.fvAdapted.data();
}

ValueRange CaseBlock::FindRange(std::size_t slot) {
  Column& column = fvColumns[slot];
  if (!IsAdapted(column) && IsAllKept() && fpCursor->IsWholeBlock()) {
    const ValueRange& range = fpCursor->GetRange(column.fPlace);
    if (!range.MayHold(kMissing)) return range;
  }
  ValueRange range;
  const double* const values = GetColumn(column);
  for (std::size_t i = 0; i < fvFates.size(); ++i) {
    if (fvFates[i] == CaseFate::Kept && values[i] != kMissing) range.Take(values[i]);
  }
  return range;
}

void CaseBlock::CopyKept(std::size_t slot, std::size_t from, std::vector<double>& values) {
  const double* const column = GetColumn(fvColumns[slot]);
  values.clear();
  for (std::size_t i = from; i < fvFates.size(); ++i) {
    if (fvFates[i] == CaseFate::Kept) values.push_back(column[i]);
  }
}

std::size_t CaseBlock::CopyKept(double* rows) {
  for (std::size_t slot = 0; slot < fvColumns.size(); ++slot) {
    const double* const values = GetColumn(fvColumns[slot]);
    double* target = rows + slot;
    for (std::size_t i = 0; i < fvFates.size(); ++i) {
      if (fvFates[i] != CaseFate::Kept) continue;
      *target = values[i];
      target += fvColumns.size();
    }
  }
  return fKept;
}

}  // namespace BayesHost
