// What a command's text becomes in the statistical settings, through the real host.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/ParsedCommand.h"

using namespace BayesHost::ParsedCommands;

namespace {

TEST(Parser, ChoicesReachTheSettings) {
  const char* const normal = "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x y";
  const auto with = [](const char* head, const char* tail) { return std::string(head) + " " + tail; };
  const auto seed = [](const BSNSettings& s) { return ShowEach(s.GetRandomSeed()); };
  const auto prior = [](const BSNSettings& s) {
    return ShowEach(s.GetPriorDistType(), s.GetPriorDistParam1(), s.GetPriorDistParam2());
  };
  const auto mean = [](const BSNSettings& s) {
    return ShowEach(s.GetMeanDistType(), s.GetMeanDistParam1(), s.GetMeanDistParam2(), s.GetMeanDistParam3(),
                    s.GetMeanDistParam4());
  };
  const auto computation = [](const BSNSettings& s) {
    return ShowEach(s.GetRegrCompType(), s.GetRegrComPar(), s.GetSecondGonenPar());
  };
  const char* const groups = "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(2 3)";
  const struct {
    const Model& model;
    std::string body;
    std::function<std::string(const BSNSettings&)> read;
    std::string expected;
  } rows[] = {
      // Defaults that come from the command, not from the record.
      {kOne, normal,
       [](const BSNSettings& s) {
         return ShowEach(s.GetTolValue(), s.GetMaxIterations(), s.GetMCSamples(), s.GetCILevel());
       },
       "1e-06 2000 10000 95 "},
      {kOne, normal, [](const BSNSettings& s) { return Show(s.GetCovariates()); }, "0 1 "},
      {kOne, normal, seed, "0 "},
      {kOne, with("/CRITERIA SEED=RANDOM", normal), seed, "0 "},
      {kOne, with("/CRITERIA SEED=17", normal), seed, "17 "},
      {kOne, with("/MISSING SCOPE=LISTWISE", normal),
       [](const BSNSettings& s) { return ShowEach(s.GetMissScope()); }, "1 "},
      {kOne, with("/CRITERIA METHOD=MCA CILEVEL=0", normal),
       [](const BSNSettings& s) { return ShowEach(s.GetMethodType(), s.GetCILevel()); }, "1 0 "},
      // DATA.
      {kOne, with(normal, "/DATA VARIABLES=y VARIANCE=4 ALTERGVALUE=2"),
       [](const BSNSettings& s) { return Show(s.GetDataVarVals()) + "| " + Show(s.GetAlterGValues()); },
       "M 4 | M 2 "},
      {kOne,
       with(normal,
            "/DATA VARIABLES=x y NULLVALUE=-3 /DATA VARIABLES=y VARIANCE=1 /DATA VARIABLES=y NULLVALUE=9"),
       [](const BSNSettings& s) { return Show(s.GetNullValues()) + "| " + Show(s.GetDataVarVals()); },
       "-3 9 | M 1 "},
      {kOne,
       "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=s x ANALYSIS=BAYESFACTOR /DATA VARIABLES=s x "
       "ALTERPRIORPARAM=1 2 /DATA VARIABLES=x NULLPRIORPARAM=3 4",
       [](const BSNSettings& s) {
         return Show(s.GetNullPrior1s()) + "| " + Show(s.GetNullPrior2s()) + "| " +
                Show(s.GetAlterPrior2s()) + "| " + Show(s.GetFactors());
       },
       "2 3 | 2 4 | 2 2 | 3 0 "},
      // PRIOR.
      {kOne, with(normal, "/PRIOR VARDIST=INVGAMMA"), prior, "6 M M "},
      {kOne, with(normal, "/PRIOR VARDIST=INVCHISQ(3 2.5)"), prior, "4 3 2.5 "},
      {kOne, with(normal, "/PRIOR PRECDIST=CHISQ(4) MEANDIST=NORMAL(1)"), prior, "3 4 M "},
      {kOne, with(normal, "/PRIOR PRECDIST=GAMMA MEANDIST=DIFFUSE"), prior, "9 M M "},
      {kOne, with(normal, "/PRIOR PRECDIST=CHISQ(4) MEANDIST=NORMAL(1)"), mean, "0 1 M M M "},
      {kOne, with(normal, "/PRIOR MEANDIST=NORMAL(1)"), mean, "9 M M M M "},
      {kOne, with(normal, "/PRIOR MEANDIST=NORMAL"), mean, "0 M M M M "},
      {kOne, with(normal, "/DATA VARIABLES=x VARIANCE=2 /PRIOR MEANDIST=NORMAL(1 5)"), mean, "0 1 5 M M "},
      {kOne, with(normal, "/DATA VARIABLES=x VARIANCE=2 /PRIOR VARDIST=INVGAMMA MEANDIST=DIFFUSE"), prior,
       "6 M M "},
      {kOne, "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x /PRIOR TYPE=CONJUGATE(0 0)",
       [](const BSNSettings& s) {
         return ShowEach(s.GetPriorType(), s.GetPriorParam1(), s.GetPriorParam2());
       },
       "0 0 0 "},
      {kOne, "/INFERENCE DISTRIBUTION=POISSON VARIABLES=x /PRIOR TYPE=CONJUGATE(1 0)",
       [](const BSNSettings& s) {
         return ShowEach(s.GetPriorType(), s.GetPriorParam1(), s.GetPriorParam2());
       },
       "0 1 0 "},
      // PAIR.
      {kRelated,
       "/PAIR VARIABLES=x y /PAIR VARIABLES=x WITH z VARIANCE=2 NULLVALUE=1 /PAIR VARIABLES=x y VARIANCE=9",
       [](const BSNSettings& s) {
         return Show(s.GetCovariates()) + "| " + Show(s.Get2ndRelatedList()) + "| " +
                Show(s.GetDataVarVals()) + "| " + Show(s.GetNullValues());
       },
       "0 0 | 1 2 | M 2 | 0 1 "},
      {kRelated, "/PAIR VARIABLES=x y", prior, "9 M M "},
      // Groups and computations.
      {kIndependent, groups, computation, "3 M M "},
      {kIndependent, with(groups, "/ESTBF COMPUTATION=ROUDER"), computation, "3 1 M "},
      {kIndependent, with(groups, "/ESTBF COMPUTATION=HYPER"), computation, "2 -0.75 M "},
      {kIndependent, with(groups, "/ESTBF COMPUTATION=HYPER(-0.5)"), computation, "2 -0.5 M "},
      {kIndependent, with(groups, "/ESTBF COMPUTATION=GONEN(0.5 2)"), computation, "4 0.5 2 "},
      {kIndependent, with(groups, "/ESTBF COMPUTATION=GONEN"), computation, "4 M M "},
      {kIndependent,
       with("/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(2 3) DATAVAR=1 2",
            "/PRIOR MEANDIST=NORMAL(1 2 3 4)"),
       mean, "0 1 2 3 4 "},
      {kIndependent, with(groups, "/PRIOR EQUALDATAVAR=TRUE VARDIST=JEFFREYS"), prior, "7 M M "},
      {kIndependent, with(groups, "/PRIOR VARDIST=INVGAMMA(1 1)"), prior, "9 M M "},
  };
  for (const auto& row : rows) {
    const Parsed parsed = Parse(row.model, row.body);
    EXPECT_TRUE(parsed.ok) << row.body << (parsed.messages.empty() ? "" : ": " + parsed.messages[0]);
    EXPECT_EQ(row.read(parsed.settings), row.expected) << row.model.name << " " << row.body;
  }
}

TEST(Parser, WhatDoesNotFitIsNamedByItsMessage) {
  const char* const groups = "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(2 3)";
  const MessageRow rows[] = {
      {kOne, "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x", false,
       "error Bayesian or Poisson need subcommand ^1 ..."},
      {kOne, "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x ANALYSIS=BAYESFACTOR", false,
       "error Param ^1, subcom ^2, need all Alter Prior ..."},
      {kOne, "/INFERENCE DISTRIBUTION=POISSON VARIABLES=x /PRIOR KAPPA=1", false,
       "error Param ^1, subcom ^2, need for Bayesian or Poisson ..."},
      {kOne, "/INFERENCE DISTRIBUTION=POISSON VARIABLES=x /PRIOR TYPE=CONJUGATE(1 2 3)", false,
       "error Param ^1, subcom ^2, two numeric values ..."},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x /PRIOR VARDIST=INVGAMMA(1 2 3)", false,
       "error Param ^1, subcom ^2, two numeric values ..."},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x /DATA VARIABLES=x NULLPRIORPARAM=1", false,
       "error Param ^1, subcom ^2, two numeric values ..."},
      {kOne,
       "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x ANALYSIS=BAYESFACTOR /DATA VARIABLES=x SUCCESS=LEVEL "
       "ALTERPRIORPARAM=1 1",
       false, "error Param ^1, subcom ^2, at least one value ..."},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x /PRIOR VARDIST=INVCHISQ MEANDIST=DIFFUSE", true,
       "warning Option ^1, param ^2, subcom ^3, convert to diffuse ..."},
      {kRelated, "/PAIR VARIABLES=x y /PAIR VARIABLES=x y", true,
       "warning Param ^1, subcom ^2, variable pair repeat ..."},
      {kRelated, "/PAIR VARIABLES=x y z", false, "error Param ^1, subcom ^2, two variable names ..."},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=y", false, "error Param ^1, subcom ^2, two values ..."},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL", false,
       "error Param ^1, subcom ^2, two values ..."},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(2)", false,
       "error Param ^1, subcom ^2, two values ..."},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(2 2)", false,
       "error Param ^1, subcom ^2, two distinct values ..."},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(2 3) DATAVAR=1 2 3", false,
       "error Param ^1, subcom ^2, two numeric values ..."},
      {kIndependent, std::string(groups) + " /ESTBF COMPUTATION=GONEN(1)", false,
       "error Param ^1, subcom ^2, two numeric values ..."},
      {kIndependent, std::string(groups) + " /PRIOR MEANDIST=NORMAL(1 2 3 4)", false,
       "error Indep Miss Variance ..."},
      {kIndependent, std::string(groups) + " /PRIOR MEANDIST=NORMAL(1 2)", false,
       "error Param ^1, subcom ^2, four numeric values ..."},
      {kIndependent, std::string(groups) + " /PRIOR VARDIST=INVGAMMA(1 1)", true,
       "warning Indep var not Diffuse, param ^1, subcom ^2 ..."},
  };
  ExpectMessages(rows);
}

