#include "host/data/SplitIndex.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <unordered_map>

#include "host/data/CaseCursor.h"
#include "host/data/Observation.h"
#include "host/data/ValueNumbers.h"

namespace BayesHost {

namespace {

// Numbers the keys in the order of their appearance: the values of the first variable, then each of these
// numbers together with those of the next one.
class KeyNumbers {
 public:
  explicit KeyNumbers(std::size_t variables) : fvValues(variables), fvPairs(variables) {}

  std::uint32_t Add(const std::vector<double>& key) {
    auto number = static_cast<std::uint32_t>(fvValues[0].Add(key[0]));
    for (std::size_t i = 1; i < key.size(); ++i) {
      const auto value = static_cast<std::uint32_t>(fvValues[i].Add(key[i]));
      const auto next = static_cast<std::uint32_t>(fvPairs[i].size());
      number = fvPairs[i].try_emplace(std::uint64_t{number} << 32 | value, next).first->second;
    }
    return number;
  }

 private:
  std::vector<ValueNumbers> fvValues;
  std::vector<std::unordered_map<std::uint64_t, std::uint32_t>> fvPairs;
};

bool IsLessKey(const std::vector<OBS>& a, const std::vector<OBS>& b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), IsLess);
}

}  // namespace

SplitIndex::SplitIndex(std::uint64_t rows) : fvGroups{{{}, 0, rows}} {}

SplitIndex::SplitIndex(CaseCursor& cursor, std::uint64_t rows, int variables, const Decoder& decode) {
  if (rows >= std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("Split files take at most 4,294,967,294 cases.");
  }
  cursor.SetRange(0, rows);
  FindGroups(cursor, rows, variables, decode);
  const std::vector<std::uint32_t> ranks = SortGroups();
  // A stable counting sort: the rows of a group keep their order.
  std::vector<std::uint32_t> next;
  for (const Group& group : fvGroups) next.push_back(static_cast<std::uint32_t>(group.fBegin));
  for (std::uint32_t& place : fvPositions) place = next[ranks[place]]++;
  if (std::is_sorted(fvPositions.begin(), fvPositions.end())) fvPositions = {};
}

std::vector<std::uint32_t> SplitIndex::MakeRows() const {
  std::vector<std::uint32_t> rows(fvPositions.size());
  for (std::size_t row = 0; row < rows.size(); ++row)
    rows[fvPositions[row]] = static_cast<std::uint32_t>(row);
  return rows;
}

// Numbers the groups in the order of their appearance. For now a group's fEnd is its count, and a row's
// position its group.
void SplitIndex::FindGroups(CaseCursor& cursor, std::uint64_t rows, int variables, const Decoder& decode) {
  KeyNumbers numbers(static_cast<std::size_t>(variables));
  fvPositions.reserve(rows);
  std::vector<double> key(static_cast<std::size_t>(variables));
  while (const std::size_t count = cursor.NextRun()) {
    for (std::size_t row = 0; row < count; ++row) {
      for (std::size_t i = 0; i < key.size(); ++i) key[i] = cursor.GetRun(i)[row];
      const std::uint32_t group = numbers.Add(key);
      if (group == fvGroups.size()) AddGroup(key, decode);
      fvPositions.push_back(group);
      ++fvGroups[group].fEnd;
    }
  }
}

void SplitIndex::AddGroup(const std::vector<double>& key, const Decoder& decode) {
  fvGroups.emplace_back();
  for (std::size_t i = 0; i < key.size(); ++i) {
    fvGroups.back().fvKey.push_back(decode(static_cast<int>(i), key[i]));
  }
}

// Sorts the groups and turns their counts into ranges. The result holds the new place of each group.
std::vector<std::uint32_t> SplitIndex::SortGroups() {
  std::vector<std::uint32_t> order(fvGroups.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
    return IsLessKey(fvGroups[a].fvKey, fvGroups[b].fvKey);
  });
  std::vector<std::uint32_t> ranks(order.size());
  std::vector<Group> sorted;
  std::uint64_t begin = 0;
  for (std::uint32_t rank = 0; rank < order.size(); ++rank) {
    ranks[order[rank]] = rank;
    sorted.push_back(std::move(fvGroups[order[rank]]));
    sorted.back().fBegin = begin;
    begin = sorted.back().fEnd += begin;
  }
  fvGroups = std::move(sorted);
  return ranks;
}

}  // namespace BayesHost
