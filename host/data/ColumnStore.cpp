#include "host/data/ColumnStore.h"

#include <algorithm>
#include <utility>

namespace BayesHost {

ColumnStore::ColumnStore(MemoryBudget& budget, int columns)
    : fColumns(columns), fBlocks(budget, static_cast<std::size_t>(columns) * kBlockRows) {}

void ColumnStore::Advance(std::size_t rows) {
  const auto columns = static_cast<std::size_t>(fColumns);
  if (fTailRows == 0) fvRanges.resize(fvRanges.size() + columns);
  ValueRange* const ranges = fvRanges.data() + fvRanges.size() - columns;
  for (int i = 0; i < fColumns; ++i) ranges[i].Take(GetTail(i), rows);
  fTailRows += rows;
  fRows += rows;
  if (fTailRows == kBlockRows) Finish();
}

void ColumnStore::Finish() {
  if (fTailRows > 0) fBlocks.Close();
  fTailRows = 0;
}

void ColumnStore::Add(Slab slab, std::size_t rows) {
  for (std::size_t from = 0; from < rows; from += kBlockRows) {
    fvRanges.emplace_back().Take(slab.Get() + from, std::min(kBlockRows, rows - from));
  }
  fBlocks.Add(std::move(slab), (rows + kBlockRows - 1) / kBlockRows);
  fRows += rows;
}

}  // namespace BayesHost