// Boundaries, types and shared variables are the host's to word: here it counts that the command stops with
// one message.
TEST(Parser, RefusesWhatTheHostMustWord) {
  const RefusalRow rows[] = {
      {kOne, "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x /PRIOR TYPE=CONJUGATE(1 0)"},
      {kOne, "/INFERENCE DISTRIBUTION=POISSON VARIABLES=x /PRIOR TYPE=CONJUGATE(0 0)"},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x /PRIOR TYPE=CONJUGATE(1 1)"},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x /PRIOR VARDIST=DIFFUSE PRECDIST=GAMMA"},
      {kOne,
       "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x ANALYSIS=BAYESFACTOR /DATA VARIABLES=x NULLVALUE=1"},
      {kOne,
       "/INFERENCE DISTRIBUTION=POISSON VARIABLES=x ANALYSIS=BAYESFACTOR /DATA VARIABLES=x NULLVALUE=0"},
      {kOne,
       "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=s ANALYSIS=BAYESFACTOR /DATA VARIABLES=s "
       "SUCCESS=MIDPOINT"},
      {kOne,
       "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=x ANALYSIS=BAYESFACTOR /DATA VARIABLES=x "
       "SUCCESS=CUTPOINT"},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=s"},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=x /DATA VARIABLES=y NULLVALUE=1"},
      {kOne, "/INFERENCE DISTRIBUTION=NORMAL VARIABLES=w"},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=x SELECT=LEVEL(1 2)"},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=w SELECT=LEVEL(1 2)"},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=s SELECT=CUTPOINT(1)"},
      {kIndependent, "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(1 2) /ESTBF COMPUTATION=GONEN(1 0)"},
  };
  ExpectHostRefusals(rows);
}

