#include "host/adapter/CaseRows.h"

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

CaseRows::CaseRows(const ACAVarValidSpecs::State& layout, const DataSet& data, std::size_t cases)
    : fRowSize(layout.fvSlots.size()), fvRows(fRowSize * cases, kMissing), fvFates(cases) {
  for (std::size_t i = 0; i < fRowSize; ++i) {
    const RecordSlot& slot = layout.fvSlots[i];
    if (slot.IsFree()) continue;
    Rule rule{
        i, static_cast<int>(i) == layout.fWeightSlot, slot.fMissingPasses, slot.fMissingPassesInLastPass, {}};
    if (slot.fUserMissingIsMissing) rule.fvUserMissing = FindUserMissing(data, slot.fVariable);
    fvRules.push_back(std::move(rule));
  }
}

void CaseRows::Take(const CaseCursor& cursor, std::size_t count, int pass) {
  std::fill_n(fvFates.begin(), count, CaseFate::Kept);
  for (std::size_t i = 0; i < fvRules.size(); ++i) Adapt(fvRules[i], cursor.GetRun(i), count, pass);
}

void CaseRows::Adapt(const Rule& rule, const double* values, std::size_t count, int pass) {
  double* const column = fvRows.data() + rule.fSlot;
  for (std::size_t i = 0; i < count; ++i) column[i * fRowSize] = values[i];
  for (const double missing : rule.fvUserMissing) {
    for (std::size_t i = 0; i < count; ++i) {
      if (values[i] == missing) column[i * fRowSize] = kMissing;
    }
  }
  if (rule.fIsWeight) return AdaptWeights(column, count);
  if (pass == kScoringPass ? rule.fPassesInLastPass : rule.fPasses) return;
  for (std::size_t i = 0; i < count; ++i) {
    if (column[i * fRowSize] == kMissing) fvFates[i] = std::max(fvFates[i], CaseFate::Dropped);
  }
}

// Weights count whole cases: rounded, halves away from zero.
void CaseRows::AdaptWeights(double* value, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i, value += fRowSize) {
    *value = *value == kMissing ? 0 : std::round(*value);
    if (!(*value > 0)) fvFates[i] = CaseFate::Uncounted;
  }
}

}  // namespace BayesHost
