#include "host/charts/SvgChart.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/output/HtmlReport.h"
#include "host/output/TextWidth.h"

namespace BayesHost {
namespace {

constexpr const char* kInk = "#1c2430";
constexpr const char* kSoft = "#4a5361";
constexpr const char* kGrid = "#e3e7ec";
constexpr const char* kFont = "system-ui, -apple-system, 'Segoe UI', 'DejaVu Sans', sans-serif";

// Text sizes in pixels, and how much of its size a character takes: fonts differ, so this is on the wide
// side.
constexpr double kTitleSize = 15;
constexpr double kPanelTitleSize = 13;
constexpr double kLabelSize = 12;
constexpr double kCharacterWidth = 0.6;
constexpr double kLineHeight = 1.3;

constexpr double kMargin = 10;
constexpr double kGap = 6;
constexpr double kTickLength = 5;
constexpr double kLabelGap = 3;    // between a tick and its label
constexpr double kKeyLength = 26;  // of the sample of its line before a panel's title
constexpr double kPixelsPerYTick = 30;
constexpr double kPixelsPerXTick = 45;

std::string E(const std::string& text) {
  return HtmlReport::Escape(text);
}

// Pixels with at most two decimals and no sign on a zero.
std::string Px(double pixels) {
  const double rounded = std::round(pixels * 100) / 100 + 0.0;
  return fmt::format("{}", rounded);
}

std::vector<std::string> Wrap(const std::string& text, double size, double width) {
  if (text.empty()) return {};
  return WrapText(text, std::max(1, static_cast<int>(width / (size * kCharacterWidth))));
}

double HeightOf(const std::vector<std::string>& lines, double size) {
  return static_cast<double>(lines.size()) * size * kLineHeight;
}

double WidthOf(const std::vector<std::string>& lines, double size) {
  int columns = 0;
  for (const std::string& line : lines) columns = std::max(columns, DisplayWidth(line));
  return columns * size * kCharacterWidth;
}

struct Margins {
  double fLeft = 0;
  double fTop = 0;
  double fRight = 0;
  double fBottom = 0;
};

struct Size {
  double fWidth = 0;
  double fHeight = 0;
};

// An axis as it is drawn.
struct Scale {
  Ticks fTicks;
  double fLength;

  // Distance from the lower end. Halves keep the widest ranges finite.
  double At(double value) const {
    const Interval& range = fTicks.GetInterval();
    return (value / 2 - range.fLower / 2) / (range.fUpper / 2 - range.fLower / 2) * fLength;
  }
};

Scale MakeScale(const ChartAxis& axis, double length, int count) {
  return {Ticks(axis.fRange, count, axis.fIsRound), length};
}

// As many ticks as have room for their labels.
Scale MakeXScale(const ChartAxis& axis, double length) {
  for (int count = std::max(1, static_cast<int>(length / kPixelsPerXTick));; --count) {
    Scale scale = MakeScale(axis, length, count);
    const double label = (scale.fTicks.GetLongestLabel() + 2) * kLabelSize * kCharacterWidth;
    const auto ticks = static_cast<double>(scale.fTicks.GetValues().size());
    if (count == 1 || ticks * label <= length) return scale;
  }
}

Scale MakeYScale(const ChartAxis& axis, double length) {
  return MakeScale(axis, length, std::max(1, static_cast<int>(length / kPixelsPerYTick)));
}

// A panel with its scales, its wrapped texts and the room they take.
struct Plot {
  explicit Plot(const ChartPanel& panel)
      : fPanel(panel),
        fX(MakeXScale(panel.fX, panel.fWidth)),
        fY(MakeYScale(panel.fY, panel.fHeight)),
        fvTitle(Wrap(panel.fTitle, kPanelTitleSize, panel.fWidth - kKeyLength - kGap)),
        fvXTitle(Wrap(panel.fX.fTitle, kLabelSize, panel.fWidth)),
        fvYTitle(Wrap(panel.fY.fTitle, kLabelSize, panel.fHeight)) {}

