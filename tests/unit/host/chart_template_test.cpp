// Chart templates: filling, leaving out, and the way to the output.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "platform/host/Charts.h"
#include "platform/host/Data.h"

namespace {

using BayesHost::Chart;
using BayesHost::Message;
using Json = nlohmann::ordered_json;
using testing::HasSubstr;

ChartString Text(const char* text) {
  return XUtility::ChartStringFromLocalCodePage(text);
}

class ChartTemplate : public testing::Test {
 protected:
  ChartTemplate()
      : fUse(fSession), fOutput(std::make_shared<BayesHost::CommandOutput>("BAYES", "BAYES.", 1)) {
    fSession.BeginCommand({}, fOutput);
  }

  BayesHost::Session fSession{BayesHost::RunOptions{}};
  BayesHost::Session::Use fUse;
  std::shared_ptr<BayesHost::CommandOutput> fOutput;
};

TEST_F(ChartTemplate, LabelsAreFilledOnceAndByCase) {
  XViZTemplate chart("");
  chart.setTemplateText(R"({"[Likelihood]": "[likelihood] [Likelihood] [Graph Title] [none]"})");
  chart.addLabel("[Likelihood]", Text("Likelihood \"of\" x"));
  chart.addLabel("[Graph Title]", Text("[Likelihood]"));
  EXPECT_EQ(chart.GetFilledText(),
            R"({"[Likelihood]":"[likelihood] Likelihood \"of\" x [Likelihood] [none]"})");
}

TEST_F(ChartTemplate, CurvesWithoutSeriesAreLeftOut) {
  const auto fill = [](const std::vector<const char*>& series) {
    XViZTemplate chart("");
    chart.setTemplateText(R"({"vconcat": [
      {"id": 1, "encoding": {"x": {"field": "a"}}, "layer": [{"id": 2}, {"id": 3}]},
      {"hconcat": [{"id": 4, "encoding": {"x": {"field": "b"}, "y": {"field": "c"}}}]},
      {"layer": [{"id": 5, "encoding": {"x": {"field": "c"}}}, {"id": 6, "encoding": {"x": {"field": "b"}}}]}]})");
    for (const char* name : series) chart.addVariable(name);
    std::string ids;
    for (char c : chart.GetFilledText())
      if (c >= '1' && c <= '6') ids += c;
    return ids;
  };
  EXPECT_EQ(fill({"a", "b", "c"}), "123456");
  EXPECT_EQ(fill({"a"}), "123");
  EXPECT_EQ(fill({"b"}), "6");
  EXPECT_EQ(fill({"b", "c"}), "456");
  EXPECT_EQ(fill({}), "");
}

TEST_F(ChartTemplate, BrokenAndMissingTemplatesAreErrorsOfTheRun) {
  XViZTemplate chart("");
  chart.setTemplateText("{broken");
  EXPECT_EQ(chart.GetFilledText(), "");
  EXPECT_TRUE(fSession.IsFatal());
  EXPECT_EQ(fSession.TakeStoredErrors().size(), 1U);
  XViZTemplate missing("no-such-folder");
  missing.setTemplateInternalName("bayes");
  EXPECT_EQ(missing.GetFilledText(), "");
  EXPECT_THAT(fSession.TakeStoredErrors(), testing::ElementsAre(HasSubstr("no-such-folder/bayes.vl.json")));
  XDocument(missing.GetFilledText()).SendChart();
  EXPECT_TRUE(fOutput->GetItems().empty());
}

TEST_F(ChartTemplate, OptionalFilesMayBeAbsent) {
  EXPECT_EQ(FetchFile::fetch("no-such-file", true, false), "");
  EXPECT_FALSE(fSession.IsFatal());
}

TEST_F(ChartTemplate, KeysAreDecodedAndDataAreNot) {
  EXPECT_EQ(XUtility::ChartStringFromOLANG("&lt;").GetText(), "<");
  EXPECT_EQ(XUtility::ChartStringFromOLANG("&gt;=").GetText(), ">=");
  EXPECT_EQ(Text("a&lt;b").GetText(), "a&lt;b");
  EXPECT_EQ(XUtility::ChartStringFromOLANG("Log Likelihood^1", {Text("&lt;")}).GetText(),
            "Log Likelihood: &lt;");
}

