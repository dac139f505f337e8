#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "host/data/ColumnStore.h"

namespace BayesHost {

// A loaded column: where its values lie.
struct ColumnPlace {
  const ColumnStore* fpStore = nullptr;  // null: not loaded
  int fColumn = 0;
};

// Walks cases in order and hands out the values of some columns, which are read when they are asked for.
// Allocates nothing while it walks.
class CaseCursor {
 public:
  // The stores must outlive the cursor.
  explicit CaseCursor(const std::vector<ColumnPlace>& columns);

  // Cases [begin, end) of the order.
  void SetRange(std::uint64_t begin, std::uint64_t end);
  // Of the case that comes next.
  std::uint64_t GetPosition() const { return fPosition; }
  // To the next cases that lie together, some 2,000 at most: their number, 0 at the end.
  std::size_t NextRun();
  // The values of one of the columns for these cases. Valid until NextRun.
  const double* GetRun(std::size_t column) { return GetBlock(column) + fRunBegin; }
  // The range of one of the columns in the block that these cases lie in, and whether they fill one.
  const ValueRange& GetRange(std::size_t column) const;
  bool IsWholeBlock() const { return fIsWholeBlock; }
  // To the next case, one by one; false at the end.
  bool Next();
  // One value for each column, in the order given. Valid until Next.
  const double* GetValues() const { return fvValues.data(); }

 private:
  struct Column {
    ColumnPlace fPlace;
    const double* fpBlock = nullptr;  // null: not read yet
    std::vector<double> fvBuffer;
  };
  static constexpr std::uint64_t kNoBlock = std::numeric_limits<std::uint64_t>::max();

  std::size_t OpenBlockAt(std::uint64_t position);
  const double* GetBlock(std::size_t column) {
    const double* const block = fvColumns[column].fpBlock;
    return block != nullptr ? block : ReadBlock(fvColumns[column]);
  }
  const double* ReadBlock(Column& column);

  std::vector<Column> fvColumns;
  std::vector<double> fvValues;
  std::uint64_t fPosition = 0;
  std::uint64_t fEnd = 0;
  std::uint64_t fBlock = kNoBlock;
  std::size_t fRunBegin = 0;  // place in the block
  bool fIsWholeBlock = false;
};

}  // namespace BayesHost
