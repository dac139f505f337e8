#include "host/data/ColumnStore.h"

namespace BayesHost {

ColumnStore::ColumnStore(MemoryBudget& budget, int columns)
    : fColumns(columns), fBlocks(budget, static_cast<std::size_t>(columns) * kBlockRows) {}

void ColumnStore::Advance(std::size_t rows) {
  fTailRows += rows;
  fRows += rows;
  if (fTailRows == kBlockRows) Finish();
}

void ColumnStore::Finish() {
  if (fTailRows > 0) fBlocks.Close();
  fTailRows = 0;
}

}  // namespace BayesHost
