#pragma once

#include <cstdint>
#include <vector>

#include "host/adapter/RecordLayout.h"
#include "host/data/DataSet.h"

namespace BayesHost {

// The pass in which cases take values.
inline constexpr int kScoringPass = 2;

// What becomes of a case; of two reasons the later one here holds.
enum class CaseFate : std::uint8_t { Kept, Dropped, Uncounted };

// Cases on their way from columns into records: weights and missing rules, some 2,000 cases at a time, column
// by column. A column is read only when somebody wants its values, or when it may hold some that a rule is
// about.
class CaseBlock {
 public:
  CaseBlock() = default;
  // Room for `cases` at a time. The data must be loaded.
  CaseBlock(const ACAVarValidSpecs::State& layout, const DataSet& data,
            std::size_t cases = ColumnStore::kBlockRows);

  // Takes the cursor's run of `count` cases: one column for each slot that has a variable, in slot order. The
  // cursor must stay there while the values are wanted.
  void Take(CaseCursor& cursor, std::size_t count, int pass);
  std::size_t CountCases() const { return fvFates.size(); }
  CaseFate GetFate(std::size_t i) const { return fvFates[i]; }
  bool IsAllKept() const { return fKept == fvFates.size(); }
  // The value of a case in a slot: a number, and in a categorical slot the number that Categories knows. What
  // the slot's rules call missing is the missing value; so are free slots.
  double GetValue(std::size_t slot, std::size_t i) { return GetColumn(fvColumns[slot])[i]; }
  // The range of the kept cases' values, the missing value not among them.
  ValueRange FindRange(std::size_t slot);
  // A slot's values in the kept cases from `from` on.
  void CopyKept(std::size_t slot, std::size_t from, std::vector<double>& values);
  // The kept cases one behind the other, each with a value for each slot; their number.
  std::size_t CopyKept(double* rows);

 private:
  // A slot's values, and what is done with them.
  struct Column {
    bool fIsFree = true;
    bool fIsWeight = false;
    bool fPasses = true;            // a missing value doesn't drop the case
    bool fPassesInLastPass = true;  // nor in the scoring pass
    std::vector<double> fvUserMissing;
    std::size_t fPlace = 0;            // among the cursor's columns
    const double* fpValues = nullptr;  // of the cases at hand; null: not read yet
    std::vector<double> fvAdapted;     // values that differ from the cursor's
  };

  const double* GetColumn(Column& column) {
    if (column.fpValues == nullptr) column.fpValues = fpCursor->GetRun(column.fPlace);
    return column.fpValues;
  }
  bool IsAdapted(const Column& column) const { return column.fpValues == column.fvAdapted.data(); }
  void Judge(Column& column, int pass);
  void RecodeUserMissing(Column& column);
  void RoundWeights(Column& column);

  std::vector<Column> fvColumns;  // by slot
  std::vector<CaseFate> fvFates;
  std::size_t fKept = 0;
  CaseCursor* fpCursor = nullptr;
};

}  // namespace BayesHost
