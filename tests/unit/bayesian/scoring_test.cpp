// The scoring pass of a command, from its text to the values of its saved variables.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "bayesian/BYSFactory.h"
#include "host/data/DataWriter.h"
#include "support/ParsedCommand.h"

using namespace BayesHost::ParsedCommands;
using testing::ElementsAre;

namespace {

constexpr const char* kData =
    "y,g,s\n1,a,1\n3,a,1\n7,b,1\n9,b,1\n,b,1\n2,a,2\n4,a,2\n5,b,2\n9,b,2\n5,a,3\n5,a,3\n5,b,3\n";

// All passes of a command; the factory stands behind the component pass.
class AllPasses {
 public:
  AllPasses(const Model& model, const std::string& body, bool split) : fRun(model, body, kData) {
    if (split) fRun.GetData().SetSplit({2});
    EXPECT_TRUE(fRun.Read()) << body;
    fRun.GetSpecs().CompleteSpecs();
    fpProcedure = std::make_unique<BpProcedure>(model.title, 10);
    fpFactory = std::make_unique<BYSFactory>(&fRun.GetSpecs(), fRun.GetDataSource(), fpProcedure.get());
    while (fpFactory->StartNewSplit()) {
      fpFactory->ProcedureDataPass(true);
      fpFactory->CompleteMetaData();
    }
    fpFactory->CompleteDataPass();
    EXPECT_TRUE(fpFactory->CreatePMMLPooler());
    if (!fpFactory->PrepareComponentRun()) return;
    while (fpFactory->StartNewSplit()) fpFactory->RunBSNComponent();
    fpFactory->CompleteDataPass();
    EXPECT_TRUE(fpFactory->CompleteExtFileIO());
  }

  // Whether each split was scored.
  std::vector<bool> Score() {
    std::vector<bool> scored;
    while (fpFactory->StartNewSplit()) scored.push_back(fpFactory->ScoringDataPass());
    return scored;
  }

  // The last columns of the data as they would be saved, to two decimals.
  std::vector<std::string> ReadCases(std::size_t columns) {
    const BayesHost::TempData folder("");
    BayesHost::SaveData(fRun.GetData(), folder.GetFile(), {});
    std::ifstream stream(folder.GetFile().fPath);
    std::vector<std::string> cases;
    std::string line;
    while (std::getline(stream, line)) {
      std::string shown;
      for (std::size_t i = 0; i < columns; ++i) {
        const std::size_t comma = line.rfind(',');
        const std::string cell = line.substr(comma + 1);
        const bool isNumber = !cell.empty() && !cases.empty();
        shown = (isNumber ? fmt::format("{:.2f}", std::stod(cell)) : cell) + (i > 0 ? " " : "") + shown;
        line.resize(comma);
      }
      cases.push_back(shown);
    }
    return cases;
  }

  CommandRun fRun;
  std::unique_ptr<BpProcedure> fpProcedure;
  std::unique_ptr<BYSFactory> fpFactory;
};

TEST(ScoringPass, OnlyTheRequestedStatisticsGetAVariable) {
  AllPasses passes(kAnova, "y BY g /SAVE MODE MEANPRED=fitted", false);
  const int before = passes.fRun.GetDataSource().ColumnCount();
  ASSERT_TRUE(passes.fpFactory->PrepareScoringPass());
  EXPECT_EQ(passes.fpFactory->GetSplitIndex(), -1);
  EXPECT_EQ(passes.fRun.GetDataSource().ColumnCount(), before + 2);
  EXPECT_THAT(passes.Score(), ElementsAre(true));
  const std::string a = "3.33 3.33", b = "7.00 7.00";
  EXPECT_THAT(passes.ReadCases(2), ElementsAre("fitted Mode_1", a, a, b, b, b, a, a, b, b, a, a, b));
}

TEST(ScoringPass, ASplitWithoutAModelStaysMissing) {
  AllPasses passes(kAnova, "y BY g /SAVE MODE=m", true);
  ASSERT_TRUE(passes.fpFactory->PrepareScoringPass());
  passes.Score();
  EXPECT_THAT(passes.ReadCases(1), ElementsAre("m", "2.00", "2.00", "8.00", "8.00", "8.00", "3.00", "3.00",
                                               "7.00", "7.00", "", "", ""));
}

TEST(ScoringPass, ANameThatIsTakenStopsIt) {
  AllPasses passes(kAnova, "y BY g /SAVE MEANPRED=first MODE=S", false);
  EXPECT_FALSE(passes.fpFactory->PrepareScoringPass());
  EXPECT_THAT(passes.fRun.GetMessages(), ElementsAre("error Host name ^1 taken, subcom ^2 ..."));
  EXPECT_EQ(passes.ReadCases(1).front(), "first") << "what was made before it remains";
}

TEST(ScoringPassDeathTest, OnlyModelsAreScored) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        AllPasses passes(kOne, "/INFERENCE VARIABLES=y", false);
        passes.fpFactory->PrepareScoringPass();
      },
      "!commandName.empty\\(\\)");
}

}  // namespace
