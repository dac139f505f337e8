// Model files: documents of splits joined into one, and files that appear whole or not at all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "host/data/DataSet.h"
#include "host/files/PmmlJoin.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "platform/component/Common.h"
#include "platform/host/Files.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

using testing::ElementsAre;

// A model with one factor g, whose levels are single letters; no levels: no model.
std::string MakeDocument(const std::string& levels) {
  std::string values, cells;
  for (const char level : levels) {
    values += std::string("<Value value=\"") + level + "\" property=\"valid\"/>";
    cells += std::string("<PPCell value=\"") + level + "\" predictorName=\"g\" parameterName=\"p1\"/>";
  }
  std::string text =
      "<PMML version=\"4.4\"><Header><Application name=\"made\" version=\"1\"/></Header>"
      "<DataDictionary><DataField name=\"g\" optype=\"categorical\" dataType=\"string\">" +
      values + "</DataField></DataDictionary>";
  if (!levels.empty()) {
    text +=
        "<GeneralRegressionModel><MiningSchema><MiningField name=\"g\"/></MiningSchema><FactorList>"
        "<Predictor name=\"g\"/></FactorList><PPMatrix>" +
        cells + "</PPMatrix></GeneralRegressionModel>";
  }
  return text + "</PMML>\n";
}

std::vector<std::string> ListAttributes(const pugi::xml_node& node, const char* path, const char* attribute) {
  std::vector<std::string> values;
  for (const auto& found : node.select_nodes(path)) {
    values.emplace_back(found.node().attribute(attribute).as_string("(none)"));
  }
  return values;
}

TEST(PmmlJoin, HasASegmentForEachModelUnderItsValues) {
  PmmlJoin join(
      {{"s", "", true, {{OBS(std::string("a")), "first"}}}, {"k", "Label", false, {{OBS(0.1), ""}}}});
  const OBS a(std::string("a")), none{std::string()}, tenth(0.1), missing(MCCommon_850::MCMV::Missing());
  EXPECT_TRUE(join.Add(MakeDocument("xy"), {&a, &tenth}));
  EXPECT_TRUE(join.Add(MakeDocument(""), {&a, &missing})) << "a split without a model";
  EXPECT_TRUE(join.Add(MakeDocument("yz"), {&none, &missing}));
  EXPECT_FALSE(join.Add(MakeDocument("x").substr(0, 200), {&none, &tenth})) << "cut short";
  EXPECT_FALSE(join.Add("", {&none, &tenth}));
  EXPECT_EQ(join.CountSegments(), 2U);
  std::ostringstream stream;
  join.Write(stream);

  pugi::xml_document joined;
  ASSERT_TRUE(joined.load_string(stream.str().c_str())) << stream.str();
  EXPECT_THAT(ListAttributes(joined, "/PMML/Header/Application", "name"), ElementsAre("made"));
  EXPECT_THAT(ListAttributes(joined, "//DataField", "name"), ElementsAre("g", "s", "k"));
  EXPECT_THAT(ListAttributes(joined, "//DataField", "displayName"), ElementsAre("(none)", "(none)", "Label"));
  EXPECT_THAT(ListAttributes(joined, "//DataField[@name='g']/Value", "value"), ElementsAre("x", "y", "z"));
  EXPECT_THAT(ListAttributes(joined, "//DataField[@name='s']/Value", "displayValue"), ElementsAre("first"));
  EXPECT_THAT(ListAttributes(joined, "/PMML/MiningModel/MiningSchema/MiningField", "name"),
              ElementsAre("g", "s", "k"));
  EXPECT_THAT(ListAttributes(joined, "//SimplePredicate", "operator"),
              ElementsAre("equal", "equal", "isMissing", "isMissing"));
  EXPECT_THAT(ListAttributes(joined, "//SimplePredicate", "value"),
              ElementsAre("a", "0.1", "(none)", "(none)"));
  EXPECT_THAT(ListAttributes(joined, "//CompoundPredicate", "booleanOperator"), ElementsAre("and", "and"));
  EXPECT_EQ(joined.select_nodes("//Segment/GeneralRegressionModel").size(), 2U);
}

// A level of another split must not be taken for the level without a parameter.
TEST(PmmlJoin, ModelsKnowTheLevelsOfTheirSplitOnly) {
  PmmlJoin join({{"s", "", true, {}}});
  const OBS a(std::string("a"));
  join.Add(MakeDocument("xy"), {&a});
  std::ostringstream stream;
  join.Write(stream);
  pugi::xml_document joined;
  joined.load_string(stream.str().c_str());
  EXPECT_THAT(ListAttributes(joined, "//DerivedField", "name"), ElementsAre("g_of_split"));
  EXPECT_THAT(ListAttributes(joined, "//Predictor", "name"), ElementsAre("g_of_split"));
  EXPECT_THAT(ListAttributes(joined, "//PPCell", "predictorName"), ElementsAre("g_of_split", "g_of_split"));
  EXPECT_THAT(ListAttributes(joined, "//FieldColumnPair", "field"), ElementsAre("g"));
  std::vector<std::string> mapped;
  for (const auto& cell : joined.select_nodes("//row/*")) mapped.emplace_back(cell.node().text().get());
  EXPECT_THAT(mapped, ElementsAre("x", "x", "y", "y"));
}

