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
// by column.
class CaseRows {
 public:
  CaseRows() = default;
  // Room for `cases` at a time. The data must be loaded.
  CaseRows(const ACAVarValidSpecs::State& layout, const DataSet& data,
           std::size_t cases = ColumnStore::kBlockRows);

  // Takes the cursor's run of `count` cases: one column for each slot that has a variable, in slot order.
  void Take(const CaseCursor& cursor, std::size_t count, int pass);
  // The cases one behind the other, each with a value for each slot: a number, and for a categorical slot the
  // number that Categories knows. What the slot's rules call missing is the missing value; so are free slots.
  const double* GetRow(std::size_t i) const { return fvRows.data() + i * fRowSize; }
  CaseFate GetFate(std::size_t i) const { return fvFates[i]; }

 private:
  // What is done with the values of one column.
  struct Rule {
    std::size_t fSlot = 0;
    bool fIsWeight = false;
    bool fPasses = true;            // a missing value doesn't drop the case
    bool fPassesInLastPass = true;  // nor in the scoring pass
    std::vector<double> fvUserMissing;
  };

  void Adapt(const Rule& rule, const double* values, std::size_t count, int pass);
  void AdaptWeights(double* value, std::size_t count);

  std::size_t fRowSize = 0;
  std::vector<Rule> fvRules;  // of each column
  std::vector<double> fvRows;
  std::vector<CaseFate> fvFates;
};

}  // namespace BayesHost
