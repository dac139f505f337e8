// Names for variables that a command makes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/data/DataSet.h"
#include "host/output/HostKeys.h"
#include "platform/host/Parser.h"
#include "platform/host/VarSpec.h"
#include "support/ParserGrammar.h"
#include "support/ParserSession.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

class NewNames : public testing::Test {
 protected:
  // A command that was read to its end: another subcommand was the last.
  void SetUp() override {
    fSession.Begin(kText);
    ZARQ_TokenSequence tokens(true);
    ASSERT_EQ(UniversalParser(tokens, fSpec, fGrammar).getCommandSpecifications(), 0);
    fSpec.getSubComObj("SAVE")->getParamObj("MODE");
    fSpec.getSubComObj("OUTFILE")->getParamObj("MODEL");
    const DataSet::Limits limits{1U << 24U, 1};
    fSession.Get().SetData(std::make_shared<DataSet>(fFile.GetFile(), limits));
  }

  VarSpecObj MakeSpec(const char* root) { return {root, "SAVE", "BAYES TEST", fSource, false}; }

  static constexpr const char* kText = "BAYES TEST /INF VAR=a /SAVE MEANPRED MODE=Y /OUTFILE MODEL='m'.";
  TempData fFile{"y,Mean_1,mean_3\n1,2,3\n"};
  ParserSession fSession;
  CommandDescriptor fGrammar = MakeTestGrammar();
  CommandSpec fSpec;
  ProcedureDataSource fSource;
};

TEST_F(NewNames, RootsGetTheFirstFreeSuffix) {
  const struct {
    const char* root;
    const char* expected;
  } rows[] = {{"Mean", "Mean_2"}, {"MEAN", "MEAN_2"}, {"y", "y_1"}, {"Mean_1", "Mean_1_1"}};
  for (const auto& row : rows) {
    ZarqVarName name;
    EXPECT_TRUE(MakeSpec("MEANPRED").NewVarNameByRoot(ZarqVarName(row.root), name)) << row.root;
    EXPECT_EQ(name.GetText(), row.expected);
  }
  EXPECT_EQ(fSession.ShowMessages(), "");
}

TEST_F(NewNames, TakenNamesAreReportedWhereTheyStand) {
  EXPECT_LT(MakeSpec("MODE").CheckNewVariable(ZarqVarName("free")), 0);
  EXPECT_EQ(fSession.ShowMessages(), "");
  EXPECT_EQ(MakeSpec("MODE").CheckNewVariable(ZarqVarName("MEAN_3")), 2);
  EXPECT_EQ(MakeSpec("MEANPRED").CheckNewVariable(ZarqVarName("Y")), 0);
  EXPECT_EQ(MakeSpec("MODE").CheckNewVariable(ZarqVarName(" ")), 0);
  ZarqVarName name;
  EXPECT_FALSE(MakeSpec("MEANPRED").NewVarNameByRoot(ZarqVarName(), name));
  EXPECT_EQ(fSession.ShowMessages(), std::string("1:43 ") + kHostNameTaken + " | mean_3 | SAVE\n1:29 " +
                                         kHostNameTaken + " | y | SAVE\n1:43 " + kHostNameBad +
                                         " |   | SAVE\n1:29 " + kHostNameRoot + " |  | SAVE");
}

TEST_F(NewNames, FileNamesAreTakenAsTheyAreGiven) {
  std::string path;
  EXPECT_TRUE(fSpec.getSubComObj("OUTFILE")->getParamObj("MODEL")->getFilePath(path, true, true));
  EXPECT_EQ(path, "m");
}

}  // namespace
}  // namespace BayesHost
