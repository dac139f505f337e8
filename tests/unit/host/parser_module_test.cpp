// The parser as a module meets it: through the platform's classes alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/data/DataSet.h"
#include "host/output/HostKeys.h"
#include "host/parser/GrammarHelp.h"
#include "platform/host/Messages.h"
#include "platform/host/Parser.h"
#include "platform/host/VarSpec.h"
#include "support/ParserGrammar.h"
#include "support/ParserSession.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

using testing::ElementsAre;

// A command parsed by UniversalParser, as a module does it.
class ParsedTest : public testing::Test {
 protected:
  int Parse(const std::string& text) {
    fSession.Begin(text);
    ZARQ_TokenSequence tokens(true);
    return UniversalParser(tokens, fSpec, fGrammar).getCommandSpecifications();
  }
  const ParamObj* Param(const char* subcommand, const char* name) {
    const SubComObj* const found = fSpec.getSubComObj(subcommand);
    return found == nullptr ? nullptr : found->getParamObj(name);
  }

  ParserSession fSession;
  CommandDescriptor fGrammar = MakeTestGrammar();
  CommandSpec fSpec;
};

TEST_F(ParsedTest, GivesSubcommandsByName) {
  ASSERT_EQ(Parse("BAYES TEST y BY f /INF VAR=a /PRIO KAPPA=1 /PRIO KAPPA=2."), 0);
  EXPECT_EQ(fSpec.getSubComListSize(), 4);
  EXPECT_EQ(fSpec.getSubComObj("CRITERIA"), nullptr);
  std::vector<const SubComObj*> priors;
  ASSERT_EQ(fSpec.getSubComObj("PRIOR", priors), 2);
  double kappa = 0;
  EXPECT_TRUE(priors[1]->getParamObj("KAPPA")->getNumberValue(kappa));
  EXPECT_EQ(kappa, 2);
  EXPECT_EQ(fSpec.getSubComObj("PRIOR"), priors[0]);
  EXPECT_EQ(fSpec.getSubComObj("")->getExportParamObj()->getTokenList().size(), 3U);
  EXPECT_EQ(priors[0]->getExportParamObj(), nullptr);
}

TEST_F(ParsedTest, ReadsValues) {
  ASSERT_EQ(Parse("BAYES TEST /INF VAR=a /CRI CIL=90 SEED=7 METH=mca"
                  " /PRIO TYPE=conj(1,2) KAPPA MEANV=1 2 VMAT=identity /PAIR VARIABLES=a WITH b"
                  " /PRINT CELLS=row obs /TABLE r BY c."),
            0);
  double number = -1;
  long integer = -1;
  std::vector<double> numbers;
  std::string keyword;
  std::vector<ZARQ_Token> tokens;
  std::vector<std::string> words;
  EXPECT_TRUE(Param("CRITERIA", "CILEVEL")->getNumberValue(number));
  EXPECT_EQ(number, 90);
  EXPECT_TRUE(Param("CRITERIA", "SEED")->getIntegerValue(integer));
  EXPECT_EQ(integer, 7);
  EXPECT_TRUE(Param("CRITERIA", "METHOD")->isStringValueCase("MCA"));
  EXPECT_FALSE(Param("CRITERIA", "METHOD")->isStringValueCase("AGL"));
  EXPECT_TRUE(Param("PRIOR", "TYPE")->getStringAndQual(keyword, tokens));
  EXPECT_EQ(keyword, "CONJUGATE");
  EXPECT_EQ(tokens.size(), 2U);
  EXPECT_TRUE(Param("PRIOR", "TYPE")->getNumberList(numbers));
  EXPECT_THAT(numbers, ElementsAre(1, 2));
  EXPECT_FALSE(Param("PRIOR", "TYPE")->isStringValueCase("CONJUGATE")) << "readers see the values only";
  EXPECT_TRUE(Param("PRIOR", "VMATRIX")->isStringValueCase("IDENTITY"));
  EXPECT_FALSE(Param("PRIOR", "VMATRIX")->getNumberList(numbers));
  EXPECT_TRUE(Param("PRINT", "CELLS")->getUpStringList(words));
  EXPECT_THAT(words, ElementsAre("ROW", "OBSERVED"));
  EXPECT_TRUE(Param("PAIR", "VARIABLES")->getVarList(tokens));
  EXPECT_EQ(tokens.size(), 2U);
  EXPECT_TRUE(fSpec.getSubComObj("TABLE")->getExportParamObj()->getCrossVarList(tokens));
  EXPECT_EQ(tokens[1].GetText(), "c");
}