  Margins GetMargins() const {
    const double character = kLabelSize * kCharacterWidth;
    const double labels = fY.fTicks.GetLongestLabel() * character;
    const double halfLabel = fX.fTicks.GetLongestLabel() * character / 2;
    const double title = kKeyLength + kGap + WidthOf(fvTitle, kPanelTitleSize);
    const double tooLongTitle = std::max(0.0, title - fPanel.fWidth);
    return {std::max(labels + kTickLength + kGap + HeightOf(fvYTitle, kLabelSize) + kGap, halfLabel),
            HeightOf(fvTitle, kPanelTitleSize) + kGap, std::max(halfLabel, tooLongTitle),
            kTickLength + kLabelGap + kLabelSize * kLineHeight + HeightOf(fvXTitle, kLabelSize) + kGap};
  }

  const ChartPanel& fPanel;
  Scale fX;
  Scale fY;
  std::vector<std::string> fvTitle;
  std::vector<std::string> fvXTitle;
  std::vector<std::string> fvYTitle;
};

Margins LargestOf(const std::vector<Plot>& plots) {
  Margins all;
  for (const Plot& plot : plots) {
    const Margins own = plot.GetMargins();
    all = {std::max(all.fLeft, own.fLeft), std::max(all.fTop, own.fTop), std::max(all.fRight, own.fRight),
           std::max(all.fBottom, own.fBottom)};
  }
  return all;
}

class Writer {
 public:
  explicit Writer(const ChartPanels& panels)
      : fPanels(panels),
        fPlots(panels.fvPanels.begin(), panels.fvPanels.end()),
        fMargins(LargestOf(fPlots)) {}

  std::string Write() {
    const Size plots = SizeOf(fPanels.fLayout);
    const double width = kMargin + fMargins.fLeft + plots.fWidth + fMargins.fRight + kMargin;
    const std::vector<std::string> title = Wrap(fPanels.fTitle, kTitleSize, width - 2 * kMargin);
    const double titleHeight = HeightOf(title, kTitleSize) + (title.empty() ? 0 : kGap);
    const double height = kMargin + titleHeight + fMargins.fTop + plots.fHeight + fMargins.fBottom + kMargin;
    WriteHead(std::max(width, WidthOf(title, kTitleSize) + 2 * kMargin), height);
    WriteLines(title, kMargin, kMargin, kTitleSize, "start", " font-weight=\"600\"");
    WriteLayout(fPanels.fLayout, kMargin + fMargins.fLeft, kMargin + titleHeight + fMargins.fTop);
    return fOut + "</svg>";
  }

 private:
  // Between two plots there is room for the texts around them, whatever the document's spacing.
  double SpacingOf(const ChartLayout& layout) const {
    return std::max(layout.fSpacing, kGap + (layout.fIsRow ? fMargins.fLeft + fMargins.fRight
                                                           : fMargins.fTop + fMargins.fBottom));
  }

  // From the first plot's upper left corner to the last one's lower right.
  Size SizeOf(const ChartLayout& layout) const {
    if (layout.fPanel >= 0) {
      const ChartPanel& panel = fPanels.fvPanels[static_cast<std::size_t>(layout.fPanel)];
      return {panel.fWidth, panel.fHeight};
    }
    Size size;
    for (const ChartLayout& part : layout.fvParts) {
      const Size own = SizeOf(part);
      const double spacing = &part == &layout.fvParts.front() ? 0 : SpacingOf(layout);
      size = layout.fIsRow ? Size{size.fWidth + spacing + own.fWidth, std::max(size.fHeight, own.fHeight)}
                           : Size{std::max(size.fWidth, own.fWidth), size.fHeight + spacing + own.fHeight};
    }
    return size;
  }

