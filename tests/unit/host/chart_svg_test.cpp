// Chart documents as SVG.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "host/charts/SvgChart.h"

namespace {

using BayesHost::ChartError;
using BayesHost::SvgChart;
using Json = nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

Json Channel(const char* field, const char* title, bool hasZero = false) {
  return {{"field", field},
          {"type", "quantitative"},
          {"title", title},
          {"scale", {{"zero", hasZero}, {"nice", false}}}};
}

Json Panel(const std::string& title, const char* x, const char* y) {
  return {{"title", title},
          {"width", 200},
          {"height", 100},
          {"mark", {{"type", "line"}, {"color", "#123456"}, {"strokeDash", {4, 2}}}},
          {"encoding", {{"x", Channel(x, "Mean")}, {"y", Channel(y, "Density")}}}};
}

// Two panels in a column; x runs from 0 to 4 in the first and from 2 to 8 in the second.
Json Document() {
  Json rows = Json::array();
  for (int i = 0; i < 5; ++i) rows.push_back({{"x", i}, {"y", i * i}, {"x2", 2 + 1.5 * i}, {"y2", 4 - i}});
  return {{"title", {{"text", "A chart"}}},
          {"data", {{"name", "graphdataset"}}},
          {"vconcat", {Panel("First", "x", "y"), Panel("Second", "x2", "y2")}},
          {"datasets", {{"graphdataset", rows}}}};
}

std::string Draw(const Json& document) {
  return SvgChart::Draw(document.dump());
}

std::vector<std::string> FindAll(const std::string& text, const char* pattern) {
  const std::regex regex(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
    found.push_back((*match)[1]);
  return found;
}

std::vector<std::string> PathsOf(const std::string& svg) {
  return FindAll(svg, "<path d=\"([^\"]*)\"");
}

std::vector<std::string> PlotsOf(const std::string& svg) {
  return FindAll(svg, "<g transform=\"(translate\\([^)]*\\))\">");
}

TEST(SvgChart, DrawsEveryPanelWithItsTexts) {
  const std::string svg = Draw(Document());
  EXPECT_THAT(svg, testing::StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\""));
  EXPECT_THAT(svg, testing::EndsWith("</svg>"));
  for (const char* text :
       {">First</text>", ">Second</text>", ">Mean</text>", ">Density</text>", ">A chart</text>"})
    EXPECT_THAT(svg, HasSubstr(text));
  EXPECT_EQ(PathsOf(svg).size(), 2U);
  EXPECT_THAT(svg, HasSubstr("stroke=\"#123456\""));
  EXPECT_THAT(svg, HasSubstr("stroke-dasharray=\"4 2\""));
  EXPECT_THAT(svg, Not(HasSubstr("nan")));
  EXPECT_EQ(svg, Draw(Document()));
}

TEST(SvgChart, CurvesFillTheirPlots) {
  const std::vector<std::string> paths = PathsOf(Draw(Document()));
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_EQ(paths[0], "M0 100L50 93.75L100 75L150 43.75L200 0");
  EXPECT_EQ(paths[1], "M0 0L50 25L100 50L150 75L200 100");
}

TEST(SvgChart, SharedAxesShowOneRange) {
  Json document = Document();
  document["resolve"]["scale"]["x"] = "shared";
  const std::vector<std::string> paths = PathsOf(Draw(document));
  ASSERT_EQ(paths.size(), 2U);
  EXPECT_EQ(paths[0], "M0 100L25 93.75L50 75L75 43.75L100 0");
  EXPECT_EQ(paths[1].substr(0, 5), "M50 0");
}

TEST(SvgChart, PanelsOfAColumnStandInLine) {
  Json document = Document();
  for (Json& row : document["datasets"]["graphdataset"]) row["y"] = row["y"].get<double>() * 1e5;
  const std::vector<std::string> plots = PlotsOf(Draw(document));
  ASSERT_EQ(plots.size(), 2U);
  EXPECT_EQ(plots[0].substr(0, plots[0].find(' ')), plots[1].substr(0, plots[1].find(' ')));
}

TEST(SvgChart, RowsStandSideBySide) {
  Json document = Document();
  document["hconcat"] = document["vconcat"];
  document.erase("vconcat");
  const std::vector<std::string> plots = PlotsOf(Draw(document));
  ASSERT_EQ(plots.size(), 2U);
  EXPECT_EQ(plots[0].substr(plots[0].find(' ')), plots[1].substr(plots[1].find(' ')));
  EXPECT_NE(plots[0], plots[1]);
}

TEST(SvgChart, TextsAreEscaped) {
  Json document = Document();
  const std::string evil = "</svg><script>alert('&')</script>";
  document["title"]["text"] = evil;
  document["vconcat"][0]["title"] = evil;
  document["vconcat"][0]["description"] = evil;
  document["vconcat"][0]["encoding"]["x"]["title"] = evil;
  document["vconcat"][0]["mark"]["color"] = "\"/><script>";
  const std::string svg = Draw(document);
  EXPECT_THAT(svg, Not(HasSubstr("<script")));
  EXPECT_THAT(svg, HasSubstr("&lt;script&gt;"));
  EXPECT_EQ(svg.find("</svg>"), svg.size() - 6);
}

TEST(SvgChart, MissingValuesBreakTheCurve) {
  Json document = Document();
  document["datasets"]["graphdataset"][2]["y"] = nullptr;
  const std::string svg = Draw(document);
  EXPECT_EQ(PathsOf(svg)[0], "M0 100L50 93.75M150 43.75L200 0");
}

TEST(SvgChart, AreasReachDownToZero) {
  Json document = Document();
  for (Json& row : document["datasets"]["graphdataset"]) row["y"] = row["y"].get<double>() + 16;
  document["vconcat"][0]["mark"] = {{"type", "area"}, {"color", "#123456"}, {"opacity", 0.2}};
  const std::string svg = Draw(document);
  EXPECT_EQ(PathsOf(svg)[0], "M0 50L50 46.88L100 37.5L150 21.88L200 0L200 100L0 100Z");
  EXPECT_THAT(svg, HasSubstr("fill-opacity=\"0.2\""));
}

TEST(SvgChart, TellsTheCurvesToThoseWhoCantSeeThem) {
  const std::string svg = Draw(Document());
  EXPECT_THAT(svg, HasSubstr("<title>A chart</title>"));
  EXPECT_THAT(svg, HasSubstr("Second. From 4 at 2 to 0 at 8; highest, 4, at 2."));
}

// Every text lies inside the drawing, and no two tick labels of an axis touch.
TEST(SvgChart, LongTextsAndLabelsHaveRoom) {
  Json document = Document();
  const std::string words =
      "a rather long title of many words that no panel of this width can hold in one line";
  document["title"]["text"] = words;
  document["vconcat"][0]["title"] = words;
  document["vconcat"][0]["encoding"]["x"]["title"] = words;
  for (Json& row : document["datasets"]["graphdataset"]) row["x"] = row["x"].get<double>() * 0.25 + 1e9;
  const std::string svg = Draw(document);
  EXPECT_THAT(svg, Not(HasSubstr(words + "</text>")));
  const std::vector<std::string> labels = FindAll(svg, "text-anchor=\"middle\">(10000000[0-9.]*)</text>");
  const std::vector<std::string> places =
      FindAll(svg, "<text x=\"([0-9.]*)\" [^>]*text-anchor=\"middle\">10000000[0-9.]*</text>");
  ASSERT_GE(labels.size(), 1U);
  for (std::size_t i = 1; i < labels.size(); ++i)
    EXPECT_GT(std::stod(places[i]) - std::stod(places[i - 1]), 6.6 * static_cast<double>(labels[i].size()));
}

TEST(SvgChart, ExtremeAndConstantCurvesStayNumbers) {
  for (double scale : {0.0, 1e-310, 1e-200, 1e200, 1e306}) {
    Json document = Document();
    for (Json& row : document["datasets"]["graphdataset"]) row["y"] = row["y"].get<double>() * scale;
    const std::string svg = Draw(document);
    for (const char* word : {"nan", "inf", "e+", "-0 "})
      EXPECT_THAT(PathsOf(svg)[0], Not(HasSubstr(word))) << scale;
  }
}

TEST(SvgChart, RefusesWhatItWouldDrawWrongly) {
  struct Case {
    const char* pointer;
    Json value;
    const char* reason;
  };
  const Case cases[] = {
      {"/vconcat/0/mark/type", "bar", "bar"},
      {"/vconcat/0/mark", "line", "colour"},
      {"/vconcat/0/transform", Json::array(), "transform"},
      {"/vconcat/0/encoding/color", {{"field", "y"}}, "channels"},
      {"/vconcat/0/encoding/x/type", "nominal", "channels"},
      {"/vconcat/0/encoding/x/field", "absent", "no number"},
      {"/vconcat/0/title", 7, "title"},
      {"/data/name", "other", "other"},
      {"/vconcat", "text", ""},
  };
  for (const Case& given : cases) {
    Json document = Document();
    document[Json::json_pointer(given.pointer)] = given.value;
    try {
      Draw(document);
      ADD_FAILURE() << given.pointer;
    } catch (const ChartError& error) {
      EXPECT_THAT(error.what(), HasSubstr(given.reason)) << given.pointer;
    }
  }
  EXPECT_THROW(SvgChart::Draw("no json"), ChartError);
}

}  // namespace