TEST_F(ParsedTest, ReaderOfAnAbsentValueLeavesItsArgumentAlone) {
  ASSERT_EQ(Parse("BAYES TEST /INF VAR=a /CRI SEED=RANDOM /PRIO KAPPA TYPE=CUSTOM."), 0);
  double number = 5;
  long integer = 5;
  std::vector<double> numbers{5};
  std::string keyword = "old";
  std::vector<ZARQ_Token> tokens;
  EXPECT_FALSE(Param("PRIOR", "KAPPA")->getNumberValue(number));
  EXPECT_FALSE(Param("CRITERIA", "SEED")->getIntegerValue(integer));
  EXPECT_FALSE(Param("PRIOR", "TYPE")->getNumberList(numbers));
  EXPECT_FALSE(Param("PRIOR", "KAPPA")->getStringAndQual(keyword, tokens));
  EXPECT_EQ(Param("PRIOR", "MEANVECTOR"), nullptr);
  EXPECT_EQ(number, 5);
  EXPECT_EQ(integer, 5);
  EXPECT_THAT(numbers, ElementsAre(5));
  EXPECT_EQ(keyword, "old");
}

TEST_F(ParsedTest, RejectionIsOneMessageAndFailsTheCommand) {
  EXPECT_NE(Parse("BAYES TEST\n  /INF VAR=a\n  /CRI CIL=100 METHOD=NOSUCH."), 0);
  EXPECT_EQ(fSession.ShowMessages(),
            std::string("3:12 ") + kHostBoundary + " | CILEVEL | CRITERIA | at least 0, less than 100");
  EXPECT_TRUE(fSession.HasFailed());
}

TEST_F(ParsedTest, MessagesPointAtTheParameterOfTheSubcommandLastRead) {
  ASSERT_EQ(Parse("BAYES TEST\n/INF VAR=a\n/PRIO KAPPA=1\n/PRIO TYPE=CUSTOM KAPPA=2."), 0);
  ParserMessage message;
  message.GenericWarning("before any");
  std::vector<const SubComObj*> priors;
  fSpec.getSubComObj("PRIOR", priors);
  priors[0]->getParamObj("KAPPA");
  message.GenericError("^1 of ^2", "KAPPA", "PRIOR");
  priors[1]->getParamObj("TYPE");
  message.GenericError("^1 of ^2", "KAPPA", "PRIOR");
  message.TokenNoQualif("TYPE CUSTOM", "PRIOR");
  message.ParamExclusive("VARDIST", "KAPPA", "PRIOR");
  message.ParamValueBreakBdry("TYPE CUSTOM 2", "PRIOR", 0, UPSpecTypes::kGreaterThan);
  message.ParamValueBreakBdry("MEANVECTOR", "PRIOR", -1, UPSpecTypes::kAtLeast, 0.5, UPSpecTypes::kLessThan);
  EXPECT_EQ(fSession.ShowMessages(), std::string("1:1 before any\n"
                                                 "3:7 ^1 of ^2 | KAPPA | PRIOR\n"
                                                 "4:19 ^1 of ^2 | KAPPA | PRIOR\n"
                                                 "4:7 ") +
                                         kHostTokenNoQualif + " | TYPE CUSTOM | PRIOR\n4:19 " +
                                         kHostParamExclusive + " | VARDIST | KAPPA | PRIOR\n4:7 " +
                                         kHostBoundary + " | TYPE CUSTOM 2 | PRIOR | greater than 0\n4:1 " +
                                         kHostBoundary +
                                         " | MEANVECTOR | PRIOR | at least -1, less than 0.5");
}

