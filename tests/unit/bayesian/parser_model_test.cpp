// What the text of a regression or an analysis of variance becomes in the settings.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/ParsedCommand.h"

using namespace BayesHost::ParsedCommands;

namespace {

std::string ShowModel(const BSNSettings& s) {
  return ShowEach(s.GetDependentVar()) + "| " + Show(s.GetFactors()) + "| " + Show(s.GetCovariates());
}
std::string ShowComputation(const BSNSettings& s) {
  return ShowEach(s.GetRegrCompType(), s.GetRegrComPar(), s.GetCompareType());
}
std::string ShowPrior(const BSNSettings& s) {
  return ShowEach(s.GetPriorType(), s.GetPriorShape(), s.GetPriorScale()) + "| " + Show(s.GetPriorMeans()) +
         "| " + Show(s.GetPriorCovMatrix());
}
std::string ShowPlots(const BSNSettings& s) {
  return Show(s.GetPlotFactors()) + "| " + Show(s.GetPlotCovars()) + "| " +
         ShowEach(s.GetMaxNPlotCategories());
}
// Intercept flag, variables and values of each test.
std::string ShowTests(const BSNSettings& s) {
  std::string text;
  for (const MCBSN_850::BayesFTest& test : s.GetFTests()) {
    text += test.GetLabel() + (test.HasIntercept() ? "1 " : "0 ") + Show(test.GetVariables()) + "= " +
            Show(test.GetTestValues()) + "| ";
  }
  return text;
}

TEST(ModelParser, ChoicesReachTheSettings) {
  const std::string conjugate = "x WITH y /PRIOR TYPE=CONJUGATE SHAPEPARAM=2 SCALEPARAM=3 MEANVECTOR=1 -2";
  const SettingRow rows[] = {
      // The model, and what DESIGN leaves of it.
      {kRegression, "x BY s WITH y z", ShowModel, "0 | 3 | 1 2 "},
      {kRegression, "x BY s WITH y z /DESIGN COVARIATES=z", ShowModel, "0 | | 2 "},
      {kRegression, "x BY s WITH y z /DESIGN FACTORS=s", ShowModel, "0 | 3 | "},
      {kRegression, "x BY s WITH y z /DESIGN COVARIATES=z",
       [](const BSNSettings& s) {
         return Show(s.GetFullModFactors()) + "| " + Show(s.GetFullModCovariates());
       },
       "3 | 1 2 "},
      {kRegression, "x WITH y /DESIGN REGWGT=w", ShowModel, "0 | | 1 "},
      {kRegression, "x WITH y /DESIGN REGWGT=w",
       [](const BSNSettings& s) { return ShowEach(s.GetRegrWeightVar()); }, "4 "},
      {kAnova, "x BY y", ShowModel, "0 | 1 | "},
      // Defaults that come from the command, not from the record.
      {kRegression, "x WITH y",
       [](const BSNSettings& s) {
         return ShowEach(s.GetMissScope(), s.GetPriorType(), s.GetTolValue(), s.GetAnalysType());
       },
       "1 1 1e-06 0 "},
      {kRegression, "x WITH y", ShowComputation, "0 M 0 "},
      {kAnova, "x BY y", ShowComputation, "0 M 0 "},
      // ESTBF.
      {kRegression, "x WITH y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=JZS COMPARE=FULL", ShowComputation,
       "0 M 1 "},
      {kRegression, "x WITH y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=ZELLNER COMPARE=NULL",
       ShowComputation, "1 M 0 "},
      {kRegression, "x WITH y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=ZELLNER(10)", ShowComputation,
       "1 10 0 "},
      {kRegression, "x WITH y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=HYPER", ShowComputation, "2 3 0 "},
      {kRegression, "x WITH y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=HYPER(4)", ShowComputation,
       "2 4 0 "},
      {kAnova, "x BY y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=ROUDER", ShowComputation, "3 1 0 "},
      {kAnova, "x BY y /INFERENCE ANALYSIS=BOTH /ESTBF COMPUTATION=ROUDER(0.5)", ShowComputation, "3 0.5 0 "},
      // PRIOR.
      {kRegression, conjugate, ShowPrior, "0 2 3 | 1 -2 | "},
      {kRegression, conjugate + " VMATRIX=IDENTITY", ShowPrior, "0 2 3 | 1 -2 | "},
      {kRegression, conjugate + " VMATRIX={4;0.5,1}", ShowPrior, "0 2 3 | 1 -2 | 4 0.5 1 "},
      {kRegression, conjugate + " VMATRIX=4 -0.5 1", ShowPrior, "0 2 3 | 1 -2 | 4 -0.5 1 "},
      {kRegression, "x WITH y /PRIOR TYPE=REFERENCE", ShowPrior, "1 M M | | "},
      // FTEST, in the order of the command.
      {kRegression,
       "x BY s WITH y z /FTEST LABEL='slopes' VARIABLES=z y TESTVALUES=0.5 -1 /FTEST INTERCEPT=TRUE "
       "/FTEST VARIABLES=s INTERCEPT=FALSE",
       ShowTests, "slopes0 2 1 = 0.5 -1 | 1 = | 0 3 = | "},
      // PLOT.
      {kRegression, "x BY s WITH y z", ShowPlots, "| | 2 "},
      {kRegression, "x BY s WITH y z /PLOT FACTORS=s COVARIATES=z MAX_CATEGORY=5", ShowPlots, "3 | 2 | 5 "},
  };
  ExpectSettings(rows);
}

TEST(ModelParser, WhatDoesNotFitIsNamedByItsMessage) {
  const std::string notTriangular = "error Lower triang bad, option ^1, param ^2, subcom ^3 ...";
  const std::string conjugate = "x WITH y /PRIOR TYPE=CONJUGATE SHAPEPARAM=2 SCALEPARAM=3 MEANVECTOR=1 2 ";
  const std::string missing = "error Param ^1 needed when param ^2 is ^3, subcom ^4 ...";
  const std::string invalid = "error Invalid value ^1, variable ^2, param ^3, subcom ^4 ...";
  const std::string count = "error Param ^1 need N vals same as N pred, subcom ^2 ...";
  const std::string idle = "warning Param ^1, subcom ^2, used only with ^3 ...";
  const MessageRow rows[] = {
      {kRegression, "x", false, "error No factors, no covariates, command ^1 ..."},
      {kAnova, "x BY y z", false, "error Exactly one factor, no covariates, command ^1 ..."},
      {kAnova, "x BY y WITH z", false, "error Exactly one factor, no covariates, command ^1 ..."},
      {kAnova, "x WITH y", false, "error Exactly one factor, no covariates, command ^1 ..."},
      {kRegression, "x WITH y /PRIOR TYPE=CONJUGATE", false, missing},
      {kRegression, "x WITH y /PRIOR TYPE=CONJUGATE SHAPEPARAM=2 MEANVECTOR=1 2", false, missing},
      {kRegression, "x WITH y /PRIOR TYPE=CONJUGATE SHAPEPARAM=2 SCALEPARAM=3", false, missing},
      {kRegression, conjugate + "VMATRIX=4 1", false, notTriangular},
      {kRegression, conjugate + "VMATRIX=4 1 2 3", false, notTriangular},
      {kRegression, conjugate + "VMATRIX={4;1}", false, notTriangular},
      {kRegression, conjugate + "VMATRIX={4,1;1,2}", false, notTriangular},
      {kRegression, conjugate + "VMATRIX=0", false,
       "error Lower triang diag non-posit param ^1, subcom ^2 ..."},
      {kRegression, conjugate + "VMATRIX={4;1,-2}", false,
       "error Lower triang diag non-posit param ^1, subcom ^2 ..."},
      {kRegression, "x WITH y /PRIOR SHAPEPARAM=2", true, idle},
      {kRegression, "x BY s WITH y /PREDICT REGRESSORS=a", false, count},
      {kRegression, "x BY s WITH y /PREDICT REGRESSORS=a 1 2", false, count},
      {kRegression, "x BY s WITH y z /DESIGN COVARIATES=y /PREDICT REGRESSORS=a 1 2", false, count},
      {kRegression, "x BY s WITH y /PREDICT REGRESSORS=1 a", false, invalid},
      {kRegression, "x BY s WITH y /PREDICT REGRESSORS='a' 'b'", false, invalid},
      {kRegression, "x BY y s /PREDICT REGRESSORS={1;2}", false, count},
      {kAnova, "x BY y /PREDICT REGRESSORS=2", true, idle},
      {kAnova, "x BY y /PREDICT REGRESSORS=a", false, invalid},
      {kAnova, "x BY y /PLOT MEANS=2 a", false, invalid},
      {kAnova, "x BY s /PLOT MEANS=2", false, invalid},
      {kRegression, "x WITH y /FTEST INTERCEPT=FALSE", false, "error No F test effects subcom ^1 ..."},
      {kRegression, "x WITH y /FTEST LABEL='t' TESTVALUES=1", false, "error No F test effects subcom ^1 ..."},
      {kAnova, "x BY y /SAVE MODE=''", false, "error Param ^1, subcom ^2, at least one value ..."},
      {kRegression, "x WITH y /OUTFILE MODEL='m.xml' PARAMETER='p.xml'", false,
       "error Host params ^1 and ^2 exclusive, subcom ^3 ..."},
  };
  ExpectMessages(rows);
}

// Names, types and boundaries are the host's to word: here it counts that the command stops with one message.
TEST(ModelParser, RefusesWhatTheHostMustWord) {
  const RefusalRow rows[] = {
      {kRegression, "s WITH y"},
      {kRegression, "x WITH s"},
      {kRegression, "x WITH x"},
      {kRegression, "x BY y WITH y"},
      {kRegression, "w WITH y"},
      {kRegression, "x BY w"},
      {kRegression, "x WITH y w"},
      {kRegression, "x WITH y /DESIGN COVARIATES=z"},
      {kRegression, "x BY s WITH y /DESIGN FACTORS=y"},
      {kRegression, "x WITH y /DESIGN REGWGT=x"},
      {kRegression, "x WITH y /DESIGN REGWGT=y"},
      {kRegression, "x BY y WITH z /DESIGN REGWGT=y"},
      {kRegression, "x WITH y /DESIGN REGWGT=w"},
      {kRegression, "x WITH y /DESIGN REGWGT=s"},
      {kRegression, "x WITH y /ESTBF COMPUTATION=ROUDER(1 2)"},
      {kRegression, "x WITH y /ESTBF COMPUTATION=HYPER(2)"},
      {kRegression, "x WITH y /FTEST VARIABLES=z"},
      {kRegression, "x WITH y z /DESIGN COVARIATES=y /FTEST VARIABLES=z"},
      {kRegression, "x BY s WITH y z /DESIGN COVARIATES=y /PLOT FACTORS=s"},
      {kRegression, "x WITH y /PLOT COVARIATES=z"},
  };
  ExpectHostRefusals(rows);
}

TEST(ModelParser, PredictorsTakeValuesOfTheirKind) {
  const Parsed predict = Parse(kRegression, "x BY s y WITH z /PREDICT REGRESSORS=bb 3 -1.5");
  ASSERT_TRUE(predict.ok);
  ASSERT_EQ(predict.binInfo.size(), 3U);
  const bool categorical[] = {true, true, false};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(predict.binInfo[i]._isString, categorical[i]) << i;
    EXPECT_EQ(predict.binInfo[i]._numValues.size(), 1U) << i;
  }
  EXPECT_EQ(predict.binInfo[0]._strValues, std::vector<std::string>{"bb"});
  EXPECT_EQ(predict.binInfo[2]._numValues, std::vector<double>{-1.5});

