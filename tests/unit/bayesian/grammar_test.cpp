// The grammars that the entry points declare, taken from them in describe mode.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "bayesian/bayesentry.h"
#include "host/output/CommandOutput.h"
#include "host/parser/GrammarHelp.h"
#include "host/session/Session.h"
#include "support/GrammarWalk.h"

namespace {

using BayesHost::GrammarHelp;
using BayesHost::GrammarWalk;

struct Command {
  const char* fName;
  void (*fpEntry)(void*);
  int fBoundaries;
};

// The boundaries are counted by hand in the tables of the commands: each bound of each number.
const Command kCommands[] = {
    {"BAYES ONESAMPLE", bayesone_, 17},   {"BAYES RELATED", bayesrel_, 15},
    {"BAYES INDEPENDENT", bayesidp_, 13}, {"BAYES CORRELATION", bayescor_, 16},
    {"BAYES REGRESSION", bayesrgr_, 11},  {"BAYES ANOVA", bayesanv_, 11},
    {"BAYES LOGLINEAR", bayeslgl_, 10},
};

const CommandDescriptor& Describe(const Command& command) {
  BayesHost::RunOptions options;
  options.fParserMode = BayesHost::ParserMode::Describe;
  BayesHost::Session session(options);
  const BayesHost::Session::Use use(session);
  session.BeginCommand({}, std::make_shared<BayesHost::CommandOutput>(command.fName, "", 1));
  command.fpEntry(nullptr);
  return *GrammarHelp::Find(command.fName);
}

TEST(Grammar, BoundariesHoldAtTheLastDigit) {
  for (const Command& command : kCommands)
    EXPECT_EQ(GrammarWalk(Describe(command)).CheckBoundaries(), command.fBoundaries) << command.fName;
}

TEST(Grammar, EveryUnambiguousAbbreviationIsRead) {
  for (const Command& command : kCommands)
    EXPECT_GT(GrammarWalk(Describe(command)).CheckAbbreviations(), 100) << command.fName;
}

// Subcommands in the order of declaration: ! required, * repeatable.
struct SubComs {
  const char* fCommand;
  const char* fList;
};
const SubComs kSubComs[] = {
    {"BAYES ONESAMPLE", "MISSING CRITERIA INFERENCE! DATA* PRIOR"},
    {"BAYES RELATED", "MISSING CRITERIA INFERENCE PAIR!* PRIOR"},
    {"BAYES INDEPENDENT", "MISSING CRITERIA INFERENCE! ESTBF PRIOR"},
    {"BAYES CORRELATION", "MISSING CRITERIA INFERENCE! ESTBF"},
    {"BAYES REGRESSION", "! MISSING CRITERIA INFERENCE ESTBF PRIOR DESIGN PREDICT SAVE OUTFILE FTEST* PLOT"},
    {"BAYES ANOVA", "! MISSING CRITERIA INFERENCE ESTBF PRIOR DESIGN PREDICT SAVE OUTFILE PLOT"},
    {"BAYES LOGLINEAR", "CRITERIA INFERENCE ESTBF TABLE PRINT"},
};

TEST(Grammar, SubcommandsOfEachCommand) {
  for (std::size_t i = 0; i < std::size(kCommands); ++i) {
    std::string list;
    for (const SubComDescriptor& subcommand : Describe(kCommands[i]).GetSubComs())
      list += (list.empty() ? "" : " ") + subcommand.GetName() + (subcommand.IsRequired() ? "!" : "") +
              (subcommand.IsRepeatable() ? "*" : "");
    EXPECT_EQ(list, kSubComs[i].fList) << kSubComs[i].fCommand;
  }
}

// Bodies of commands that differ in what they take.
struct Choice {
  const char* fCommand;
  const char* fBody;
  bool fAccepted;
};
const Choice kChoices[] = {
    {"BAYES CORRELATION", "/INF VAR=a b /MISSING SCOPE=PAIRWISE", true},
    {"BAYES CORRELATION", "/INF VAR=a b /MISSING SCOPE=ANALYSIS", false},
    {"BAYES ONESAMPLE", "/INF VAR=a DIST=NORMAL /MISSING SCOPE=ANALYSIS", true},
    {"BAYES ONESAMPLE", "/INF VAR=a DIST=NORMAL /MISSING SCOPE=PAIRWISE", false},
    {"BAYES ANOVA", "y BY a /MISSING SCOPE=LISTWISE", true},
    {"BAYES ANOVA", "y BY a /MISSING SCOPE=ANALYSIS", false},
    {"BAYES CORRELATION", "/INF VAR=a b /ESTBF TYPE=FRACTION", true},
    {"BAYES CORRELATION", "/INF VAR=a b /ESTBF TYPE=FRACTION(0.5)", true},
    {"BAYES CORRELATION", "/INF VAR=a b /ESTBF TYPE=FRACTION(1)", false},
    {"BAYES INDEPENDENT", "/INF VAR=a GROUP=g /ESTBF COMPUTATION=GONEN(1 2)", true},
    {"BAYES INDEPENDENT", "/INF VAR=a GROUP=g SELECT=LEVEL('x' 'y') DATAVAR=1 2", true},
    {"BAYES INDEPENDENT", "/INF VAR=a GROUP=g SELECT=MIDPOINT(1)", false},
    {"BAYES REGRESSION", "y WITH x /PRIOR VMATRIX=IDENTITY", true},
    {"BAYES REGRESSION", "y WITH x /SAVE MEANPRED VARIANCE=v MODE /OUTFILE MODEL='m.xml'", true},
    {"BAYES REGRESSION", "y WITH x /FTEST LABEL='l' VARIABLES=x INTERCEPT=TRUE TESTVALUES=0 1 /FTEST VAR=x",
     true},
    {"BAYES LOGLINEAR", "/TABLE r BY c /ESTBF SHAPEPARAMS={1 2;3 4} SCALEPARAM=DATA /PRINT CELLS=ALL ROW",
     true},
    {"BAYES LOGLINEAR", "/TABLE r BY c /PRIOR KAPPA=1", false},
};

TEST(Grammar, CommandsDifferInWhatTheyTake) {
  for (const Command& command : kCommands) Describe(command);
  for (const Choice& row : kChoices) {
    std::vector<SubComObj> accepted;
    const std::string text = std::string(row.fCommand) + " " + row.fBody + ".";
    const auto fault = BayesHost::CheckCommand(BayesHost::LexStatement(text), true,
                                               *GrammarHelp::Find(row.fCommand), accepted);
    EXPECT_EQ(!fault, row.fAccepted) << text << (fault ? " " + fault->fKey : "");
  }
}

}  // namespace
