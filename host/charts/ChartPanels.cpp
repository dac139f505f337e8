#include "host/charts/ChartPanels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace BayesHost {
namespace {

using Json = nlohmann::json;

constexpr double kUsualWidth = 400;
constexpr double kUsualHeight = 120;
constexpr double kUsualSpacing = 20;
constexpr const char* kMembers[] = {"$schema",  "title", "description", "data",    "datasets", "width",
                                    "height",   "layer", "vconcat",     "hconcat", "spacing",  "resolve",
                                    "encoding", "mark",  "usermeta",    "config"};

// A title is a text or an object that holds one; a null title is none.
std::string TitleOf(const Json& spec) {
  const auto found = spec.find("title");
  if (found == spec.end() || found->is_null()) return "";
  if (found->is_object()) return found->value("text", "");
  if (found->is_string()) return found->get<std::string>();
  throw ChartError("a title is no text");
}

class Reader {
 public:
  explicit Reader(const Json& document) : fRows(FindRows(document)) {
    fPanels.fTitle = document.contains("vconcat") || document.contains("hconcat") ? TitleOf(document) : "";
    fPanels.fLayout = ReadLayout(document);
    for (ChartPanel& panel : fPanels.fvPanels) CompleteAxes(panel);
  }

  ChartPanels Take() { return std::move(fPanels); }

 private:
  static const Json& FindRows(const Json& document) {
    const Json::json_pointer name("/data/name");
    if (!document.contains(name)) throw ChartError("it names no data set");
    const auto datasets = document.find("datasets");
    const std::string text = document.at(name).get<std::string>();
    if (datasets == document.end() || !datasets->contains(text))
      throw ChartError("it lacks its data set " + text);
    return datasets->at(text);
  }

  static void RequireKnownMembers(const Json& spec) {
    for (const auto& member : spec.items())
      if (std::find(std::begin(kMembers), std::end(kMembers), member.key()) == std::end(kMembers))
        throw ChartError("\"" + member.key() + "\" can't be drawn");
  }

  ChartLayout ReadLayout(const Json& spec) {
    RequireKnownMembers(spec);
    ChartLayout layout;
    layout.fIsRow = spec.contains("hconcat");
    if (!layout.fIsRow && !spec.contains("vconcat")) {
      layout.fPanel = static_cast<int>(fPanels.fvPanels.size());
      fPanels.fvPanels.push_back(ReadPanel(spec));
      return layout;
    }
    layout.fSpacing = spec.value("spacing", kUsualSpacing);
    const std::size_t first = fPanels.fvPanels.size();
    for (const Json& part : spec.at(layout.fIsRow ? "hconcat" : "vconcat"))
      layout.fvParts.push_back(ReadLayout(part));
    if (spec.value(Json::json_pointer("/resolve/scale/x"), "") == "shared") ShareX(first);
    return layout;
  }

  ChartPanel ReadPanel(const Json& spec) {
    ChartPanel panel;
    panel.fTitle = TitleOf(spec);
    panel.fDescription = spec.value("description", "");
    panel.fWidth = spec.value("width", kUsualWidth);
    panel.fHeight = spec.value("height", kUsualHeight);
    ReadMarks(spec, Json::object(), panel);
    for (ChartAxis* axis : {&panel.fX, &panel.fY})
      if (axis->fRange.fLower > axis->fRange.fUpper) throw ChartError("a panel shows no number");
    return panel;
  }

  // Layers take over the channels that they don't have themselves.
  void ReadMarks(const Json& spec, Json encoding, ChartPanel& panel) {
    RequireKnownMembers(spec);
    encoding.update(spec.value("encoding", Json::object()));
    if (spec.contains("layer")) {
      for (const Json& layer : spec.at("layer")) ReadMarks(layer, encoding, panel);
      return;
    }
    ChartCurve curve = ReadMark(spec.at("mark"));
    const std::string x = ReadChannel(encoding, "x", panel.fX, panel.fvCurves.empty());
    const std::string y = ReadChannel(encoding, "y", panel.fY, panel.fvCurves.empty());
    curve.fvRuns = ReadRuns(x, y);
    if (curve.fIsArea) panel.fY.fHasZero = true;
    for (const auto& run : curve.fvRuns)
      for (const ChartPoint& point : run) {
        Extend(panel.fX.fRange, point.fX);
        Extend(panel.fY.fRange, point.fY);
      }
    panel.fvCurves.push_back(std::move(curve));
  }