  void WriteHead(double width, double height) {
    fOut += fmt::format(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" width=\"{0}\" height=\"{1}\" "
        "viewBox=\"0 0 {0} {1}\" font-family=\"{2}\" font-size=\"{3}\" fill=\"{4}\">\n",
        Px(std::ceil(width)), Px(std::ceil(height)), kFont, Px(kLabelSize), kInk);
    fOut += "<title>" + E(fPanels.fTitle.empty() ? fPlots.front().fPanel.fTitle : fPanels.fTitle) +
            "</title>\n<desc>";
    const char* separator = "";
    for (const Plot& plot : fPlots) {
      fOut += separator + E(Describe(plot));
      separator = "\n";
    }
    fOut += "</desc>\n<rect class=\"paper\" width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
  }

  // A curve in words: what it is, from where to where, and where it peaks.
  static std::string Describe(const Plot& plot) {
    std::string text = plot.fPanel.fTitle + ".";
    if (!plot.fPanel.fDescription.empty()) text += " " + plot.fPanel.fDescription + ".";
    const ChartCurve& curve = plot.fPanel.fvCurves.back();
    const ChartPoint first = curve.fvRuns.front().front();
    const ChartPoint last = curve.fvRuns.back().back();
    ChartPoint peak = first;
    for (const auto& run : curve.fvRuns)
      for (const ChartPoint& point : run)
        if (point.fY > peak.fY) peak = point;
    return text + fmt::format(" From {:.4g} at {:.4g} to {:.4g} at {:.4g}; highest, {:.4g}, at {:.4g}.",
                              first.fY, first.fX, last.fY, last.fX, peak.fY, peak.fX);
  }

  void WriteLayout(const ChartLayout& layout, double left, double top) {
    if (layout.fPanel >= 0) return WritePlot(fPlots[static_cast<std::size_t>(layout.fPanel)], left, top);
    for (const ChartLayout& part : layout.fvParts) {
      WriteLayout(part, left, top);
      const Size size = SizeOf(part);
      if (layout.fIsRow)
        left += size.fWidth + SpacingOf(layout);
      else
        top += size.fHeight + SpacingOf(layout);
    }
  }

  void WritePlot(const Plot& plot, double left, double top) {
    fOut += fmt::format("<g transform=\"translate({} {})\">\n", Px(left), Px(top));
    const double titleTop = -kGap - HeightOf(plot.fvTitle, kPanelTitleSize);
    if (!plot.fvTitle.empty())
      WriteKey(plot.fPanel.fvCurves.back(), titleTop + kPanelTitleSize * kLineHeight / 2);
    WriteLines(plot.fvTitle, kKeyLength + kGap, titleTop, kPanelTitleSize, "start", " font-weight=\"600\"");
    WriteYAxis(plot);
    WriteXAxis(plot);
    for (const ChartCurve& curve : plot.fPanel.fvCurves) WriteCurve(plot, curve);
    fOut += "</g>\n";
  }

  void WriteXAxis(const Plot& plot) {
    const double height = plot.fPanel.fHeight;
    const double labelTop = height + kTickLength + kLabelGap;
    for (std::size_t i = 0; i < plot.fX.fTicks.GetValues().size(); ++i) {
      const double at = plot.fX.At(plot.fX.fTicks.GetValues()[i]);
      WriteGrid(at, 0, at, height);
      WriteRule(at, height, at, height + kTickLength);
      WriteLines({plot.fX.fTicks.GetLabels()[i]}, at, labelTop, kLabelSize, "middle", "");
    }
    WriteRule(0, height, plot.fPanel.fWidth, height);
    WriteLines(plot.fvXTitle, plot.fPanel.fWidth / 2, labelTop + kLabelSize * kLineHeight, kLabelSize,
               "middle", "");
  }

  // The title reads upwards, at the far left of all plots, so that titles of a column stand in line.
  void WriteYAxis(const Plot& plot) {
    for (std::size_t i = 0; i < plot.fY.fTicks.GetValues().size(); ++i) {
      const double at = plot.fPanel.fHeight - plot.fY.At(plot.fY.fTicks.GetValues()[i]);
      WriteGrid(0, at, plot.fPanel.fWidth, at);
      WriteRule(-kTickLength, at, 0, at);
      WriteLines({plot.fY.fTicks.GetLabels()[i]}, -kTickLength - kLabelGap, at - kLabelSize * kLineHeight / 2,
                 kLabelSize, "end", "");
    }
    WriteRule(0, 0, 0, plot.fPanel.fHeight);
    fOut += fmt::format("<g transform=\"translate({} {}) rotate(-90)\">\n", Px(-fMargins.fLeft),
                        Px(plot.fPanel.fHeight / 2));
    WriteLines(plot.fvYTitle, 0, 0, kLabelSize, "middle", "");
    fOut += "</g>\n";
  }

