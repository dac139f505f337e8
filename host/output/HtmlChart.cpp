#include "host/output/HtmlChart.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/charts/ChartPanels.h"
#include "host/output/HtmlReport.h"

namespace BayesHost {
namespace {

// Rows of a panel's table: enough to see a curve's course.
constexpr std::size_t kRows = 20;

std::string E(std::string_view text) {
  return HtmlReport::Escape(text);
}

std::vector<ChartPoint> PointsOf(const ChartPanel& panel) {
  std::vector<ChartPoint> points;
  for (const auto& run : panel.fvCurves.back().fvRuns) points.insert(points.end(), run.begin(), run.end());
  return points;
}

// With the decimals that tell neighbouring rows apart, three digits of their distance; far from one in the
// shortest notation. Adding zero takes the sign off -0.
std::string ShowArgument(double value, double distance) {
  const double decimals = distance > 0 ? 2 - std::floor(std::log10(distance)) : 0;
  return std::abs(decimals) <= 8
             ? fmt::format("{:.{}f}", value + 0.0, std::max(0, static_cast<int>(decimals)))
             : fmt::format("{:.6g}", value + 0.0);
}

// Every so many points, the last one included.
void WriteRows(const std::vector<ChartPoint>& points, std::ostream& out) {
  const std::size_t step = std::max<std::size_t>(1, (points.size() - 1) / kRows);
  const double distance = points[std::min(step, points.size() - 1)].fX - points.front().fX;
  for (std::size_t i = 0; i < points.size(); i += step) {
    const ChartPoint& point = points[points.size() - i <= step ? points.size() - 1 : i];
    out << fmt::format("<tr><td class=\"number\">{}</td><td class=\"number\">{:.4g}</td></tr>\n",
                       ShowArgument(point.fX, distance), point.fY + 0.0);
  }
}

void WritePanel(const ChartPanel& panel, std::ostream& out) {
  out << "<table>\n<caption>" << E(panel.fTitle) << "</caption>\n<thead>\n<tr>";
  for (const std::string& title : {panel.fX.fTitle, panel.fY.fTitle})
    out << R"(<th scope="col" class="number">)" << E(title) << "</th>";
  out << "</tr>\n</thead>\n<tbody>\n";
  WriteRows(PointsOf(panel), out);
  out << "</tbody>\n</table>\n";
}

}  // namespace

void HtmlChart::Write(const Chart& chart, std::ostream& out) {
  out << chart.fSvg << "\n<details>\n<summary>Numbers</summary>\n<div class=\"numbers\">\n";
  for (const ChartPanel& panel : ReadChartPanels(chart.fVegaLite).fvPanels) WritePanel(panel, out);
  out << "</div>\n</details>\n";
}

}  // namespace BayesHost