TEST_F(ParsedTest, WarningsDoNotFailTheCommand) {
  ASSERT_EQ(Parse("BAYES TEST."), 0);
  ParserMessage message;
  message.SetCommandName("BAYES TEST");
  message.GenericWarning("^1, ^3", "a", "", "c");
  EXPECT_FALSE(fSession.HasFailed());
  EXPECT_EQ(fSession.GetMessages()[0].fText.fText, "a, c");
  message.NoSubCom();
  EXPECT_TRUE(fSession.HasFailed());
  EXPECT_EQ(fSession.ShowMessages(),
            std::string("1:1 ^1, ^3 | a |  | c\n1:1 ") + kHostNoSubCom + " | BAYES TEST");
}

TEST(ParserDescribe, RecordsTheGrammarAndStops) {
  RunOptions options;
  options.fParserMode = ParserMode::Describe;
  ParserSession session(options);
  session.Begin("");
  ZARQ_TokenSequence tokens(true);
  CommandSpec spec;
  const CommandDescriptor grammar = MakeTestGrammar();
  EXPECT_NE(UniversalParser(tokens, spec, grammar).getCommandSpecifications(), 0);
  EXPECT_EQ(session.ShowMessages(), "");
  ASSERT_NE(GrammarHelp::Find("bayes test"), nullptr);
  EXPECT_EQ(GrammarHelp::Find("bayes test")->GetSubComs().size(), grammar.GetSubComs().size());
  EXPECT_EQ(GrammarHelp::Find("BAYES OTHER"), nullptr);
  EXPECT_THAT(GrammarHelp::GetCommandNames(), testing::Contains("BAYES TEST"));
}

// Columns: 0 id (text), 1 height, 2 Weight, 3 weight, 4 group, 5 sex (text), 6 "2nd", 7 "Body Mass".
class VariablesTest : public ParsedTest {
 protected:
  VariablesTest()
      : fFile(
            "id,height,Weight,weight,group,sex,2nd,Body Mass\n"
            "a,1.5,2,3,1,m,5,6\nb,1.7,3,4,2,f,6,7\n") {
    fSession.Get().SetData(std::make_shared<DataSet>(fFile.GetFile(), DataSet::Limits()));
  }

  // The indices of a list as INFERENCE VARIABLES, or the messages it draws.
  std::string Validate(const std::string& list, bool numericOnly) {
    EXPECT_EQ(Parse("BAYES TEST /INF VARIABLES=" + list + "."), 0) << list;
    VarSpecObj variables("INFERENCE", "VARIABLES", numericOnly, fGrammar);
    const bool valid = variables.ValidateVariables(Param("INFERENCE", "VARIABLES")->getTokenList());
    EXPECT_EQ(valid, fSession.ShowMessages().empty()) << list;
    return valid ? ShowIndices(variables) : fSession.ShowMessages();
  }

  static std::string ShowIndices(const VarSpecObj& variables) {
    EXPECT_EQ(static_cast<std::size_t>(variables.GetNValidVars()), variables.GetVariables().size());
    std::string text;
    for (const int index : variables.GetVariables())
      text += (text.empty() ? "" : " ") + std::to_string(index);
    return text;
  }

  TempData fFile;
};

struct ListCase {
  const char* fList;
  bool fNumericOnly;
  std::string fResult;
};

