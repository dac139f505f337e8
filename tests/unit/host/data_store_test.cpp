#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "host/data/CaseCursor.h"
#include "host/data/ColumnStore.h"
#include "host/data/SplitIndex.h"
#include "host/data/StringPool.h"
#include "platform/component/Common.h"

namespace BayesHost {
namespace {

constexpr double M = MCCommon_850::MCMV::Missing();

// Two columns: the row number, and its negative. Handed in pieces of every size, as an engine may do.
void Fill(ColumnStore& store, std::size_t rows) {
  std::size_t done = 0;
  for (std::size_t piece = 1; done < rows; piece = piece * 2 + 1) {
    const std::size_t count = std::min({piece, store.GetRoom(), rows - done});
    std::iota(store.GetTail(0), store.GetTail(0) + count, static_cast<double>(done));
    for (std::size_t i = 0; i < count; ++i) store.GetTail(1)[i] = -store.GetTail(0)[i];
    store.Advance(count);
    done += count;
  }
  store.Finish();
}

struct StoreCase {
  const char* fName;
  std::size_t fRows;
  std::size_t fBudgetBlocks;
  bool fSpilled;
};

TEST(ColumnStore, KeepsRowsInMemoryAndBeyond) {
  const std::size_t blockBytes = 2 * ColumnStore::kBlockRows * sizeof(double);
  const StoreCase cases[] = {{"empty", 0, 0, false},           {"one row", 1, 1, false},
                             {"a full block", 2048, 1, false}, {"one row more", 2049, 2, false},
                             {"all spilled", 5000, 0, true},   {"partly spilled", 10000, 2, true}};
  for (const StoreCase& c : cases) {
    SCOPED_TRACE(c.fName);
    MemoryBudget budget(c.fBudgetBlocks * blockBytes);
    {
      ColumnStore store(budget, 2);
      Fill(store, c.fRows);
      EXPECT_EQ(store.CountRows(), c.fRows);
      EXPECT_EQ(store.IsSpilled(), c.fSpilled);
      CaseCursor cursor({{&store, 1}, {&store, 0}});
      cursor.SetRange(0, c.fRows);
      std::size_t wrong = 0;
      std::size_t row = 0;
      for (; cursor.Next(); ++row) {
        const double expected = static_cast<double>(row);
        wrong += cursor.GetValues()[1] != expected || cursor.GetValues()[0] != -expected ? 1 : 0;
      }
      EXPECT_EQ(row, c.fRows);
      EXPECT_EQ(wrong, 0U);
      const std::size_t begin = c.fRows / 3;
      cursor.SetRange(begin, c.fRows);
      for (row = begin; const std::size_t count = cursor.NextRun(); row += count) {
        const std::size_t blockBegin = row / 2048 * 2048;
        const std::size_t blockEnd = std::min<std::size_t>(blockBegin + 2048, c.fRows);
        EXPECT_EQ(cursor.GetRange(1).fSmallest, static_cast<double>(blockBegin));
        EXPECT_EQ(cursor.GetRange(0).fSmallest, -static_cast<double>(blockEnd - 1));
        EXPECT_EQ(cursor.GetRange(1).fLargest, static_cast<double>(blockEnd - 1));
        EXPECT_EQ(cursor.IsWholeBlock(), count == 2048);
        EXPECT_EQ(cursor.GetRun(1)[0], static_cast<double>(row));
        EXPECT_EQ(cursor.GetRun(0)[count - 1], -static_cast<double>(row + count - 1));
      }
      EXPECT_EQ(row, c.fRows);
    }
    EXPECT_TRUE(budget.Reserve(c.fBudgetBlocks * blockBytes)) << "the store gave its memory back";
  }
}

// Slabs of three blocks and a last one that ends inside a block, with room in memory for the first two slabs.
TEST(ColumnStore, TakesSlabsWhileTheBudgetHasRoomForThem) {
  constexpr std::size_t kSlabRows = 3 * ColumnStore::kBlockRows;
  constexpr std::size_t kRows = 3 * kSlabRows + ColumnStore::kBlockRows + 100;
  const std::size_t room = 7 * ColumnStore::kBlockRows * sizeof(double);
  MemoryBudget budget(room);
  {
    ColumnStore store(budget, 1);
    while (store.CountRows() < kRows) {
      const std::size_t rows = std::min(kRows - store.CountRows(), kSlabRows);
      const std::size_t blocks = (rows - 1) / ColumnStore::kBlockRows + 1;
      Slab slab(blocks * ColumnStore::kBlockRows);
      slab.Populate(ColumnStore::kBlockRows, blocks * ColumnStore::kBlockRows);
      std::iota(slab.Get(), slab.Get() + rows, static_cast<double>(store.CountRows()));
      store.Add(std::move(slab), rows);
      EXPECT_EQ(store.IsSpilled(), store.CountRows() > 2 * kSlabRows);
    }
    CaseCursor cursor({{&store, 0}});
    cursor.SetRange(0, kRows);
    std::size_t row = 0;
    while (const std::size_t count = cursor.NextRun()) {
      EXPECT_EQ(cursor.GetRun(0)[0], static_cast<double>(row));
      row += count;
      EXPECT_EQ(cursor.GetRun(0)[count - 1], static_cast<double>(row - 1));
      EXPECT_EQ(cursor.GetRange(0).fLargest, static_cast<double>(row - 1));
    }
    EXPECT_EQ(row, kRows);
    EXPECT_FALSE(budget.Reserve(room)) << "what stayed in memory counts";
  }
  EXPECT_TRUE(budget.Reserve(room)) << "the store gave its memory back";
}

TEST(ValueRange, HoldsWhatItTookAndNothingBeyond) {
  std::vector<double> values;
  for (int i = 0; i < 40; ++i) values.push_back((i * 29 % 41 - 20) * 1e100);
  for (std::size_t count = 0; count <= values.size(); ++count) {
    ValueRange range;
    range.Take(values.data(), count);
    EXPECT_EQ(range.MayHold(values[0]), count > 0) << count;
    if (count == 0) continue;
    const auto [smallest, largest] = std::minmax_element(values.begin(), values.begin() + count);
    EXPECT_EQ(range.fSmallest, *smallest) << count;
    EXPECT_EQ(range.fLargest, *largest) << count;
    EXPECT_FALSE(range.MayHold(*largest + 1e90));
  }
  ValueRange missing;
  missing.Take(M);
  EXPECT_TRUE(missing.MayHold(M));
  EXPECT_FALSE(missing.MayHold(0));
}

TEST(StringPool, CodesByAppearanceWithoutTrailingBlanks) {
  StringPool pool;
  EXPECT_EQ(pool.Encode("b"), 0);
  EXPECT_EQ(pool.Encode("a "), 1);
  EXPECT_EQ(pool.Encode("b   "), 0);
  EXPECT_EQ(pool.Encode(" b"), 2);
  EXPECT_EQ(pool.Find("a"), 1);
  EXPECT_LT(pool.Find("c"), 0);
  EXPECT_EQ(pool.Decode(1), "a");
  EXPECT_EQ(pool.CountStrings(), 3U);
}

// Groups of a table of two columns as "key key: row row | ...".
std::string ShowGroups(const std::vector<std::vector<double>>& rows, bool asText, int threads) {
  MemoryBudget budget(1U << 20);
  ColumnStore store(budget, 2);
  for (const auto& row : rows) {
    for (int i = 0; i < 2; ++i) *store.GetTail(i) = row[static_cast<std::size_t>(i)];
    store.Advance(1);
  }
  store.Finish();
  const CaseCursor cursor({{&store, 0}, {&store, 1}});
  const std::vector<std::string> texts = {"beta", "alpha", "Alpha"};
  const auto decode = [&](int, double value) {
    if (!asText) return OBS(value);
    return OBS(value == M ? std::string() : texts[static_cast<std::size_t>(value)]);
  };
  const SplitIndex index(cursor, rows.size(), 2, decode, threads);
  const std::vector<std::uint32_t> order = index.MakeRows();
  std::string shown;
  for (const SplitIndex::Group& group : index.GetGroups()) {
    for (const OBS& key : group.fvKey) {
      shown += key.IsString()         ? key.GetString()
               : key.GetNumber() == M ? "."
                                      : std::to_string(int(key.GetNumber()));
      shown += ' ';
    }
    for (auto i = group.fBegin; i < group.fEnd; ++i) shown += ":" + std::to_string(order.at(i));
    shown += " | ";
  }
  return shown;
}

TEST(SplitIndex, SortsGroupsAndKeepsTheOrderOfRows) {
  for (const int threads : {1, 2, 3, 10}) {
    SCOPED_TRACE(threads);
    EXPECT_EQ(ShowGroups({{2, 1}, {1, 9}, {2, 1}, {M, 1}, {2, 0}, {1, 9}, {10, 0}}, false, threads),
              ". 1 :3 | 1 9 :1:5 | 2 0 :4 | 2 1 :0:2 | 10 0 :6 | ");
    EXPECT_EQ(ShowGroups({{0, 0}, {1, 0}, {2, 0}, {M, 0}, {1, 0}}, true, threads),
              " beta :3 | Alpha beta :2 | alpha beta :1:4 | beta beta :0 | ");
    EXPECT_EQ(ShowGroups({}, false, threads), "");
  }
}

}  // namespace
}  // namespace BayesHost
