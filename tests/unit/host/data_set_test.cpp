#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/data/DataError.h"
#include "host/data/DataSet.h"
#include "host/data/DataWriter.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

// x, a column whose last cell is text, y.
std::string MakeDamaged() {
  std::string text = "x,bad,y\n";
  for (int i = 0; i < 25000; ++i) text += "1,2,3\n";
  return text + "1,abc,3\n";
}

double SumOf(DataSet& data, int variable) {
  CaseCursor cursor = data.MakeCursor({variable});
  cursor.SetRange(0, data.CountCases());
  double sum = 0;
  while (cursor.Next()) sum += cursor.GetValues()[0];
  return sum;
}

TEST(DataSet, ReadsOnlyWhatIsAskedFor) {
  const TempData temp(MakeDamaged());
  DataSet data(temp.GetFile(), {});
  data.Require({1});
  EXPECT_THROW(data.Load(), DataError);
  data.Require({0});
  EXPECT_TRUE(data.Load()) << "the failed command's column is forgotten";
  EXPECT_EQ(SumOf(data, 0), 25001);
  data.Require({2});
  EXPECT_TRUE(data.Load());
  EXPECT_EQ(SumOf(data, 2), 3 * 25001);
}

TEST(DataSet, ReadsExpectedColumnsAlongUnlessDamaged) {
  const TempData temp(MakeDamaged());
  DataSet data(temp.GetFile(), {});
  data.Expect({1, 2});
  data.Require({0});
  EXPECT_TRUE(data.Load());
  EXPECT_EQ(SumOf(data, 0), 25001);

  DataSet other(temp.GetFile(), {});
  other.Expect({2});
  other.Require({0});
  EXPECT_TRUE(other.Load());
  std::ofstream(temp.GetFile().fPath) << "x,bad,y\n";
  other.Require({2});
  EXPECT_TRUE(other.Load()) << "the file isn't read again";
  EXPECT_EQ(SumOf(other, 2), 3 * 25001);
}

TEST(DataSet, NoticesAFileThatChanged) {
  const TempData temp("x,y\n1,2\n3,4\n");
  DataSet data(temp.GetFile(), {});
  data.Require({0});
  data.Load();
  std::ofstream(temp.GetFile().fPath) << "x,y\n1,2\n";
  data.Require({1});
  EXPECT_THROW(data.Load(), DataError);
}

TEST(DataSet, AddsNothingWhenStopped) {
  const TempData temp("x\n1\n2\n");
  std::atomic<bool> isStopped = false;
  DataSet data(temp.GetFile(), {.fStop = [&] { return isStopped.load(); }});
  isStopped = true;
  data.Require({0});
  EXPECT_FALSE(data.Load());
  for (const char* name : {"out.csv", "out.parquet"}) {
    const DataFile target{temp.GetFolder() / name, name};
    SaveData(data, target, {.fStop = [] { return true; }});
    EXPECT_FALSE(std::filesystem::exists(target.fPath)) << name;
  }
}

TEST(DataSet, FindsVariablesByNameWhateverTheCase) {
  const TempData temp("Height,x,X\n1,2,3\n");
  const DataSet data(temp.GetFile(), {});
  EXPECT_EQ(data.FindVariable("Height"), 0);
  EXPECT_EQ(data.FindVariable("HEIGHT"), 0);
  EXPECT_EQ(data.FindVariable("X"), 2);
  EXPECT_EQ(data.FindVariable("heigh"), -1);
}

TEST(DataSet, RefusesAStringAsWeight) {
  const TempData temp("x,g\n1,a\n");
  DataSet data(temp.GetFile(), {});
  EXPECT_THROW(data.SetWeight(1), DataError);
  EXPECT_EQ(data.GetWeight(), -1);
  data.SetWeight(0);
  EXPECT_EQ(data.GetWeight(), 0);
}

// The engine's threads must neither change the order of the rows nor that of the strings' codes.
TEST(DataSet, KeepsTheOrderOfTheFileOnAnyNumberOfThreads) {
  std::string text = "i,g\n";
  for (int i = 0; i < 400000; ++i) text += std::to_string(i) + ",group " + std::to_string(i / 1000) + "\n";
  const TempData temp(text);
  for (const int threads : {1, 2, 4}) {
    DataSet data(temp.GetFile(), {std::size_t{1} << 24, threads});
    data.Require({0, 1});
    data.Load();
    CaseCursor cursor = data.MakeCursor({0, 1});
    cursor.SetRange(0, data.CountCases());
    int row = 0;
    int wrong = 0;
    for (; cursor.Next(); ++row) {
      wrong += cursor.GetValues()[0] != row || cursor.GetValues()[1] != row / 1000 ? 1 : 0;
    }
    EXPECT_EQ(row, 400000);
    EXPECT_EQ(wrong, 0);
  }
}

}  // namespace
}  // namespace BayesHost