  static ChartCurve ReadMark(const Json& mark) {
    if (!mark.is_object()) throw ChartError("a mark has no fixed colour");
    const std::string type = mark.value("type", "");
    if (type != "line" && type != "area") throw ChartError("marks of type \"" + type + "\" can't be drawn");
    ChartCurve curve;
    curve.fIsArea = type == "area";
    curve.fColour = mark.value("color", "#000000");
    curve.fOpacity = mark.value("opacity", 1.0);
    curve.fWidth = mark.value("strokeWidth", 2.0);
    curve.fvDashes = mark.value("strokeDash", std::vector<double>());
    return curve;
  }

  // The channel's field; its axis is that of the panel's first curve.
  static std::string ReadChannel(const Json& encoding, const char* name, ChartAxis& axis, bool isFirst) {
    const auto channel = encoding.find(name);
    if (channel == encoding.end() || !channel->contains("field"))
      throw ChartError(std::string("a curve has no field for ") + name);
    if (encoding.size() != 2 || channel->value("type", "") != "quantitative")
      throw ChartError("a curve has more than quantitative x and y channels");
    if (isFirst) {
      constexpr double kInfinity = std::numeric_limits<double>::infinity();
      axis.fTitle = TitleOf(*channel);
      axis.fHasZero = channel->value(Json::json_pointer("/scale/zero"), true);
      axis.fIsRound = channel->value(Json::json_pointer("/scale/nice"), true);
      axis.fRange = {kInfinity, -kInfinity};
    }
    return channel->at("field").get<std::string>();
  }

  std::vector<std::vector<ChartPoint>> ReadRuns(const std::string& x, const std::string& y) const {
    std::vector<std::vector<ChartPoint>> runs;
    bool isOpen = false;
    for (const Json& row : fRows) {
      const std::optional<double> xValue = NumberOf(row, x);
      const std::optional<double> yValue = NumberOf(row, y);
      if (xValue && yValue) {
        if (!isOpen) runs.emplace_back();
        runs.back().push_back({*xValue, *yValue});
      }
      isOpen = xValue && yValue;
    }
    return runs;
  }

  static std::optional<double> NumberOf(const Json& row, const std::string& field) {
    const auto value = row.find(field);
    if (value == row.end() || !value->is_number()) return std::nullopt;
    const double number = value->get<double>();
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
  }

  static void Extend(Interval& range, double value) {
    range.fLower = std::min(range.fLower, value);
    range.fUpper = std::max(range.fUpper, value);
  }

  // The panels from `first` on get one x range.
  void ShareX(std::size_t first) {
    if (first == fPanels.fvPanels.size()) return;
    Interval all = fPanels.fvPanels[first].fX.fRange;
    for (std::size_t i = first; i < fPanels.fvPanels.size(); ++i) {
      Extend(all, fPanels.fvPanels[i].fX.fRange.fLower);
      Extend(all, fPanels.fvPanels[i].fX.fRange.fUpper);
    }
    for (std::size_t i = first; i < fPanels.fvPanels.size(); ++i) fPanels.fvPanels[i].fX.fRange = all;
  }

  static void CompleteAxes(ChartPanel& panel) {
    for (ChartAxis* axis : {&panel.fX, &panel.fY}) {
      if (axis->fHasZero) Extend(axis->fRange, 0);
      axis->fRange = Widen(axis->fRange.fLower, axis->fRange.fUpper);
    }
  }

  const Json& fRows;
  ChartPanels fPanels;
};

}  // namespace

ChartPanels ReadChartPanels(const std::string& document) {
  try {
    const Json json = Json::parse(document);
    return Reader(json).Take();
  } catch (const Json::exception& error) {
    throw ChartError(error.what());
  }
}

}  // namespace BayesHost