TEST_F(VariablesTest, ResolveNamesRangesAndAll) {
  const std::string at = "1:27 ";
  const ListCase cases[] = {
      {"height", true, "1"},
      {"group height", true, "4 1"},
      {"HEIGHT", true, "1"},
      {"Weight weight", true, "2 3"},
      {"height HEIGHT group height", true, "1 4"},
      {"height TO group", true, "1 2 3 4"},
      {"weight to group height", true, "3 4 1"},
      {"group TO group", true, "4"},
      {"'2nd' 'Body Mass'", true, "6 7"},
      {"'Body Mass' ALL", false, "7 0 1 2 3 4 5 6"},
      {"id", false, "0"},
      {"WEIGHT", true, at + kHostAmbiguousVariable + " | WEIGHT | Weight, weight"},
      {"hieght", true, at + kHostUnknownVariable + " | hieght | height"},
      {"xyzzy", true, at + kHostUnknownVariable + " | xyzzy | "},
      {"'ALL'", true, at + kHostUnknownVariable + " | ALL | "},
      {"group TO height", true, at + kHostVariableRange + " | group | height"},
      {"id", true, at + kHostVariableNotNumeric + " | id | VARIABLES | INFERENCE | "},
      {"ALL", true, at + kHostVariableNotNumeric + " | id | VARIABLES | INFERENCE | "},
      {"height 2010", true,
       "1:34 " + std::string(kHostNeedValue) + " | 2010 | VARIABLES | INFERENCE | a variable"},
      {"height TO", true,
       "1:34 " + std::string(kHostNeedValue) + " | TO | VARIABLES | INFERENCE | a variable"},
      {"TO height", true, at + kHostNeedValue + " | TO | VARIABLES | INFERENCE | a variable"},
  };
  for (const ListCase& row : cases)
    EXPECT_EQ(Validate(row.fList, row.fNumericOnly), row.fResult) << row.fList;
}

TEST_F(VariablesTest, FailingListIsEmptyAndMayBeSilent) {
  ASSERT_EQ(Parse("BAYES TEST /INF VARIABLES=height."), 0);
  VarSpecObj variables("INFERENCE", "VARIABLES", true, fGrammar);
  ASSERT_TRUE(variables.ValidateVariables(Param("INFERENCE", "VARIABLES")->getTokenList()));
  variables.SetErrorReport(false);
  EXPECT_FALSE(variables.ValidateVariables({ZARQ_Token(ZARQ_Token::Kind::Identifier, "nothing", 0)}));
  EXPECT_EQ(variables.GetNValidVars(), 0);
  EXPECT_EQ(fSession.ShowMessages(), "");
}

struct RegressionCase {
  const char* fBody;
  std::string fResult;
};

TEST_F(VariablesTest, RegressionListIsTakenApart) {
  const std::string where = " | BAYES TEST | BAYES TEST | a variable";
  const RegressionCase cases[] = {
      {"height BY group sex WITH weight", "1; 4 5; 3"},
      {"height WITH weight BY sex", "1; 5; 3"},
      {"height WITH Weight TO group", "1; ; 2 3 4"},
      {"height", "1; ; "},
      {"height weight BY sex", std::string("1:12 ") + kHostNeedDependent + " | BAYES TEST"},
      {"id BY sex", std::string("1:12 ") + kHostDependentNotNumeric + " | id | BAYES TEST | BAYES TEST | "},
      {"height WITH weight sex",
       std::string("1:31 ") + kHostCovariateNotNumeric + " | sex | BAYES TEST | BAYES TEST | "},
      {"height BY group WITH group", std::string("1:33 ") + kHostVariableRepeated + " | group"},
      {"height BY sex SEX", std::string("1:26 ") + kHostVariableRepeated + " | sex"},
      {"height BY", std::string("1:19 ") + kHostNeedValue + " | BY" + where},
      {"height BY WITH weight", std::string("1:22 ") + kHostNeedValue + " | WITH" + where},
      {"height BY sex BY group", std::string("1:26 ") + kHostNeedValue + " | BY" + where},
      {"BY sex", std::string("1:12 ") + kHostNeedValue + " | BY" + where},
      {"height BY sx", std::string("1:22 ") + kHostUnknownVariable + " | sx | sex"},
  };
  for (const RegressionCase& row : cases) {
    ASSERT_EQ(Parse(std::string("BAYES TEST ") + row.fBody + " /INF VARIABLES=a."), 0);
    VarSpecObj dependent("", "", false, fGrammar);
    VarSpecObj factors("", "BY", false, fGrammar);
    VarSpecObj covariates("", "WITH", true, fGrammar);
    const auto& words = fSpec.getSubComObj("")->getExportParamObj()->getTokenList();
    const bool valid = dependent.ValidateRegrVarList(words, factors, "BY", covariates, "WITH", 0);
    const std::string lists =
        ShowIndices(dependent) + "; " + ShowIndices(factors) + "; " + ShowIndices(covariates);
    EXPECT_EQ(valid ? lists : fSession.ShowMessages(), row.fResult) << row.fBody;
    if (!valid) {
      EXPECT_EQ(lists, "; ; ") << row.fBody;
    }
  }
}

