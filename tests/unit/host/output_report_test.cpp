// One document, built through the platform's calls as the module does, and what each reader makes of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <sstream>

#include "host/data/Variable.h"
#include "host/output/CsvReport.h"
#include "host/output/HtmlReport.h"
#include "host/output/JsonReport.h"
#include "host/output/MarkdownReport.h"
#include "host/output/StringTable.h"
#include "host/output/TextReport.h"
#include "host/session/Session.h"
#include "platform/host/Charts.h"
#include "platform/host/Output.h"
#include "support/Approved.h"

namespace {

using namespace BayesHost;

constexpr double kMissing = -std::numeric_limits<double>::max();

ZARQ_Variable MakeVariable(const std::string& name, const std::string& label, int decimals) {
  auto state = std::make_shared<VariableState>();
  state->fName = name;
  state->fLabel = label;
  state->fFormat.fDecimals = static_cast<std::uint8_t>(decimals);
  if (name == "group") state->fvValueLabels = {{OBS(1), "drug <A>"}, {OBS(2), "drug B & C"}};
  return ZARQ_Variable(state);
}

const ZARQ_Variable kExtra = MakeVariable("extra", "Extra sleep (hours)", 1);
const ZARQ_Variable kGroup = MakeVariable("group", "", 0);

constexpr const char* kChart = R"({"title": "Posterior <1>", "data": {"name": "d"}, "mark": {"type": "line"},
  "datasets": {"d": [{"x": 1, "y": 0.5}, {"x": 2.25, "y": 0.123456}, {"x": 3, "y": null}]},
  "encoding": {"x": {"field": "x", "type": "quantitative", "title": "Mean"},
               "y": {"field": "y", "type": "quantitative", "title": "Density"}}})";

BpComposite Compose(const std::string& key, const std::vector<const BpCellText*>& parts) {
  BpComposite text(key, true);
  for (const BpCellText* part : parts) text.Add(*part);
  text.Finish();
  return text;
}

BpComposite Compose(const std::string& key) {
  return Compose(key, {});
}

// Rows: the group's values under the variable. Columns: single ones, a group, a text. Footnotes of every
// kind.
void ShowSampleTable(BpHeading& place) {
  const BpString title("Posterior Distribution Characterization for One-Sample Mean", true);
  BpPivotTable table = place.PivotTable(title, title, true);
  table.MinDataColumnWidth(6);
  table.Caption(Compose("^1 Prior on Variance ^2...", {&title, &title}));
  table.Note(BpAnnotation(Compose("Bayes Factor: Null...")));
  BpDimension rows = table.Dimension(BpString("Variables", true), 2);
  rows.Position(BpDimension::kRows, 1, true, true);
  BpDimension groups = table.Dimension(BpVariable(kGroup, BpVariable::kLabelElseName), 2);
  groups.Position(BpDimension::kRows, 2, true, true);
  BpDimension columns = table.Dimension(BpString("Statistics", true), 2);
  columns.Position(BpDimension::kColumns, 1, true, true);
  rows.Category(BpVariable(kExtra, BpVariable::kLabelElseName));
  for (const double code : {1.0, 2.0}) {
    const BpDataValue value(OBS(code), kGroup);
    BpComposite label("= [%1:, ^1:]1", true);
    label.Sublist();
    label.Add(value);
    label.EndSublist();
    label.Finish();
    groups.Category(label);
    columns.Category(BpString("N", true)).Cell(BpNumber(10 * code, BpProcedure::Count()));
    BpGroup posterior = columns.Group(BpString("Posterior", true), true, 2);
    posterior.Category(BpString("Mean", true)).Cell(BpNumber(1.54, BpProcedure::Mean({&kExtra})));
    BpCategory variance = posterior.Category(BpString("Variance", true));
    variance.Cell(BpNumber(code == 1 ? 0.203 : kMissing, BpProcedure::VarSquared({&kExtra})));
    if (code == 2) variance.CellNote(BpAnnotation(Compose("Redundant...")));
    const BpNumber level(95, BpProcedure::SigDigit());
    BpGroup interval = columns.Group(Compose("^1 Credible Interval", {&level}), true, 2);
    interval.Category(BpString("Lower Bound", true)).Cell(BpNumber(-0.001, BpProcedure::GeneralStat()));
    interval.Category(BpString("Upper Bound", true)).Cell(BpNumber(1e7 / 3, BpProcedure::GeneralStat()));
    BpCategory factor = columns.Category(BpString("Bayes Factor", true));
    factor.Note(BpAnnotation(Compose("Bayes Factor: Null...")));
    factor.Cell(BpNumber(0.1264, BpProcedure::GeneralStat()));
    columns.Category(BpString("Contains 0 or not", true)).Cell(BpString("Yes", true));
  }
}

BpComposite ComposeSplit(const std::string& key) {
  BpComposite text(key, true);
  text.Sublist();
  text.SplitList();
  text.EndSublist();
  text.Finish();
  return text;
}

