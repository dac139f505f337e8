#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/data/BlockStore.h"
#include "host/data/ValueRange.h"

namespace BayesHost {

// Some columns of a table as doubles (numbers, or codes of strings), in blocks of 2,048 rows: in memory while
// the budget lasts, in a temporary file beyond. Filled once from first to last row, then read in any order.
// The range of each column in each block is kept, a thousandth of the data: whoever looks for certain values
// need not read a block that can't hold them.
class ColumnStore {
 public:
  static constexpr std::size_t kBlockRows = 2048;

  ColumnStore(MemoryBudget& budget, int columns);

  // Filling: write up to GetRoom() values of each column behind GetTail(column), then Advance by their
  // number. Finish after the last row.
  std::size_t GetRoom() const { return kBlockRows - fTailRows; }
  double* GetTail(int column) {
    return fBlocks.Open() + static_cast<std::size_t>(column) * kBlockRows + fTailRows;
  }
  void Advance(std::size_t rows);
  void Finish();
  // Adds rows that were written elsewhere, to a store of one column that holds whole blocks only. The slab
  // must end with a block. Finish isn't needed.
  void Add(Slab slab, std::size_t rows);

  std::uint64_t CountRows() const { return fRows; }
  int CountColumns() const { return fColumns; }
  bool IsSpilled() const { return fBlocks.IsSpilled(); }
  // The values of one column in rows [block * kBlockRows, ...): the store's own memory or `buffer`
  // (kBlockRows doubles).
  const double* ReadColumn(std::size_t block, int column, double* buffer) const {
    return fBlocks.Read(block, static_cast<std::size_t>(column) * kBlockRows, kBlockRows, buffer);
  }
  // Of the same values, the missing value among them.
  const ValueRange& GetRange(std::size_t block, int column) const {
    return fvRanges[block * static_cast<std::size_t>(fColumns) + static_cast<std::size_t>(column)];
  }

 private:
  int fColumns;
  BlockStore fBlocks;
  std::vector<ValueRange> fvRanges;  // block by block
  std::size_t fTailRows = 0;         // in the open block
  std::uint64_t fRows = 0;
};

}  // namespace BayesHost