TEST_F(VariablesTest, SharedAndForeignVariablesAreNamed) {
  ASSERT_EQ(Parse("BAYES TEST /INF VARIABLES=height group GROUP=weight."), 0);
  VarSpecObj variables("INFERENCE", "VARIABLES", true, fGrammar);
  ASSERT_TRUE(variables.ValidateVariables(Param("INFERENCE", "VARIABLES")->getTokenList()));
  VarSpecObj weight("WEIGHT", true);
  weight.SetVariable(4);
  VarSpecObj whole("SPLIT FILE", false);
  whole.SetVariables({4, 1, 2, 4});
  EXPECT_EQ(whole.GetNValidVars(), 3);
  EXPECT_TRUE(variables.CheckVarListSubset(whole));
  EXPECT_EQ(fSession.ShowMessages(), "");
  EXPECT_FALSE(variables.CheckCommonVars(weight));
  EXPECT_FALSE(variables.CheckVarListSubset(weight));
  weight.SetVariable(3);
  EXPECT_TRUE(variables.CheckCommonVars(weight));
  EXPECT_EQ(fSession.ShowMessages(), std::string("1:34 ") + kHostVariableCommon +
                                         " | group | VARIABLES | WEIGHT\n1:27 " + kHostVariableNotInList +
                                         " | height | VARIABLES | WEIGHT");
}

TEST_F(VariablesTest, CategoryValueMustFitItsVariable) {
  ASSERT_EQ(Parse("BAYES TEST /INF VARIABLES=1 'm  ' f."), 0);
  const auto& tokens = Param("INFERENCE", "VARIABLES")->getTokenList();
  VarSpecObj spec("INFERENCE", "VARIABLES", false, fGrammar);
  const OBS* const number = spec.ValidateCatValue(4, tokens[0]);
  const OBS* const quoted = spec.ValidateCatValue(5, tokens[1]);
  const OBS* const word = spec.ValidateCatValue(5, tokens[2]);
  ASSERT_TRUE(number != nullptr && quoted != nullptr && word != nullptr);
  EXPECT_EQ(*number, OBS(1.0));
  EXPECT_EQ(*quoted, OBS("m"));
  EXPECT_EQ(*word, OBS("f"));
  EXPECT_EQ(spec.ValidateCatValue(5, tokens[0]), nullptr);
  EXPECT_EQ(spec.ValidateCatValue(4, tokens[2]), nullptr);
  EXPECT_EQ(fSession.ShowMessages(), std::string("1:27 ") + kHostCategoryNeedText + " | 1 | sex\n1:35 " +
                                         kHostCategoryNeedNumber + " | f | group");
  spec.SetErrorReport(false);
  EXPECT_EQ(spec.ValidateCatValue(5, tokens[0]), nullptr);
  EXPECT_EQ(fSession.GetMessages().size(), 2U);
}

TEST_F(ParsedTest, VariablesNeedData) {
  ASSERT_EQ(Parse("BAYES TEST /INF VARIABLES=a."), 0);
  VarSpecObj variables("INFERENCE", "VARIABLES", true, fGrammar);
  EXPECT_FALSE(variables.ValidateVariables(Param("INFERENCE", "VARIABLES")->getTokenList()));
  EXPECT_EQ(fSession.ShowMessages(), std::string("1:27 ") + kHostNoData);
}

}  // namespace
}  // namespace BayesHost