  const Parsed means = Parse(kAnova, "x BY s /PLOT MEANS=bb 'a' bb ERRORVAR=TRUE");
  ASSERT_TRUE(means.ok);
  ASSERT_EQ(means.binInfo.size(), 1U);
  EXPECT_EQ(means.binInfo[0]._strValues, (std::vector<std::string>{"bb", "a", "bb"}));
  EXPECT_EQ(means.plots, (std::vector<bool>{false, true, false}));

  EXPECT_TRUE(Parse(kAnova, "x BY s /PREDICT REGRESSORS=a").binInfo.empty());
}

// "name suffix | " for each of the five statistics, then the count, whether variances are needed, the files.
std::string ShowLeftBehind(const Model& model, const std::string& body) {
  CommandRun run(model, body, "x,y,z,s,w\n1,2,3,a,1\n2,3,4,bb,2\n");
  EXPECT_TRUE(run.Read()) << body;
  const BYSValidSpecs& specs = run.GetSpecs();
  std::string shown;
  for (std::size_t i = 0; i < specs.GetSaveVarNames().size(); ++i) {
    shown += specs.GetSaveVarNames()[i] + (specs.GetSaveVarSuff()[i] ? "_" : "") + "|";
    EXPECT_EQ(specs.GetSaveVarLabels()[i].empty(), specs.GetSaveVarNames()[i].empty()) << body;
    EXPECT_EQ(specs.GetSaveVarNotes()[i].empty(), specs.GetSaveVarNames()[i].empty()) << body;
  }
  shown += ShowEach(specs.GetMaxObsAdded(), specs.GetStatSettingsPtr()->GetComputeVarianceInScoring());
  return shown + specs.GetOutFModelFileName() + "|" + specs.GetOutFParameterFileName();
}

