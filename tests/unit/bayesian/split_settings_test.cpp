// What the data of a split add to the settings of a model: category counts, and the codes of given values.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bayesian/BYSFactory.h"
#include "support/ParsedCommand.h"

using namespace BayesHost::ParsedCommands;

namespace {

struct SplitSettings {
  std::vector<std::string> shown;  // for each split: what `read` says of its settings
  std::vector<std::string> messages;
};

// The metadata pass over all splits, by the variable `split` when there is one.
template <class Read>
SplitSettings ReadSplits(const Model& model, const std::string& body, const std::string& split, Read read) {
  // Levels in the order met: c b a, and 30 4 with site n; b a, and 4 with site s.
  CommandRun run(model, body,
                 "site,y,g,k,x\nn,1,c,30,1\nn,2,b,4,2\nn,4,a,4,7\nn,3,c,30,3\nn,9,b,30,4\n"
                 "s,1,b,4,5\ns,2,a,4,2\ns,5,b,4,9\ns,7,a,4,1\n");
  if (!split.empty()) run.GetData().SetSplit({run.GetData().FindVariable(split)});
  SplitSettings result;
  EXPECT_TRUE(run.Read()) << body;
  run.GetSpecs().CompleteSpecs();
  BpProcedure procedure(model.title, 10);
  BYSFactory factory(&run.GetSpecs(), run.GetDataSource(), &procedure);
  while (factory.StartNewSplit()) {
    factory.ProcedureDataPass(true);
    EXPECT_TRUE(factory.CompleteMetaData()) << body;
    result.shown.push_back(read(*factory.GetBSNSettings()));
  }
  result.messages = run.GetMessages();
  return result;
}

std::string ShowSizes(const BSNSettings& s) {
  return Show(s.GetFullModFactorSizes()) + "| " + Show(s.GetFactorSizes());
}
std::string ShowRegressors(const BSNSettings& s) {
  return Show(s.GetRegressors());
}
std::string ShowMeans(const BSNSettings& s) {
  return Show(s.GetPlotFactorCats());
}

TEST(SplitSettings, GivenValuesBecomeCodesOfTheSplit) {
  const std::vector<std::string> none;
  const std::vector<std::string> noRegressor{
      "warning Regressor value ^1 not in data, variable ^2, split [%1 = %2:,^1 = ^2:]3 ..."};
  const std::vector<std::string> noGroup{"warning Means group value ^1 not in data, variable ^2 ..."};
  const struct {
    const Model& model;
    const char* body;
    const char* split;
    std::string (*read)(const BSNSettings&);
    std::vector<std::string> shown;
    std::vector<std::string> messages;
  } rows[] = {
      {kRegression, "y BY g k /DESIGN FACTORS=k", "", &ShowSizes, {"3 2 | 2 "}, none},
      {kRegression, "y BY g k", "site", &ShowSizes, {"3 2 | 3 2 ", "2 1 | 2 1 "}, none},
      // Codes follow the order of the values, not that of the cases: a b c, 4 30.
      {kRegression, "y BY g k WITH x", "", &ShowRegressors, {""}, none},
      {kRegression,
       "y BY g k WITH x /PREDICT REGRESSORS=b 30 -2.5",
       "",
       &ShowRegressors,
       {"1 1 -2.5 "},
       none},
      {kRegression,
       "y BY g WITH x /PREDICT REGRESSORS=c 8",
       "site",
       &ShowRegressors,
       {"2 8 ", ""},
       noRegressor},
      {kRegression,
       "y BY g WITH x /DESIGN COVARIATES=x /PREDICT REGRESSORS=8",
       "",
       &ShowRegressors,
       {"8 "},
       none},
      {kAnova, "y BY g /PLOT MEANS=c a c", "", &ShowMeans, {"2 0 "}, none},
      {kAnova, "y BY g /PLOT MEANS=d b", "", &ShowMeans, {"1 "}, noGroup},
      {kAnova, "y BY k /PLOT MEANS=30", "", &ShowMeans, {"1 "}, none},
      {kAnova, "y BY g", "", &ShowMeans, {""}, none},
  };
  for (const auto& row : rows) {
    const SplitSettings result = ReadSplits(row.model, row.body, row.split, row.read);
    EXPECT_EQ(result.shown, row.shown) << row.body;
    EXPECT_EQ(result.messages, row.messages) << row.body;
  }
}

TEST(SplitSettings, WithoutAnAdapterTheyAreCopied) {
  CommandRun run(kRegression, "y BY g /CRITERIA CILEVEL=80 /PREDICT REGRESSORS=a", "y,g\n1,a\n2,b\n");
  ASSERT_TRUE(run.Read());
  run.GetSpecs().CompleteSpecs();
  BSNSettings settings;
  EXPECT_TRUE(run.GetSpecs().CompleteSettings(settings, nullptr));
  EXPECT_EQ(settings.GetCILevel(), 80);
  EXPECT_TRUE(settings.GetRegressors().empty());
}

}  // namespace
