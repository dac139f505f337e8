#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/output/HostKeys.h"
#include "host/output/StringTable.h"
#include "host/parser/GrammarCheck.h"
#include "host/session/Session.h"
#include "support/GrammarWalk.h"
#include "support/ParserDump.h"
#include "support/ParserGrammar.h"

namespace BayesHost {
namespace {

// Bodies of BAYES TEST and what is accepted of them. /INF V=a stands for the subcommand that must be there.
struct GoodCommand {
  const char* fBody;
  const char* fAccepted;
};

const GoodCommand kGoodCommands[] = {
    // names, case, abbreviations
    {"/inference variables=a", "/INFERENCE VARIABLES=a"},
    {"/INF VAR=a GRO=g", "/INFERENCE VARIABLES=a GROUP=g"},
    {"/INF VAR=a /CRI METH=mca CIL=90", "/INFERENCE VARIABLES=a /CRITERIA METHOD=MCA CILEVEL=90"},
    {"/CRI MODE=con /INF VAR=a", "/CRITERIA MODE=CON /INFERENCE VARIABLES=a"},
    // the body before the subcommands
    {"y BY f1 f2 WITH x /INF VAR=a", "y BY f1 f2 WITH x /INFERENCE VARIABLES=a"},
    {"y, 'z z' /INF VAR=a", "y 'z z' /INFERENCE VARIABLES=a"},
    // lists
    {"/INF VAR=(a, b c)", "/INFERENCE VARIABLES=a b c"},
    {"/INF VAR=a TO d ALL 'x y' 1.5", "/INFERENCE VARIABLES=a TO d ALL 'x y' 1.5"},
    {"/INF VAR=a b GROUP=g", "/INFERENCE VARIABLES=a b GROUP=g"},
    {"/INF VAR=a GROUP='g h'", "/INFERENCE VARIABLES=a GROUP='g h'"},
    // numbers and keywords
    {"/INF VAR=a /CRI CIL=(95) TOL=1e-3 SEED=RAN",
     "/INFERENCE VARIABLES=a /CRITERIA CILEVEL=95 TOL=0.001 SEED=RANDOM"},
    {"/INF VAR=a /CRI SEED=1e6", "/INFERENCE VARIABLES=a /CRITERIA SEED=1000000"},
    {"/INF VAR=a /PRIO MEANVECTOR=1,-2 .5", "/INFERENCE VARIABLES=a /PRIOR MEANVECTOR=1 -2 0.5"},
    {"/INF VAR=a /PRINT CELLS=ROW, obs COL", "/INFERENCE VARIABLES=a /PRINT CELLS=ROW OBSERVED COLUMN"},
    // matrices
    {"/INF VAR=a /PRIO VMATRIX={1;0,1}", "/INFERENCE VARIABLES=a /PRIOR VMATRIX={1 ; 0 1}"},
    {"/INF VAR=a /PRIO VMATRIX=({1 2;3})", "/INFERENCE VARIABLES=a /PRIOR VMATRIX={1 2 ; 3}"},
    {"/INF VAR=a /PRIO VMATRIX={5}", "/INFERENCE VARIABLES=a /PRIOR VMATRIX=5"},
    {"/INF VAR=a /PRIO VMATRIX=IDENTITY", "/INFERENCE VARIABLES=a /PRIOR VMATRIX=IDENTITY"},
    // qualifiers
    {"/INF VAR=a /PRIO TYPE=CONJ", "/INFERENCE VARIABLES=a /PRIOR TYPE=CONJUGATE"},
    {"/INF VAR=a /PRIO TYPE=CONJ(1 2) KAPPA=3", "/INFERENCE VARIABLES=a /PRIOR TYPE=CONJUGATE(1 2) KAPPA=3"},
    {"/INF VAR=a /PRIO TYPE=CONJUGATE()", "/INFERENCE VARIABLES=a /PRIOR TYPE=CONJUGATE"},
    {"/INF VAR=a /PRIO TYPE=(CUSTOM)", "/INFERENCE VARIABLES=a /PRIOR TYPE=CUSTOM"},
    {"/INF VAR=a /PRIO TYPE=LEVEL('x', 2 y)", "/INFERENCE VARIABLES=a /PRIOR TYPE=LEVEL('x' 2 y)"},
    {"/INF VAR=a /PRIO TYPE=LEVEL /PRIO TYPE=CUT",
     "/INFERENCE VARIABLES=a /PRIOR TYPE=LEVEL /PRIOR TYPE=CUTPOINT"},
    // bare parameters
    {"/INF VAR=a /PRIO KAPPA TYPE=CUSTOM", "/INFERENCE VARIABLES=a /PRIOR KAPPA TYPE=CUSTOM"},
    {"/INF VAR=a /SAVE MEANPRED VARIANCE=v MODE", "/INFERENCE VARIABLES=a /SAVE MEANPRED VARIANCE=v MODE"},
    {"/INF VAR=a /PRINT CELLS=ROW STATISTICS", "/INFERENCE VARIABLES=a /PRINT CELLS=ROW STATISTICS"},
    // pairs, tables, files, texts
    {"/INF VAR=a /PAIR VARIABLES=a b /PAIR VARIABLES=(a WITH b) VARIANCE=2",
     "/INFERENCE VARIABLES=a /PAIR VARIABLES=a b /PAIR VARIABLES=a WITH b VARIANCE=2"},
    {"/INF VAR=a /PAIR VARIABLES=a b c", "/INFERENCE VARIABLES=a /PAIR VARIABLES=a b c"},
    {"/INF VAR=a /TABLE r by c", "/INFERENCE VARIABLES=a /TABLE r by c"},
    {"/INF VAR=a /TABLE r", "/INFERENCE VARIABLES=a /TABLE r"},
    {"/INF VAR=a /TABLE r BY c BY d", "/INFERENCE VARIABLES=a /TABLE r BY c BY d"},
    {"/INF VAR=a /OUT MODEL='m.xml' LABEL='it''s'",
     "/INFERENCE VARIABLES=a /OUTFILE MODEL='m.xml' LABEL='it''s'"},
};

const std::string kName = "BAYES TEST";

// The accepted command as text, "" when it is refused.
std::string Accept(const std::string& command) {
  std::vector<SubComObj> accepted;
  const auto fault = CheckCommand(LexStatement(command), true, MakeTestGrammar(), accepted);
  return fault ? "" : DumpCommand(kName, accepted);
}

TEST(ParserGrammar, AcceptsAndWritesOut) {
  for (const GoodCommand& row : kGoodCommands) {
    const std::string expected = kName + " " + row.fAccepted + ".";
    const std::string accepted = Accept(kName + " " + row.fBody + ".");
    EXPECT_EQ(accepted, expected) << row.fBody;
    EXPECT_EQ(Accept(accepted), accepted) << "its own text reads differently: " << row.fBody;
  }
}

// A command that is its name alone is the module's to refuse.
TEST(ParserGrammar, AcceptsANameAlone) {
  std::vector<SubComObj> accepted;
  EXPECT_FALSE(CheckCommand(LexStatement("BAYES TEST."), true, MakeTestGrammar(), accepted));
  EXPECT_TRUE(accepted.empty());
}

// Bodies and the fault they have: its key, its first and last argument; @ marks its place, which is the
// command's beginning when no @ stands there.
struct BadCommand {
  const char* fBody;
  const char* fKey;
  const char* fFirst;
  const char* fLast;
};

const BadCommand kBadCommands[] = {
    // subcommands
    {"INF @VAR=a", kHostNeedSubCommand, "VAR",
     "CRITERIA, INFERENCE, PRIOR, PAIR, SAVE, OUTFILE, TABLE, PRINT"},
    {"y /@INFER0NCE VAR=a", kHostUnknownSubCommand, "INFER0NCE", "INFERENCE"},
    {"/@XYZ VAR=a", kHostUnknownSubCommand, "XYZ", ""},
    {"/@P VAR=a", kHostUnknownSubCommand, "P", ""},
    {"/@PR VAR=a", kHostUnknownSubCommand, "PR", ""},
    {"/@PRI2 VAR=a", kHostUnknownSubCommand, "PRI2", "PRIOR, PRINT"},
    {"/INF VAR=a @/INF VAR=b", kHostRepeatedSubCommand, "INFERENCE", "BAYES TEST"},
    {"/CRI SEED=1", kHostMissingSubCommand, "INFERENCE", "BAYES TEST"},
    {"/INF VAR=a /@.", kHostNeedSubCommand, "the end of the command",
     "CRITERIA, INFERENCE, PRIOR, PAIR, SAVE, OUTFILE, TABLE, PRINT"},
    // parameters
    {"/INF VAR=a /CRI @CLEVEL=3", kHostUnknownParam, "CLEVEL", "CILEVEL"},
    {"/INF VAR=a /CRI @QQQ=3", kHostUnknownParam, "QQQ", ""},
    {"/INF VAR=a /CRI @METHODE AGL", kHostUnknownParam, "METHODE", "METHOD"},
    {"/INF VAR=a /CRI @QQQ", kHostNeedParam, "QQQ", "CILEVEL, METHOD, SEED, TOL, MODE"},
    {"/INF VAR=a /CRI SEED=1 @SEED=2", kHostRepeatedParam, "SEED", "CRITERIA"},
    {"@/INF GROUP=g", kHostMissingParam, "VARIABLES", "variables or values"},
    {"/INF VAR=a /CRI @SEED", kHostNeedEquals, "SEED", "a whole number, greater than 0, or RANDOM"},
    {"/INF VAR=a /CRI @SEED 5", kHostNeedEquals, "SEED", "a whole number, greater than 0, or RANDOM"},
    {"/INF VAR=a /PRIO @KAPPA(2)", kHostNeedEquals, "KAPPA", "a number"},
    {"/INF VAR=a /CRI SEED=1 @2", kHostOneValue, "SEED", "CRITERIA"},
    {"/INF VAR=a /CRI METHOD=AGL @FOO", kHostOneValue, "METHOD", "CRITERIA"},
    {"/INF VAR=a /CRI SEED=(1 @2)", kHostOneValue, "SEED", "CRITERIA"},
    {"/INF VAR=a @)", kHostExtraBracket, ")", ")"},
    {"/INF VAR=a /CRI SEED=1@)", kHostExtraBracket, ")", ")"},
    {"/INF VAR=a /CRI @5", kHostNeedParam, "5", "CILEVEL, METHOD, SEED, TOL, MODE"},
    // values
    {"/INF VAR=@/CRI SEED=1", kHostParamNeedValue, "VARIABLES", "variables or values"},
    {"/INF VAR=a /CRI SEED=@.", kHostParamNeedValue, "SEED", "a whole number, greater than 0, or RANDOM"},
    {"/INF VAR=a /CRI SEED=@TOL=1", kHostParamNeedValue, "SEED", "a whole number, greater than 0, or RANDOM"},
    {"/INF VAR=a /CRI CILEVEL=@high", kHostNeedValue, "high", "a number, at least 0 and less than 100"},
    {"/INF VAR=a /CRI CILEVEL=@'5'", kHostNeedValue, "'5'", "a number, at least 0 and less than 100"},
    {"/INF VAR=a /CRI CILEVEL=@100", kHostBoundary, "CILEVEL", "at least 0, less than 100"},
    {"/INF VAR=a /CRI SEED=@2.5", kHostNeedValue, "2.5", "a whole number, greater than 0, or RANDOM"},
    {"/INF VAR=a /CRI SEED=@1e20", kHostNeedValue, "1e20", "a whole number, greater than 0, or RANDOM"},
    {"/INF VAR=a /CRI SEED=@RANDON", kHostUnknownValue, "RANDON", "RANDOM"},
    {"/INF VAR=a /CRI METHOD=@MCMC", kHostUnknownValue, "MCMC", ""},
    {"/INF VAR=a /CRI METHOD=@ALG", kHostUnknownValue, "ALG", "AGL"},
    {"/INF VAR=a /CRI MODE=@CONT", kHostAmbiguousValue, "CONT", "CONTRAST, CONTROL"},
    {"/INF VAR=a /CRI METHOD=@'AGL'", kHostNeedValue, "'AGL'", "one of AGL, MCA"},
    {"/INF VAR=a /PRIO MEANVECTOR=1,@/CRI", kHostNeedValue, "/", "numbers"},
    {"/INF VAR=a /PRIO MEANVECTOR=1,@,2", kHostNeedValue, ",", "numbers"},
    {"/INF VAR=a /PRIO MEANVECTOR=1 @x", kHostNeedValue, "x", "numbers"},
    {"/INF VAR=a /PRIO MEANVECTOR=(1 @KAPPA)", kHostNeedValue, "KAPPA", "numbers"},
    {"/INF VAR=a @+ b", kHostNeedValue, "+", "variables or values"},
    {"/INF VAR=a, @GROUP=g", kHostNeedValue, "GROUP", "variables or values"},
    {"/INF VAR=a GROUP=@ALL", kHostNeedValue, "ALL", "a variable"},
    {"/INF VAR=a GROUP=@5", kHostNeedValue, "5", "a variable"},
    {"/INF VAR=a /PRINT CELLS=ROW @ROWS", kHostUnknownValue, "ROWS", "ROW"},
    {"/INF VAR=a /OUT MODEL=@m.xml", kHostNeedValue, "m.xml", "a file name in quotation marks"},
    {"/INF VAR=a /OUT MODEL=@''", kHostNeedValue, "''", "a file name in quotation marks"},
    {"/INF VAR=a /OUT LABEL=@x", kHostNeedValue, "x", "a text in quotation marks"},
    // brackets and matrices
    {"/INF VAR=@(a b /CRI SEED=1", kHostOpenBracket, "(", "("},
    {"/INF VAR=@(a b GROUP=g", kHostOpenBracket, "(", "("},
    {"/INF VAR=a /PRIO VMATRIX=@{1;2 /CRI", kHostOpenBracket, "{", "{"},
    {"/INF VAR=a /PRIO VMATRIX={1;@}", kHostBadMatrix, "VMATRIX", "PRIOR"},
    {"/INF VAR=a /PRIO VMATRIX={@}", kHostBadMatrix, "VMATRIX", "PRIOR"},
    {"/INF VAR=a /PRIO VMATRIX=1@;2", kHostBadMatrix, "VMATRIX", "PRIOR"},
    {"/INF VAR=a /PRIO VMATRIX={1} @2", kHostOneValue, "VMATRIX", "PRIOR"},
    {"/INF VAR=(@)", kHostParamNeedValue, "VARIABLES", "variables or values"},
    // qualifiers
    {"/INF VAR=a /PRIO TYPE=@CONJUGTE", kHostUnknownValue, "CONJUGTE", "CONJUGATE"},
    {"/INF VAR=a /PRIO TYPE=@CU", kHostUnknownValue, "CU", ""},
    {"/INF VAR=a /PRIO TYPE=@5", kHostNeedValue, "5", "one of CONJUGATE, CUSTOM, LEVEL, CUTPOINT"},
    {"/INF VAR=a /PRIO TYPE=CUSTOM @LEVEL(1)", kHostOneQualifier, "TYPE",
     "CONJUGATE, CUSTOM, LEVEL, CUTPOINT"},
    {"/INF VAR=a /PRIO TYPE=CUSTOM@(1)", kHostTokenNoQualif, "TYPE CUSTOM", "PRIOR"},
    {"/INF VAR=a /PRIO TYPE=CUSTOM @1", kHostTokenNoQualif, "TYPE CUSTOM", "PRIOR"},
    {"/INF VAR=a /PRIO TYPE=CUTPOINT @1", kHostNeedParentheses, "TYPE CUTPOINT", "PRIOR"},
    {"/INF VAR=a /PRIO TYPE=LEVEL(@)", kHostParamNeedValue, "TYPE LEVEL", "variables or values"},
    {"/INF VAR=a /PRIO TYPE=CUTPOINT(1 @2)", kHostOneValue, "TYPE CUTPOINT", "PRIOR"},
    {"/INF VAR=a /PRIO TYPE=CONJUGATE(1 @-2)", kHostBoundary, "TYPE CONJUGATE", "at least 0"},
    // pairs and tables
    {"/INF VAR=a /PAIR VARIABLES=@WITH b", kHostNeedValue, "WITH", "variables, a b or a WITH b"},
    {"/INF VAR=a /PAIR VARIABLES=a WITH @/CRI", kHostNeedValue, "/", "variables, a b or a WITH b"},
    {"/INF VAR=a /PAIR VARIABLES=a WITH @WITH b", kHostNeedValue, "WITH", "variables, a b or a WITH b"},
    {"/INF VAR=a /PAIR VARIABLES=a @5", kHostNeedValue, "5", "variables, a b or a WITH b"},
    {"/INF VAR=a /TABLE a b@.", kHostNeedTable, "TABLE", "BAYES TEST"},
    {"/INF VAR=a /TABLE a BY@.", kHostNeedValue, "the end of the command", "variables, rows BY columns"},
    {"/INF VAR=a /TABLE@.", kHostParamNeedValue, "TABLE", "variables, rows BY columns"},
};

TEST(ParserGrammar, RefusesWithKeyAndPlace) {
  for (const BadCommand& row : kBadCommands) {
    std::string command = kName + "\n " + row.fBody;
    const std::size_t place = command.find('@');
    if (place != std::string::npos) command.erase(place, 1);
    if (!command.ends_with('.')) command += '.';
    std::vector<SubComObj> accepted;
    const auto fault = CheckCommand(LexStatement(command), true, MakeTestGrammar(), accepted);
    ASSERT_TRUE(fault) << command;
    EXPECT_EQ(fault->fKey, row.fKey) << command;
    EXPECT_EQ(fault->fPosition, place == std::string::npos ? 0 : place) << command;
    EXPECT_EQ(fault->fvArguments.front().GetText(), row.fFirst) << command;
    EXPECT_EQ(fault->fvArguments.back().GetText(), row.fLast) << command;
  }
}

TEST(ParserGrammar, MessageNamesLineColumnAndWhatWasExpected) {
  const std::string source = "# heights\nBAYES TEST\n\t/INF VAR=größe /CRI MEHTOD=AGL.";
  const CommandText command{"a.bay", source, 10, source.size()};
  std::vector<SubComObj> accepted;
  const auto fault = CheckCommand(LexStatement(command.GetText()), true, MakeTestGrammar(), accepted);
  ASSERT_TRUE(fault);
  const Message message = MakeMessage(*fault, command);
  EXPECT_EQ(message.fLine, 3);
  EXPECT_EQ(message.fColumn, 22);
  EXPECT_EQ(message.fSourceLine, "\t/INF VAR=größe /CRI MEHTOD=AGL.");
  EXPECT_EQ(
      message.fText.fText,
      "CRITERIA has no parameter MEHTOD. It has CILEVEL, METHOD, SEED, TOL, MODE. Did you mean METHOD?");
}

TEST(ParserGrammar, LexicalFaultComesFirst) {
  std::vector<SubComObj> accepted;
  const auto fault =
      CheckCommand(LexStatement("BAYES TEST /NOSUCH A='b."), true, MakeTestGrammar(), accepted);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->fKey, kHostOpenQuote);
}

TEST(ParserGrammar, BoundariesHoldAtTheLastDigit) {
  const CommandDescriptor grammar = MakeTestGrammar();
  EXPECT_EQ(GrammarWalk(grammar).CheckBoundaries(), 6);
}

TEST(ParserGrammar, DeclaredNamesAreFoundByEveryUnambiguousAbbreviation) {
  const CommandDescriptor grammar = MakeTestGrammar();
  EXPECT_GT(GrammarWalk(grammar).CheckAbbreviations(), 100);
}

}  // namespace
}  // namespace BayesHost
