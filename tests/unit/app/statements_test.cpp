#include "app/Statements.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

#include "host/output/HostKeys.h"
#include "host/parser/GrammarHelp.h"

namespace BayesApp {
namespace {

std::string ShowNames(const std::vector<ZARQ_Token>& names) {
  std::string text;
  for (const ZARQ_Token& name : names) text += " " + name.GetText();
  return text;
}

struct Show {
  std::string operator()(const BayesStatement& statement) const { return statement.fName; }
  std::string operator()(const DataStatement& statement) const {
    return "data <" + statement.fFile + "> <" + statement.fDictionary + "> <" + statement.fSql + ">";
  }
  std::string operator()(const SplitStatement& statement) const {
    return "split" + ShowNames(statement.fvNames);
  }
  std::string operator()(const WeightStatement& statement) const {
    return "weight" + ShowNames(statement.fvNames);
  }
  std::string operator()(const SaveStatement& statement) const { return "save <" + statement.fFile + ">"; }
  std::string operator()(const BayesHost::Fault& fault) const {
    std::string text = std::to_string(fault.fPosition) + " " + fault.fKey;
    for (const auto& argument : fault.fvArguments) text += " | " + argument.GetText();
    return text;
  }
};

// The statements of a text, one a line.
std::string Split(const std::string& source) {
  std::string text;
  for (const Statement& statement : SplitStatements(source))
    text += (text.empty() ? "" : "\n") + std::visit(Show(), statement.fContent);
  return text;
}

const std::string kCommands =
    "BAYES ONESAMPLE, BAYES RELATED, BAYES INDEPENDENT, BAYES CORRELATION, BAYES REGRESSION, BAYES ANOVA, "
    "BAYES LOGLINEAR, DATA, SPLIT FILE, WEIGHT, SAVE DATA";

struct SplitCase {
  std::string fSource;
  std::string fStatements;
};

const SplitCase kCases[] = {
    {"", ""},
    {"# nothing but a comment.\n", ""},
    {".\n .", ""},
    {"DATA FILE='a.csv'.", "data <a.csv> <> <>"},
    {"data\n  file=\"a.b.csv\"\n  sql='SELECT * FROM data WHERE x > 1.'\n  dict='d.json'.",
     "data <a.b.csv> <d.json> <SELECT * FROM data WHERE x > 1.>"},
    {"SPLIT FILE BY a 'b c'.\nSPLIT FILE OFF.", "split a b c\nsplit"},
    {"SPL FIL by a TO c.", "split a TO c"},
    {"WEIGHT BY w.\nweight off.", "weight w\nweight"},
    {"SAVE DATA OUTFILE='o.csv'.", "save <o.csv>"},
    // commands of the module, abbreviated, with or without a last period
    {"BAYES ONESAMPLE /INF VAR=x.", "BAYES ONESAMPLE"},
    {"bay corr /INF VAR=x y", "BAYES CORRELATION"},
    {"BAYES ANOVA y BY a. # done\nBAYES REG y WITH x.", "BAYES ANOVA\nBAYES REGRESSION"},
    {"BAYES LOG /TABLE a.b BY 'c.'\n.", "BAYES LOGLINEAR"},
    // a fault inside a module's command is the module's to find
    {"BAYES REL 'a.\nDATA FILE='b'.", "BAYES RELATED\ndata <b> <> <>"},
    // faults, and what follows them
    {"FOO x.\nDATA FILE='a'.",
     std::string("0 ") + BayesHost::kHostUnknownCommand + " | FOO | " + kCommands + " | \ndata <a> <> <>"},
    {"DTAA FILE='a'.",
     std::string("0 ") + BayesHost::kHostUnknownCommand + " | DTAA | " + kCommands + " | DATA"},
    {"BAYES ANVOA x.",
     std::string("0 ") + BayesHost::kHostUnknownCommand + " | BAYES ANVOA | " + kCommands + " | BAYES ANOVA"},
    {"BAYES.", std::string("0 ") + BayesHost::kHostUnknownCommand + " | BAYES | " + kCommands +
                   " | BAYES ONESAMPLE, BAYES RELATED"},
    {"BAYES RE x.", std::string("0 ") + BayesHost::kHostUnknownCommand + " | BAYES RE | " + kCommands +
                        " | BAYES RELATED, BAYES REGRESSION"},
    {"/INF VAR=x.", std::string("0 ") + BayesHost::kHostUnknownCommand + " | / | " + kCommands + " | "},
    {"DATA.", std::string("4 ") + BayesHost::kHostMissingBody + " | the end of the command | DATA"},
    {"DATA FILE=a.",
     std::string("10 ") + BayesHost::kHostNeedValue + " | a | FILE | DATA | a file name in quotation marks"},
    {"DATA FLIE='a'.",
     std::string("5 ") + BayesHost::kHostUnknownParam + " | FLIE | DATA | FILE, DICTIONARY, SQL | FILE"},
    {"DATA SQL='a'.",
     std::string("5 ") + BayesHost::kHostMissingParam + " | FILE | DATA | a file name in quotation marks"},
    {"DATA FILE='a.\nWEIGHT OFF.", std::string("10 ") + BayesHost::kHostOpenQuote + "\nweight"},
    {"SPLIT FILE a b.",
     std::string("11 ") + BayesHost::kHostNeedBehind + " | a | SPLIT FILE | BY variables or values, or OFF"},
    {"WEIGHT BY.", std::string("9 ") + BayesHost::kHostParamNeedValue + " | BY | WEIGHT | a variable"},
    {"WEIGHT BY ALL.", std::string("10 ") + BayesHost::kHostNeedValue + " | ALL | BY | WEIGHT | a variable"},
    {"WEIGHT BY v w.", std::string("12 ") + BayesHost::kHostNeedEnd + " | w | WEIGHT"},
    {"WEIGHT OFF w.", std::string("11 ") + BayesHost::kHostNeedEnd + " | w | WEIGHT"},
    {"SAVE FILE='x'.",
     std::string("0 ") + BayesHost::kHostUnknownCommand + " | SAVE FILE | " + kCommands + " | "},
    // a forgotten period
    {"DATA FILE='a'\nBAYES ANOVA y BY a.",
     std::string("14 ") + BayesHost::kHostMissingPeriod + " | BAYES\nBAYES ANOVA"},
    {"BAYES ANOVA y BY a\n  weight off.\nSPLIT FILE OFF.",
     std::string("21 ") + BayesHost::kHostMissingPeriod + " | weight\nweight\nsplit"},
    {"BAYES ANOVA y BY a bayes\nweight.", "BAYES ANOVA"},
};

TEST(Statements, AreFoundAndRead) {
  for (const SplitCase& row : kCases) EXPECT_EQ(Split(row.fSource), row.fStatements) << row.fSource;
}

TEST(Statements, KnowTheirPlaceInTheText) {
  const std::string source = "\n# first\n  DATA FILE='a'.  # x\nBAYES ANOVA y BY a.\n";
  const auto statements = SplitStatements(source);
  ASSERT_EQ(statements.size(), 2U);
  EXPECT_EQ(source.substr(statements[0].fBegin, statements[0].fEnd - statements[0].fBegin), "DATA FILE='a'.");
  EXPECT_EQ(source.substr(statements[1].fBegin, statements[1].fEnd - statements[1].fBegin),
            "BAYES ANOVA y BY a.");
}

TEST(Statements, HaveGrammarsForHelp) {
  for (const CommandDescriptor& grammar : MakeStatementGrammars()) {
    EXPECT_NE(BayesHost::RenderHelpText(grammar).find(grammar.GetProcTitle()), std::string::npos);
    EXPECT_NE(kCommands.find(grammar.GetCommandName()), std::string::npos) << grammar.GetCommandName();
  }
  EXPECT_NE(BayesHost::RenderHelpText(MakeStatementGrammars()[2]).find("{BY variable | OFF}"),
            std::string::npos);
  EXPECT_EQ(GetBayesCommands().size(), 7U);
}

}  // namespace
}  // namespace BayesApp
