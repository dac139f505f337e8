// What the text of correlations and of a log-linear analysis becomes in the settings.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/ParsedCommand.h"

using namespace BayesHost::ParsedCommands;

namespace {

std::string ShowCorrelation(const BSNSettings& s) {
  return ShowEach(s.GetCorrTest(), s.GetCorrCValue(), s.GetMaxNPlots());
}
std::string ShowCorrelationBF(const BSNSettings& s) {
  return ShowEach(s.GetEstBFType(), s.GetRegrComPar(), s.GetNullValue());
}
std::string ShowSampling(const BSNSettings& s) {
  return ShowEach(s.GetTolValue(), s.GetMCSamples(), s.GetPosteriorSamples(), s.GetRandomSeed(),
                  s.GetMissScope());
}
std::string ShowModel(const BSNSettings& s) {
  return ShowEach(s.GetLogLinModel(), s.GetFixType(), s.GetLogLinIntrinsicT(), s.GetLogLinPriorType());
}
std::string ShowPrior(const BSNSettings& s) {
  return Show(s.GetLogLinShapes()) + "| " + ShowEach(s.GetPriorScale()) + "| " + Show(s.GetLambdas());
}

TEST(TableParser, ChoicesReachTheSettings) {
  const std::string xy = "/INFERENCE VARIABLES=x y ANALYSIS=BOTH ";
  const std::string table = "/INFERENCE ANALYSIS=BOTH /TABLE s BY x ";
  const SettingRow rows[] = {
      {kCorrelation, xy, [](const BSNSettings& s) { return Show(s.GetCovariates()); }, "0 1 "},
      {kCorrelation, xy, ShowCorrelation, "0 0 10 "},
      {kCorrelation, xy + "CORR=SPEARMAN CVALUE=-1.5 MAXPLOTS=0", ShowCorrelation, "1 -1.5 0 "},
      {kCorrelation, xy + "CORR=KENDALL MAXPLOTS=50", ShowCorrelation, "2 0 50 "},
      {kCorrelation, xy, ShowCorrelationBF, "0 M 0 "},
      {kCorrelation, xy + "/ESTBF TYPE=JZS NULLVALUE=0.7", ShowCorrelationBF, "0 M 0.7 "},
      {kCorrelation, xy + "/ESTBF TYPE=FRACTION NULLVALUE=-0.3", ShowCorrelationBF, "2 0.5 -0.3 "},
      {kCorrelation, xy + "/ESTBF TYPE=FRACTION(0.25)", ShowCorrelationBF, "2 0.25 0 "},
      {kCorrelation, xy, ShowSampling, "0.0001 10000 10000 0 0 "},
      {kCorrelation, "/MISSING SCOPE=LISTWISE /CRITERIA MCSAMPLES=3000 SEED=7 TOL=0.001 " + xy, ShowSampling,
       "0.001 3000 10000 7 1 "},
      {kCorrelation, "/CRITERIA POSTSAMPLES=2000 " + xy + "CORR=SPEARMAN", ShowSampling,
       "0.0001 10000 2000 0 0 "},
      {kCorrelation, "/MISSING SCOPE=PAIRWISE /CRITERIA SEED=RANDOM " + xy, ShowSampling,
       "0.0001 10000 10000 0 0 "},
      // The row factor first.
      {kLogLinear, table, [](const BSNSettings& s) { return Show(s.GetFactors()); }, "3 0 "},
      {kLogLinear, table, ShowSampling, "1e-06 -1 10000 0 1 "},
      {kLogLinear, table, ShowModel, "10 3 500 0 "},
      {kLogLinear, table + "/ESTBF MODEL=POISSON FIX_MARGIN=TOTAL PRIOR_TYPE=CONJUGATE", ShowModel,
       "2 0 500 0 "},
      {kLogLinear, table + "/ESTBF MODEL=NONPARAMETRIC FIX_MARGIN=COLUMN", ShowModel, "11 1 5000 0 "},
      {kLogLinear, table + "/ESTBF FIX_MARGIN=ROW PRIOR_TYPE=MIXTURE_DIRICHLET", ShowModel, "10 2 5000 1 "},
      {kLogLinear, table + "/ESTBF MODEL=MULTINOMIAL PRIOR_TYPE=INTRINSIC", ShowModel, "10 3 500 2 "},
      {kLogLinear, table, ShowPrior, "1 | M | 1 "},
      {kLogLinear, table + "/ESTBF SHAPEPARAMS=0.5 PRIOR_TYPE=MIXTURE_DIRICHLET LAMBDAS=0.5 1 4", ShowPrior,
       "0.5 | M | 0.5 1 4 "},
      {kLogLinear, table + "/ESTBF MODEL=POISSON SCALEPARAM=0.5 SHAPEPARAMS={1.5,2;3,1.25}", ShowPrior,
       "1.5 2 3 1.25 | 0.5 | 1 "},
      {kLogLinear, table + "/ESTBF MODEL=POISSON SCALEPARAM=DATA", ShowPrior, "1 | M | 1 "},
  };
  ExpectSettings(rows);
}

TEST(TableParser, WhatDoesNotFitIsNamedByItsMessage) {
  const MessageRow rows[] = {
      {kCorrelation, "/INFERENCE VARIABLES=x", false, "error Not enough corr var, param ^1, subcom ^2 ..."},
      {kCorrelation, "/INFERENCE VARIABLES=x x", false, "error Not enough corr var, param ^1, subcom ^2 ..."},
      {kCorrelation, "/INFERENCE VARIABLES=x y CORR=KENDALL ANALYSIS=BOTH /ESTBF TYPE=FRACTION(0.2)", true,
       "warning Param ^1, subcom ^2, used only with ^3 ..."},
      {kLogLinear, "/INFERENCE ANALYSIS=BOTH", false, "error Loglin two factors ..."},
      {kLogLinear, "/TABLE x BY x", false, "error Param ^1, subcom ^2, two variable names ..."},
      {kLogLinear, "/TABLE x y BY z", false, "error Param ^1, subcom ^2, two variable names ..."},
      {kLogLinear, "/TABLE x BY y /ESTBF SHAPEPARAMS={1,2;3}", false,
       "error Rectangular bad, param ^1, subcom ^2 ..."},
      {kLogLinear, "/TABLE x BY y /ESTBF SHAPEPARAMS={1,2;3,a}", false,
       "error Rectangular bad, param ^1, subcom ^2 ..."},
      {kLogLinear, "/TABLE x BY y /ESTBF SHAPEPARAMS=many", false,
       "error Rectangular bad, param ^1, subcom ^2 ..."},
      {kLogLinear, "/CRITERIA TOL=0.001 /TABLE x BY y", true,
       "warning Param ^1, subcom ^2, no effect in command ^3 ..."},
      {kLogLinear, "/CRITERIA MAXITER=10 /TABLE x BY y", true,
       "warning Param ^1, subcom ^2, no effect in command ^3 ..."},
      {kLogLinear, "/INFERENCE ANALYSIS=BOTH /TABLE x BY y /ESTBF SCALEPARAM=2", true,
       "warning Param ^1, subcom ^2, used only with ^3 ..."},
      {kLogLinear, "/INFERENCE ANALYSIS=BOTH /TABLE x BY y /ESTBF MODEL=POISSON LAMBDAS=2", true,
       "warning Param ^1, subcom ^2, used only with ^3 ..."},
  };
  ExpectMessages(rows);
}

// Boundaries, types, names and shared variables are the host's to word.
TEST(TableParser, RefusesWhatTheHostMustWord) {
  const RefusalRow rows[] = {
      {kCorrelation, "/INFERENCE VARIABLES=x s"},
      {kCorrelation, "/INFERENCE VARIABLES=x w"},
      {kCorrelation, "/INFERENCE VARIABLES=x y MAXPLOTS=51"},
      {kCorrelation, "/INFERENCE VARIABLES=x y /ESTBF NULLVALUE=1"},
      {kCorrelation, "/INFERENCE VARIABLES=x y /ESTBF TYPE=FRACTION(1)"},
      {kCorrelation, "/INFERENCE VARIABLES=x y /ESTBF TYPE=JZS(2)"},
      {kLogLinear, "/TABLE x BY w"},
      {kLogLinear, "/TABLE x BY nosuch"},
      {kLogLinear, "/TABLE x y"},
      {kLogLinear, "/TABLE x BY y /ESTBF SHAPEPARAMS=0"},
      {kLogLinear, "/TABLE x BY y /ESTBF SHAPEPARAMS={1,2;-3,4}"},
      {kLogLinear, "/TABLE x BY y /ESTBF SHAPEPARAMS={1,2;}"},
      {kLogLinear, "/TABLE x BY y /ESTBF SCALEPARAM=0"},
      {kLogLinear, "/TABLE x BY y /ESTBF LAMBDAS=1 0"},
      {kLogLinear, "/MISSING SCOPE=LISTWISE /TABLE x BY y"},
  };
  ExpectHostRefusals(rows);
}

TEST(TableParser, ShapesOfAMatrixKeepTheirRows) {
  using Rows = std::vector<std::vector<double>>;
  const struct {
    const char* shapes;
    Rows expected;
  } rows[] = {{"{1,2,3;4,5,6}", {{1, 2, 3}, {4, 5, 6}}}, {"{1;2}", {{1}, {2}}}, {"2", {}}, {"{2}", {}}};
  for (const auto& row : rows) {
    const Parsed parsed = Parse(kLogLinear, std::string("/TABLE x BY y /ESTBF SHAPEPARAMS=") + row.shapes);
    EXPECT_EQ(parsed.shapeRows, row.expected) << row.shapes;
  }
}

TEST(TableParser, PrintChoosesCellsAndStatistics) {
  using Options = std::vector<bool>;
  const Options counts{true, false, false, false, false};
  const Options none{false, false};
  const struct {
    const char* body;
    bool suppressTable;
    Options cells;
    Options statistics;
  } rows[] = {
      {"", false, counts, {true, false}},
      {"/PRINT SUPPRESS_TABLE=TRUE", true, counts, none},
      {"/PRINT SUPPRESS_TABLE=FALSE CELLS=ROW", false, {false, true, false, false, false}, none},
      {"/PRINT CELLS=OBSERVED COLUMN TOTAL", false, {true, false, true, false, true}, none},
      {"/PRINT CELLS=EXPECTED STATISTICS=LRT", false, {false, false, false, true, false}, {false, true}},
      {"/PRINT CELLS=ALL ROW STATISTICS=CHISQ LRT", false, Options(5, true), Options(2, true)},
  };
  for (const auto& row : rows) {
    const Parsed parsed = Parse(kLogLinear, std::string("/TABLE x BY y ") + row.body);
    EXPECT_TRUE(parsed.ok) << row.body;
    EXPECT_EQ(parsed.suppressTable, row.suppressTable) << row.body;
    EXPECT_EQ(parsed.cells, row.cells) << row.body;
    EXPECT_EQ(parsed.statistics, row.statistics) << row.body;
  }
}

TEST(TableParser, OrderTurnsTheCategories) {
  EXPECT_TRUE(Parse(kLogLinear, "/TABLE x BY y").ascending);
  EXPECT_FALSE(Parse(kLogLinear, "/CRITERIA ORDER=DESCENDING /TABLE x BY y").ascending);
}

}  // namespace