// A command file in the data's folder; the model file stands beside it.
class Pooling : public testing::Test {
 protected:
  Pooling() {
    fSession.SetData(std::make_shared<DataSet>(fData.GetFile(), DataSet::Limits{}));
    fOutput = std::make_shared<CommandOutput>("BAYES REGRESSION", "", 1);
    CommandText command;
    command.fFile = (fData.GetFolder() / "study.bay").string();
    fSession.BeginCommand(command, fOutput);
  }

  static void WriteDocument(const std::string& name, const std::string& text) {
    ExtNameStr file;
    file.SetGeneric(name);
    std::ofstream stream;
    ASSERT_TRUE(file.Open(stream, std::ios::out | std::ios::trunc | std::ios::binary));
    stream << text;
    stream.close();
    TestAndStoreToPes(name, 6, 1);
  }

  // Gives a model file these documents; what the file holds then, "" without a file.
  std::string Pool(const std::string& file, const std::vector<std::string>& documents) {
    ZARQ_PMMLPooling pooling(fSource, file);
    const OBS value(1.0);
    for (const std::string& document : documents) {
      std::string name;
      pooling.GetCurrentPMMLName(name, {&value});
      if (name.empty()) continue;
      WriteDocument(name, document);
    }
    pooling.CompletePMML();
    std::ifstream stream(fData.GetFolder() / file);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::string ShowMessages() const {
    std::string text;
    for (const Item& item : fOutput->GetItems()) {
      const auto& message = std::get<Message>(item.fContent);
      text += message.fText.fKey;
      for (const std::string& argument : message.fText.fvArguments) text += " | " + argument;
    }
    return text;
  }

  auto CountFiles() const {
    return std::distance(std::filesystem::directory_iterator(fData.GetFolder()), {});
  }

  TempData fData{"x,s\n1,1\n"};
  Session fSession{RunOptions{}};
  Session::Use fUse{fSession};
  ProcedureDataSource fSource;
  std::shared_ptr<CommandOutput> fOutput;
};

TEST_F(Pooling, WithoutSplitsTheFileIsTheDocument) {
  EXPECT_EQ(Pool("m.xml", {MakeDocument("x")}), MakeDocument("x"));
  EXPECT_EQ(ShowMessages(), "");
}

TEST_F(Pooling, WithSplitsItHoldsThemAll) {
  fSession.GetData()->Require({1});
  fSession.GetData()->Load();
  fSession.GetData()->SetSplit({1});
  const std::string text = Pool("m.xml", {MakeDocument("x"), MakeDocument(""), MakeDocument("y")});
  pugi::xml_document joined;
  ASSERT_TRUE(joined.load_string(text.c_str()));
  EXPECT_EQ(joined.select_nodes("//Segment").size(), 2U);
}

TEST_F(Pooling, WhatCannotBeWrittenLeavesNothing) {
  const struct {
    const char* file;
    std::vector<std::string> documents;
    const char* messages;
  } rows[] = {
      {"none/m.xml",
       {MakeDocument("x")},
       "Host file ^1 not written, reason ^2 ... | none/m.xml | No such file or directory"},
      {"m.xml", {}, "Host no model for file ^1 ... | m.xml"},
      {"m.xml", {MakeDocument("")}, "Host no model for file ^1 ... | m.xml"},
      {"m.xml",
       {MakeDocument("x").substr(0, 100)},
       "Host file ^1 not written, reason ^2 ... | m.xml | No space left on device"},
      {"m.xml", {""}, "Host file ^1 not written, reason ^2 ... | m.xml | No space left on device"},
  };
  for (const auto& row : rows) {
    fOutput = std::make_shared<CommandOutput>("BAYES REGRESSION", "", 1);
    fSession.BeginCommand(fSession.GetCommand(), fOutput);
    EXPECT_EQ(Pool(row.file, row.documents), "") << row.messages;
    EXPECT_EQ(ShowMessages(), row.messages);
    EXPECT_EQ(CountFiles(), 1) << "the data alone";
  }
}

TEST_F(Pooling, AnInterruptedRunWritesNoFile) {
  fSession.Interrupt();
  EXPECT_EQ(Pool("m.xml", {MakeDocument("x")}), "");
  EXPECT_EQ(CountFiles(), 1);
}

TEST_F(Pooling, AFileThatIsGoneIsStoredAsAnError) {
  TestAndStoreToPes("gone.xml", 6, 1);
  EXPECT_EQ(fSession.TakeStoredErrors().size(), 1U);
  TestAndStoreToPes(fData.GetFile().fPath.string(), 6, 1);
  EXPECT_EQ(fSession.TakeStoredErrors().size(), 0U);
}

}  // namespace
}  // namespace BayesHost