class OutputReport : public testing::Test {
 protected:
  OutputReport() : fSession(MakeOptions()), fUse(fSession) {
    fpOutput = std::make_shared<CommandOutput>("BAYES ONESAMPLE",
                                               "BAYES ONESAMPLE\n  /INFERENCE VARIABLES=extra.", 3);
    fSession.BeginCommand({}, fpOutput);
  }

  static RunOptions MakeOptions() {
    RunOptions options;
    options.fSeed = 1;
    return options;
  }

  void ShowSample() {
    BpProcedure procedure("Bayesian One-Sample", 10);
    AddNotes(4, BpString("Weight Handling", true), BpString("not applicable", true));
    AddNotes(2, BpString("Model File", true), BpString("model.xml", false));
    fpOutput->SetSplit({{"site", "Site", std::string("north"), "north"}, {"year", "year", 2.5, "2.5"}});
    BpError(ComposeSplit("No valid cases in split [%1=%2:,^1=^2:]1 ..."), kBpErrorShowAll,
            kBpErrorLevelWarning);
    ShowSampleTable(procedure);
    BpHeading heading = procedure.Heading(ComposeSplit("[%1 = %2:, ^1 = ^2:]1"));
    fpOutput->Add(Chart{"Plots for extra", "bayes", kChart, "<svg></svg>"});
    heading.Close();
    fpOutput->SetSplit({});
    Message message{Message::Level::Error, ShowKey("^1 = ^2", {"A", "B"}), 4, 3, "  /C A B"};
    fpOutput->AddMessage(message);
    fpOutput->SetSeed(42);
  }

  Report MakeReport() const {
    return {{"bayes", "0.1.0", 7, DataOrigin{"sleep & more.csv", 300, 20, 3, "00ff"}}, {fpOutput}};
  }

  std::string Text(TextReport::Options options) const {
    std::ostringstream out;
    TextReport(options).Write(MakeReport(), out);
    return out.str();
  }

  Session fSession;
  Session::Use fUse;
  std::shared_ptr<CommandOutput> fpOutput;
};

TEST_F(OutputReport, JsonIsAsApproved) {
  ShowSample();
  std::ostringstream out;
  JsonReport::Write(MakeReport(), out);
  ExpectApproved("output/sample.json", out.str());
}

TEST_F(OutputReport, TextIsAsApproved) {
  ShowSample();
  ExpectApproved("output/sample.txt", Text({}));
}

TEST_F(OutputReport, NarrowAsciiTextIsAsApproved) {
  ShowSample();
  ExpectApproved("output/sample-narrow.txt", Text({50, false, false, false}));
}

TEST_F(OutputReport, MarkdownIsAsApproved) {
  ShowSample();
  std::ostringstream out;
  MarkdownReport::Write(MakeReport(), out);
  ExpectApproved("output/sample.md", out.str());
}

TEST_F(OutputReport, CsvIsAsApproved) {
  ShowSample();
  std::ostringstream out;
  CsvReport::Write(MakeReport(), out);
  ExpectApproved("output/sample.csv", out.str());
}

TEST_F(OutputReport, HtmlIsAsApproved) {
  ShowSample();
  std::ostringstream out;
  HtmlReport::Write(MakeReport(), "<title>{{title}}</title>\n{{head}}{{outline}}{{commands}}{{else}}.", out);
  ExpectApproved("output/sample.html", out.str());
}

TEST_F(OutputReport, HtmlPageOfTheProgramRunsNoScript) {
  ShowSample();
  std::ostringstream out;
  HtmlReport::Write(MakeReport(), out);
  EXPECT_THAT(out.str(), testing::HasSubstr("default-src 'none'"));
  EXPECT_THAT(out.str(), testing::Not(testing::HasSubstr("<script")));
  EXPECT_THAT(out.str(), testing::Not(testing::HasSubstr("{{")));
}

TEST_F(OutputReport, ColourAddsNothingButSequences) {
  ShowSample();
  std::string coloured = Text({80, true, true, true});
  EXPECT_NE(coloured, Text({}));
  for (const char* sequence : {"\x1b[1m", "\x1b[0m"})
    for (std::size_t at; (at = coloured.find(sequence)) != std::string::npos;)
      coloured.erase(at, std::strlen(sequence));
  EXPECT_EQ(coloured, Text({}));
}

TEST_F(OutputReport, TextFromDataSteersNoTerminal) {
  BpProcedure procedure("\x1b[31mtitle", 10);
  const BpString evil("\x1b]0;evil\a", false);
  BpPivotTable table = procedure.PivotTable(evil, evil, true);
  table.Caption(Compose("^1 Prior on Variance ^2...", {&evil, &evil}));
  BpDimension rows = table.Dimension(evil, 2);
  rows.Position(BpDimension::kRows, 1, true, true);
  BpDimension columns = table.Dimension(evil, 2);
  columns.Position(BpDimension::kColumns, 1, true, true);
  rows.Category(evil);
  columns.Category(evil).Cell(evil);
  AddNotes(4, evil, evil);
  fpOutput->Add(Chart{"\x1b[31mchart", "bayes", kChart, ""});
  EXPECT_THAT(Text({}), testing::Not(testing::HasSubstr("\x1b")));
  EXPECT_THAT(Text({}), testing::HasSubstr("?]0;evil?"));
}