TEST(ModelParser, SavedVariablesAndFilesKeepTheirNames) {
  const struct {
    const Model& model;
    const char* body;
    const char* expected;
  } rows[] = {
      {kRegression, "x WITH y", "|||||0 0 |"},
      {kRegression, "x WITH y /SAVE MEANPRED", "MeanPredicted_|||||1 0 |"},
      {kRegression, "x WITH y /SAVE MEANPRED=a MODE", "a||Mode_|||2 0 |"},
      {kAnova, "x BY s /SAVE VARIANCE", "|Variance_||||1 1 |"},
      {kAnova, "x BY s /SAVE CIMEANPREDL=lo", "|||lo||1 1 |"},
      {kRegression, "x WITH y /SAVE CIMEANPREDU MODE=Mode", "||Mode||CIMeanPredictedUpper_|2 1 |"},
      {kRegression, "x WITH y /OUTFILE MODEL='m.xml'", "|||||0 0 m.xml|"},
      {kAnova, "x BY s /OUTFILE PARAMETER='no extension'", "|||||0 0 |no extension"},
  };
  for (const auto& row : rows) EXPECT_EQ(ShowLeftBehind(row.model, row.body), row.expected) << row.body;
}

TEST(ModelParser, SavedVariablesAreShownAsTheDependentVariableWithMoreDigits) {
  CommandRun run(kRegression, "x WITH y /SAVE MEANPRED VARIANCE", "x,y\n1.25,2\n2,3\n");
  ASSERT_TRUE(run.Read());
  const ZARQ_Format own = run.GetData().GetVariable(0).GetFormat();
  const std::vector<ZARQ_Format>& formats = run.GetSpecs().GetSaveVarFormats();
  EXPECT_EQ(formats[BYSValidSpecs::kMeanPred].fWidth, own.fWidth + 3);
  EXPECT_EQ(formats[BYSValidSpecs::kMeanPred].fDecimals, own.fDecimals + 2);
  EXPECT_EQ(formats[BYSValidSpecs::kVariance].fWidth, 40);
  EXPECT_EQ(formats[BYSValidSpecs::kVariance].fDecimals, 3);
}

TEST(ModelParser, PlotFlagsAreOffUnlessTrue) {
  EXPECT_EQ(Parse(kRegression, "x WITH y").plots, (std::vector<bool>{false, false, false}));
  EXPECT_EQ(Parse(kRegression, "x WITH y /PLOT INTERCEPT=TRUE ERRORVAR=FALSE BAYESPRED=TRUE").plots,
            (std::vector<bool>{true, false, true}));
}

}  // namespace