// The delivered templates, with every series and with one only.
TEST_F(ChartTemplate, DeliveredTemplatesAreDrawn) {
  const std::vector<std::string> all{"mulike",    "likelihood", "muprior",     "prior",    "mupost",
                                     "posterior", "mulike2",    "likelihood2", "muprior2", "prior2"};
  for (const char* name : {"bayes", "bayes2side"}) {
    for (const std::vector<std::string>& series : {all, {"mupost", "posterior"}}) {
      XViZTemplate chart(STemplate::Get());
      chart.setTemplateInternalName(name);
      chart.addLabel("[Graph Title]", Text("Plots for \"x\""));
      VarDataProcessor data("graphdataset");
      for (const std::string& one : series) {
        chart.addVariable(one);
        data.AddVariable(one);
        for (std::size_t row = 0; row < 5; ++row) data.SetVariableValue(one, row, static_cast<double>(row));
      }
      XDocument document(chart.GetFilledText());
      document.SetDescription(Text("Plots for \"x\""));
      document.setEditor("Bayesian");
      document.setLanguage();
      document.SetChartData(data);
      document.applyCTemplate(name);
      document.SendChart();
      const Chart& sent = std::get<Chart>(fOutput->GetItems().back().fContent);
      EXPECT_EQ(sent.fTitle, "Plots for \"x\"");
      EXPECT_EQ(sent.fTemplate, name);
      EXPECT_THAT(sent.fSvg, HasSubstr("Plots for &quot;x&quot;</text>"));
      const Json json = Json::parse(sent.fVegaLite);
      EXPECT_EQ(json["usermeta"], Json::parse(R"({"procedure": "Bayesian", "language": "en", "template": ")" +
                                              std::string(name) + "\"}"));
      EXPECT_EQ(json["datasets"]["graphdataset"].size(), 5U);
    }
  }
  EXPECT_EQ(fOutput->GetItems().size(), 4U);
}

// Whether there is a chart doesn't depend on what the report makes of it.
TEST(ChartUse, ChartsAreMadeAsFarAsTheReportShowsThem) {
  using BayesHost::ChartUse;
  for (const ChartUse use : {ChartUse::Title, ChartUse::Document, ChartUse::Drawing}) {
    BayesHost::RunOptions options;
    options.fChartUse = use;
    BayesHost::Session session(options);
    const BayesHost::Session::Use inUse(session);
    const auto output = std::make_shared<BayesHost::CommandOutput>("BAYES", "BAYES.", 1);
    session.BeginCommand({}, output);
    for (const char* series : {"x", "absent"}) {
      XViZTemplate chart("");
      chart.setTemplateText(
          R"({"layer": [{"mark": "line", "encoding": {"x": {"field": "x"}, "y": {"field": "x"}}}]})");
      chart.addVariable(series);
      XDocument document(chart.GetFilledText());
      document.SetDescription(Text("Title"));
      document.SendChart();
    }
    ASSERT_EQ(output->GetItems().size(), use == ChartUse::Drawing ? 2U : 1U) << "drawing warns: no data";
    const auto& chart = std::get<Chart>(output->GetItems().back().fContent);
    EXPECT_EQ(chart.fTitle, "Title");
    EXPECT_EQ(chart.fVegaLite.empty(), use == ChartUse::Title);
  }
}

TEST_F(ChartTemplate, MissingValuesAreNullInTheDocument) {
  VarDataProcessor data("d");
  data.AddVariable("long");
  data.AddVariable("short");
  data.SetVariableValue("long", 1, 0.1);
  data.SetVariableValue("short", 0, ZARQ_DataSource::GetMissingValue());
  EXPECT_THROW(data.AddVariable("long"), std::logic_error);
  EXPECT_THROW(data.SetVariableValue("other", 0, 1), std::logic_error);
  XDocument document("{}");
  document.SetChartData(data);
  document.SendChart();
  const Chart* chart = nullptr;
  const Message* message = nullptr;
  for (const auto& item : fOutput->GetItems()) {
    if (const auto* found = std::get_if<Chart>(&item.fContent)) chart = found;
    if (const auto* found = std::get_if<Message>(&item.fContent)) message = found;
  }
  ASSERT_NE(chart, nullptr);
  EXPECT_EQ(chart->fVegaLite, R"({"datasets":{"d":[{"long":null,"short":null},{"long":0.1,"short":null}]}})");
  // What can't be drawn stays a chart, with a warning.
  EXPECT_EQ(chart->fSvg, "");
  ASSERT_NE(message, nullptr);
  EXPECT_EQ(message->fLevel, Message::Level::Warning);
}

}  // namespace