TEST_F(OutputReport, OnlyErrorsFailTheCommand) {
  BpError(BpString("Internal warning ...", true), kBpErrorShowAll, kBpErrorLevelWarning);
  EXPECT_FALSE(fpOutput->IsFailed());
  BpError(BpString("Internal error ...", true), kBpErrorShowAll, kBpErrorLevelError);
  EXPECT_TRUE(fpOutput->IsFailed());
}

TEST_F(OutputReport, CompositeStandsForItsOneVariableAndValue) {
  const BpVariable extra(kExtra);
  const BpVariable group(kGroup);
  const BpDataValue one(OBS(1), kGroup);
  BpProcedure procedure("", 10);
  BpPivotTable table = procedure.PivotTable(BpString("F", true), BpString("F", true), true);
  BpDimension rows = table.Dimension(BpString("", false), 2);
  rows.Category(Compose("^1 = ^2", {&group, &one}));
  rows.Category(Compose("^1 - ^2", {&extra, &group}));
  rows.Category(Compose("^1 - ^2", {&group, &extra}));
  rows.Category(Compose("^1 = ^2", {&group, &one}));
  const auto& made = std::get<std::shared_ptr<PivotTable>>(fpOutput->GetItems().front().fContent);
  const auto& categories = made->GetDimensions()[0].fvCategories;
  ASSERT_EQ(categories.size(), 3U);
  EXPECT_EQ(categories[0].GetLabel().fText, "group = drug <A>");
  EXPECT_EQ(categories[0].GetLabel().fVariable, "group");
  EXPECT_EQ(std::get<double>(*categories[0].GetLabel().fValue), 1);
  EXPECT_EQ(categories[1].GetLabel().fVariable, "");
}

TEST_F(OutputReport, TextsOutOfOrderAreProgrammingErrors) {
  BpComposite text("^1", true);
  EXPECT_THROW(AddNotes(4, text, text), std::logic_error);
  EXPECT_THROW(text.SplitList(), std::logic_error);
  text.Sublist();
  EXPECT_THROW(text.Sublist(), std::logic_error);
  EXPECT_THROW(text.Finish(), std::logic_error);
  text.EndSublist();
  text.Finish();
  EXPECT_THROW(text.Add(text), std::logic_error);
  EXPECT_THROW(PathFactory::getPathInstance(1), std::invalid_argument);
}

TEST_F(OutputReport, HiddenTableIsInNoReport) {
  BpProcedure procedure("", 10);
  procedure.PivotTable(BpString("F", true), BpString("F", true), false);
  EXPECT_TRUE(fpOutput->GetItems().empty());
}

// Some of them begin or go on where the layout is shared out between threads; messages are shown elsewhere.
TEST(OutputText, NamesEachOfManySplitsOnce) {
  CommandOutput output("BAYES", "BAYES.", 1);
  std::string expected;
  for (int i = 0; i < 3500; ++i) {
    output.SetSplit({{"g", "g", DataValue(), std::to_string(i)}});
    output.Add(Chart{"first", {}, {}, {}});
    output.Add(Message{});
    output.Add(Chart{"second", {}, {}, {}});
    expected += "\nSplit: g = " + std::to_string(i) + "\n\nChart: first\n\nChart: second\n";
  }
  for (const int threads : {1, 3}) {
    std::ostringstream out;
    TextReport({10, false, false, false, threads}).WriteCommand(output, out);
    EXPECT_TRUE(out.str() == "\n==========\nBAYES\n" + expected) << threads << out.str().substr(0, 200);
  }
}

TEST(OutputCsv, FieldsKeepTheirTextAndRunNothing) {
  const std::pair<const char*, const char*> kFields[] = {
      {"", ""},
      {"a b", "a b"},
      {"a,b", "\"a,b\""},
      {"say \"no\"", "\"say \"\"no\"\"\""},
      {"two\nlines", "\"two\nlines\""},
      {"=1+1", "'=1+1"},
      {"@x", "'@x"},
      {"-2, or +3", "\"'-2, or +3\""},
  };
  for (const auto& [text, field] : kFields) EXPECT_EQ(CsvReport::Field(text), field);
}

TEST(OutputMarkdown, EscapesEverythingThatMarksUp) {
  EXPECT_EQ(MarkdownReport::Escape("a|b *c*\n<img> [x](y) `z`"),
            "a\\|b \\*c\\* \\<img\\> \\[x\\](y) \\`z\\`");
}

TEST(OutputHtml, EscapesEverythingThatMarksUp) {
  EXPECT_EQ(HtmlReport::Escape("<a href=\"x\">&'\n\x01</a>"),
            "&lt;a href=&quot;x&quot;&gt;&amp;&#39;\n\uFFFD&lt;/a&gt;");
}

}  // namespace
