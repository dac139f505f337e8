// A chart document, read into the panels that it shows.
//
// The documents are Vega-Lite. What is read of it: `title`, `vconcat` and `hconcat` (nested, with `spacing`
// and shared x scales), panels with `title`, `description`, `width` and `height`, `layer`, the marks `line`
// and `area` with fixed colours, and quantitative x and y channels of fields of the document's own data set.
// Configuration, legends, transforms and everything else that changes what is drawn is beyond it.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "host/charts/ChartTicks.h"
#include "platform/Visibility.h"

namespace BayesHost {

// What in a document can't be drawn, in words.
class BAYES_PLATFORM ChartError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct ChartPoint {
  double fX;
  double fY;
};

struct ChartCurve {
  bool fIsArea = false;
  std::string fColour;
  double fOpacity = 1;
  double fWidth = 2;
  std::vector<double> fvDashes;  // empty: a solid line
  // Runs of neighbouring points; a missing value ends a run.
  std::vector<std::vector<ChartPoint>> fvRuns;
};

struct ChartAxis {
  std::string fTitle;
  bool fHasZero = false;  // the axis includes zero
  bool fIsRound = true;   // the axis ends at ticks
  Interval fRange;        // of the values; of all panels that share the axis
};

struct ChartPanel {
  std::string fTitle;
  std::string fDescription;
  double fWidth = 0;  // of the plot itself, in pixels
  double fHeight = 0;
  ChartAxis fX;
  ChartAxis fY;
  std::vector<ChartCurve> fvCurves;
};

// A panel, or a row or column of further layouts.
struct ChartLayout {
  bool fIsRow = false;
  double fSpacing = 0;
  std::vector<ChartLayout> fvParts;
  int fPanel = -1;  // index of a single panel
};

struct ChartPanels {
  std::string fTitle;
  std::vector<ChartPanel> fvPanels;
  ChartLayout fLayout;
};

// Throws ChartError.
BAYES_PLATFORM ChartPanels ReadChartPanels(const std::string& document);

}  // namespace BayesHost