TEST(Parser, SuccessAndGroupsAreValuesOfTheirVariable) {
  const Parsed levels = Parse(kOne,
                              "/INFERENCE DISTRIBUTION=BINOMIAL VARIABLES=s x ANALYSIS=BAYESFACTOR "
                              "/DATA VARIABLES=s SUCCESS=LEVEL('a' 'zz') ALTERPRIORPARAM=1 1 "
                              "/DATA VARIABLES=x SUCCESS=CUTPOINT(1.5) ALTERPRIORPARAM=1 1");
  ASSERT_TRUE(levels.ok);
  ASSERT_EQ(levels.binInfo.size(), 2U);
  EXPECT_EQ(levels.binInfo[0]._kind, BYSValidSpecs::kLevel);
  EXPECT_TRUE(levels.binInfo[0]._isString);
  EXPECT_EQ(levels.binInfo[0]._strValues, (std::vector<std::string>{"a", "zz"}));
  EXPECT_EQ(levels.binInfo[1]._kind, BYSValidSpecs::kCutpoint);
  EXPECT_FALSE(levels.binInfo[1]._isString);
  EXPECT_EQ(levels.binInfo[1]._numValues, std::vector<double>{1.5});

  const Parsed groups = Parse(kIndependent, "/INFERENCE VARIABLES=x GROUP=y SELECT=LEVEL(3 2)");
  ASSERT_TRUE(groups.ok);
  EXPECT_EQ(groups.group._numValues, (std::vector<double>{3, 2}));
}

TEST(ValidSpecs, RemoveDuplicatesKeepsTheFirst) {
  std::vector<int> values{3, 1, 3, 2, 1};
  BYSValidSpecs::removeDuplicates(values);
  EXPECT_EQ(values, (std::vector<int>{3, 1, 2}));
}

}  // namespace
