#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/host/Data.h"

namespace BayesHost {

class CaseCursor;

// Where share `share` begins, and the one before it ends, when `count` things are cut into equal shares.
inline std::uint64_t CutShare(std::uint64_t count, int share, int shares) {
  return count * static_cast<std::uint64_t>(share) / static_cast<std::uint64_t>(shares);
}

// The groups of cases with equal values of the split variables, in ascending order of these values (missing
// first, strings by bytes), and the rows of each in the order of the file.
class SplitIndex {
 public:
  struct Group {
    std::vector<OBS> fvKey;  // one value for each split variable
    std::uint64_t fBegin = 0;
    std::uint64_t fEnd = 0;  // one past the last position
  };
  // Value of a split variable behind the number that stands for it in the columns.
  using Decoder = std::function<OBS(int variable, double value)>;

  // Without split variables: one group, the whole file.
  explicit SplitIndex(std::uint64_t rows);
  // From a fresh cursor that hands out the split variables. As many threads, at least 1, share the rows; what
  // comes out doesn't depend on their number. Throws std::length_error.
  SplitIndex(const CaseCursor& cursor, std::uint64_t rows, int variables, const Decoder& decode, int threads);

  const std::vector<Group>& GetGroups() const { return fvGroups; }
  bool IsFileOrder() const { return fpPositions == nullptr; }
  // The position of each row in this order; empty for the order of the file.
  std::span<const std::uint32_t> GetPositions() const { return {fpPositions.get(), fRows}; }
  // The row at each position; empty likewise.
  std::vector<std::uint32_t> MakeRows() const;

 private:
  class Share;

  std::vector<std::vector<std::uint32_t>> FindPlaces(const std::vector<Share>& shares, const Decoder& decode);
  std::vector<std::vector<std::uint32_t>> UniteGroups(const std::vector<Share>& shares,
                                                      const Decoder& decode);
  void AddGroup(std::span<const double> key, const Decoder& decode);
  std::vector<std::uint32_t> SortGroups();

  std::vector<Group> fvGroups;
  std::unique_ptr<std::uint32_t[]> fpPositions;
  std::size_t fRows = 0;  // that have positions
};

}  // namespace BayesHost
