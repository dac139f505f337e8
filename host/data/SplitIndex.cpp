#include "host/data/SplitIndex.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "host/data/CaseCursor.h"
#include "host/data/Observation.h"
#include "host/data/ValueNumbers.h"
#include "platform/host/Run.h"

namespace BayesHost {

namespace {

// Numbers the keys in the order of their appearance: the values of the first variable, then each of these
// numbers together with those of the next one.
class KeyNumbers {
 public:
  explicit KeyNumbers(std::size_t variables) : fvValues(variables), fvPairs(variables) {}

  std::uint32_t Add(std::span<const double> key) {
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

// A thread's share of the rows, which it groups without looking at the others: a group has another number in
// each share.
class SplitIndex::Share {
 public:
  Share(CaseCursor cursor, std::uint64_t begin, std::uint64_t end, std::size_t variables)
      : fCursor(std::move(cursor)), fBegin(begin), fEnd(end), fVariables(variables) {}

  // Until they are placed, a row's position is its group.
  void FindGroups(std::uint32_t* positions) {
    KeyNumbers numbers(fVariables);
    std::vector<double> key(fVariables);
    fCursor.SetRange(fBegin, fEnd);
    positions += fBegin;
    while (const std::size_t count = fCursor.NextRun()) {
      for (std::size_t row = 0; row < count; ++row) {
        for (std::size_t i = 0; i < fVariables; ++i) key[i] = fCursor.GetRun(i)[row];
        const std::uint32_t group = numbers.Add(key);
        if (group == fvCounts.size()) AddGroup(key);
        ++fvCounts[group];
        *positions++ = group;
      }
    }
  }
  // `next`: for each group of this share, the position of its first row here.
  void PlaceRows(std::vector<std::uint32_t> next, std::uint32_t* positions) const {
    for (std::uint32_t* place = positions + fBegin; place != positions + fEnd; ++place)
      *place = next[*place]++;
  }

  std::size_t CountVariables() const { return fVariables; }
  std::size_t CountGroups() const { return fvCounts.size(); }
  std::uint32_t CountRows(std::size_t group) const { return fvCounts[group]; }
  std::span<const double> GetKey(std::size_t group) const {
    return {fvKeys.data() + group * fVariables, fVariables};
  }

 private:
  void AddGroup(const std::vector<double>& key) {
    fvKeys.insert(fvKeys.end(), key.begin(), key.end());
    fvCounts.push_back(0);
  }

  CaseCursor fCursor;
  std::uint64_t fBegin;
  std::uint64_t fEnd;
  std::size_t fVariables;
  std::vector<double> fvKeys;  // of the groups, one behind the other
  std::vector<std::uint32_t> fvCounts;
};

SplitIndex::SplitIndex(std::uint64_t rows) : fvGroups{{{}, 0, rows}} {}

// A stable counting sort: the rows of a group keep their order.
SplitIndex::SplitIndex(const CaseCursor& cursor, std::uint64_t rows, int variables, const Decoder& decode,
                       int threads) {
  if (rows >= std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("Split files take at most 4,294,967,294 cases.");
  }
  std::vector<Share> shares;
  for (int i = 0; i < threads; ++i) {
    shares.emplace_back(cursor, CutShare(rows, i, threads), CutShare(rows, i + 1, threads),
                        static_cast<std::size_t>(variables));
  }
  const auto forEachShare = [&](const auto& task) {
    ACAThreadFactory().ForEach(threads, threads, [&](int i) { task(static_cast<std::size_t>(i)); });
  };
  auto positions = std::make_unique_for_overwrite<std::uint32_t[]>(rows);
  forEachShare([&](std::size_t i) { shares[i].FindGroups(positions.get()); });
  std::vector<std::vector<std::uint32_t>> places = FindPlaces(shares, decode);
  forEachShare([&](std::size_t i) { shares[i].PlaceRows(std::move(places[i]), positions.get()); });
  if (std::is_sorted(positions.get(), positions.get() + rows)) return;
  fpPositions = std::move(positions);
  fRows = rows;
}

std::vector<std::uint32_t> SplitIndex::MakeRows() const {
  std::vector<std::uint32_t> rows(fRows);
  for (std::size_t row = 0; row < fRows; ++row) rows[fpPositions[row]] = static_cast<std::uint32_t>(row);
  return rows;
}

// Of each share's groups: where the first of their rows there goes.
std::vector<std::vector<std::uint32_t>> SplitIndex::FindPlaces(const std::vector<Share>& shares,
                                                               const Decoder& decode) {
  std::vector<std::vector<std::uint32_t>> places = UniteGroups(shares, decode);
  const std::vector<std::uint32_t> ranks = SortGroups();
  std::vector<std::uint32_t> next;
  for (const Group& group : fvGroups) next.push_back(static_cast<std::uint32_t>(group.fBegin));
  for (std::size_t i = 0; i < shares.size(); ++i) {
    for (std::size_t group = 0; group < places[i].size(); ++group) {
      std::uint32_t& place = next[ranks[places[i][group]]];
      places[i][group] = std::exchange(place, place + shares[i].CountRows(group));
    }
  }
  return places;
}

// Collects the groups, for now in the order of their appearance and with their counts as fEnd. The result
// holds the numbers that each share's groups have here.
std::vector<std::vector<std::uint32_t>> SplitIndex::UniteGroups(const std::vector<Share>& shares,
                                                                const Decoder& decode) {
  KeyNumbers numbers(shares.front().CountVariables());
  std::vector<std::vector<std::uint32_t>> united;
  for (const Share& share : shares) {
    united.emplace_back();
    for (std::size_t i = 0; i < share.CountGroups(); ++i) {
      const std::uint32_t group = numbers.Add(share.GetKey(i));
      if (group == fvGroups.size()) AddGroup(share.GetKey(i), decode);
      fvGroups[group].fEnd += share.CountRows(i);
      united.back().push_back(group);
    }
  }
  return united;
}

void SplitIndex::AddGroup(std::span<const double> key, const Decoder& decode) {
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
