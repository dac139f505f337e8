// Variables that a run adds to the data.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/data/DataSet.h"
#include "host/data/SavedColumns.h"
#include "host/data/Variable.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "platform/component/Common.h"
#include "platform/host/Output.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

using testing::ElementsAre;

constexpr double M = MCCommon_850::MCMV::Missing();

// A column in the order of the file.
std::vector<double> ReadColumn(DataSet& data, int variable) {
  data.Require({variable});
  EXPECT_TRUE(data.Load());
  CaseCursor cursor = data.MakeFileCursor({variable});
  cursor.SetRange(0, data.CountCases());
  std::vector<double> values;
  while (cursor.Next()) values.push_back(cursor.GetValues()[0]);
  return values;
}

TEST(MadeVariables, AreMissingUntilTheyHaveValues) {
  const TempData temp("x\n1\n2\n3\n");
  DataSet data(temp.GetFile(), {});
  data.Require({0});
  data.Load();
  data.MakeVariable();
  data.MakeVariable();
  EXPECT_EQ(data.CountVariables(), 3);
  EXPECT_EQ(data.CountFileVariables(), 1);
  EXPECT_THAT(data.ListUnfilled(), ElementsAre(1, 2));
  SavedColumns saved(data);
  saved.BeginCase(1);
  saved.SetColumnValue(2, 7);
  saved.BeginCase(2);
  saved.SetColumnValue(1, 9);
  EXPECT_THAT(ReadColumn(data, 0), ElementsAre(1, 2, 3));
  saved.Finish();
  EXPECT_THAT(ReadColumn(data, 1), ElementsAre(M, M, 9));
  EXPECT_THAT(ReadColumn(data, 2), ElementsAre(M, 7, M));
  data.MakeVariable();
  EXPECT_THAT(ReadColumn(data, 3), ElementsAre(M, M, M));
  EXPECT_THAT(data.ListUnfilled(), ElementsAre());
}

// Rows 0 to 4,999 in seven splits, so that both orders differ in every block; every third case takes no
// value.
void CheckOrder(std::size_t memoryBytes, bool split) {
  std::string text = "row,s\n";
  for (int row = 0; row < 5000; ++row) text += std::to_string(row) + ',' + std::to_string(row * 5 % 7) + '\n';
  const TempData temp(text);
  DataSet data(temp.GetFile(), {memoryBytes, 1});
  if (split) data.SetSplit({1});
  data.Require({0});
  data.Load();
  data.MakeVariable();
  SavedColumns saved(data);
  CaseCursor cursor = data.MakeCursor({0});
  cursor.SetRange(0, data.CountCases());
  for (std::uint64_t position = 0; cursor.Next(); ++position) {
    const double row = cursor.GetValues()[0];
    if (static_cast<int>(row) % 3 == 0) continue;
    saved.BeginCase(position);
    saved.SetColumnValue(2, -row);
  }
  saved.Finish();
  const std::vector<double> values = ReadColumn(data, 2);
  ASSERT_EQ(values.size(), 5000U);
  for (int row = 0; row < 5000; ++row) {
    ASSERT_EQ(values[static_cast<std::size_t>(row)], row % 3 == 0 ? M : -row) << row;
  }
}

TEST(MadeVariables, TakeTheOrderOfTheFileInMemoryAndOnDisk) {
  constexpr std::size_t kAllInMemory = std::size_t{1} << 26;
  constexpr std::size_t kNothingInMemory = 1;
  for (const std::size_t memory : {kAllInMemory, kNothingInMemory}) {
    for (const bool split : {false, true}) {
      SCOPED_TRACE(testing::Message() << memory << " bytes, split " << split);
      CheckOrder(memory, split);
    }
  }
}

TEST(MadeVariables, AreDescribedThroughThePlatform) {
  const TempData temp("x\n1\n");
  Session session({});
  const Session::Use use(session);
  session.SetData(std::make_shared<DataSet>(temp.GetFile(), DataSet::Limits{}));
  ProcedureDataSource source;
  const ZARQ_Variable& first = source.GetVariable(0);
  unsigned index = 0;
  EXPECT_THROW(source.MakeVariable(8, &index), std::invalid_argument);
  ZARQ_Variable& made = source.MakeVariable(0, &index);
  EXPECT_EQ(index, 1U);
  made.SetName(ZarqVarName("fitted"));
  const ZARQ_Variable before = made;
  made.SetLabel(BpString("Predicted Value Mode...", true));
  made.SetFormat({12, 5, 4});
  made.SetWriteFormat({13, 5, 6});
  made.SetMeasurementLevel(3);
  const ZARQ_Variable& found = source.GetVariable(1);
  EXPECT_EQ(found.GetName(), "fitted");
  EXPECT_EQ(found.GetPreferredLabel(), "Posterior mode of the predicted response");
  EXPECT_FALSE(found.IsString());
  EXPECT_EQ(found.GetFormat().fWidth, 12);
  EXPECT_EQ(found.GetFormat().fDecimals, 4);
  EXPECT_EQ(found.GetState().fWriteFormat.fWidth, 13);
  EXPECT_EQ(found.GetState().fLevel, VariableState::Level::Scale);
  EXPECT_EQ(before.GetPreferredLabel(), "fitted") << "who holds the variable as it was keeps it";
  EXPECT_EQ(&first, &source.GetVariable(0)) << "variables stay in place";
}

}  // namespace
}  // namespace BayesHost