  void WriteGrid(double x1, double y1, double x2, double y2) {
    WriteLine(x1, y1, x2, y2, fmt::format(R"( class="grid" stroke="{}")", kGrid));
  }

  void WriteRule(double x1, double y1, double x2, double y2) {
    WriteLine(x1, y1, x2, y2, fmt::format(" stroke=\"{}\"", kSoft));
  }

  void WriteLine(double x1, double y1, double x2, double y2, const std::string& stroke) {
    fOut += fmt::format("<line x1=\"{}\" y1=\"{}\" x2=\"{}\" y2=\"{}\"{}/>\n", Px(x1), Px(y1), Px(x2), Px(y2),
                        stroke);
  }

  // A sample of the panel's line, beside its title: the legend, where no eye has to travel.
  void WriteKey(const ChartCurve& curve, double at) {
    WriteLine(0, at, kKeyLength, at, " class=\"key\"" + StrokeOf(curve));
  }

  static std::string StrokeOf(const ChartCurve& curve) {
    std::string dashes;
    for (double dash : curve.fvDashes) dashes += (dashes.empty() ? "" : " ") + Px(dash);
    if (!dashes.empty()) dashes = fmt::format(" stroke-dasharray=\"{}\"", dashes);
    return fmt::format(R"( stroke="{}" stroke-width="{}" stroke-opacity="{}"{})", E(curve.fColour),
                       Px(curve.fWidth), curve.fOpacity, dashes);
  }

  // `top`: of the first line's box. The baseline lies at four fifths of a line.
  void WriteLines(const std::vector<std::string>& lines, double x, double top, double size,
                  const char* anchor, const char* more) {
    double baseline = top + size * kLineHeight * 0.8;
    for (const std::string& line : lines) {
      fOut += fmt::format("<text x=\"{}\" y=\"{}\" font-size=\"{}\" text-anchor=\"{}\"{}>{}</text>\n", Px(x),
                          Px(baseline), Px(size), anchor, more, E(line));
      baseline += size * kLineHeight;
    }
  }

  void WriteCurve(const Plot& plot, const ChartCurve& curve) {
    std::string path;
    for (const auto& run : curve.fvRuns) path += PathOf(plot, run, curve.fIsArea);
    if (curve.fIsArea) {
      fOut += fmt::format("<path d=\"{}\" fill=\"{}\" fill-opacity=\"{}\"/>\n", path, E(curve.fColour),
                          curve.fOpacity);
      return;
    }
    fOut +=
        fmt::format("<path d=\"{}\" fill=\"none\"{} stroke-linejoin=\"round\"/>\n", path, StrokeOf(curve));
  }

  // An area reaches down to zero.
  static std::string PathOf(const Plot& plot, const std::vector<ChartPoint>& run, bool isArea) {
    const auto at = [&](double x, double y) {
      return Px(plot.fX.At(x)) + " " + Px(plot.fPanel.fHeight - plot.fY.At(y));
    };
    std::string path;
    for (const ChartPoint& point : run) path += (path.empty() ? "M" : "L") + at(point.fX, point.fY);
    if (isArea) path += "L" + at(run.back().fX, 0) + "L" + at(run.front().fX, 0) + "Z";
    return path;
  }

  const ChartPanels& fPanels;
  std::vector<Plot> fPlots;
  Margins fMargins;
  std::string fOut;
};

}  // namespace

std::string SvgChart::Draw(const std::string& document) {
  const ChartPanels panels = ReadChartPanels(document);
  return Writer(panels).Write();
}

}  // namespace BayesHost
