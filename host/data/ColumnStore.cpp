#include "host/data/ColumnStore.h"

namespace BayesHost {

ColumnStore::ColumnStore(MemoryBudget& budget, int columns)
    : fColumns(columns),
      fBlocks(budget, static_cast<std::size_t>(columns) * kBlockRows),
      fvTail(fBlocks.GetBlockSize()) {}

void ColumnStore::Advance(std::size_t rows) {
  fTailRows += rows;
  fRows += rows;
  if (fTailRows < kBlockRows) return;
  fBlocks.Append(fvTail.data());
  fTailRows = 0;
}

void ColumnStore::Finish() {
  if (fTailRows > 0) fBlocks.Append(fvTail.data());
  fTailRows = 0;
  fvTail = {};
}

}  // namespace BayesHost
