// Draws a chart document as SVG.
#pragma once

#include <string>

#include "host/charts/ChartPanels.h"
#include "platform/Visibility.h"

namespace BayesHost {

struct BAYES_PLATFORM SvgChart {
  // One <svg> element, which needs nothing else: it may stand in an HTML page or in a file of its own. Equal
  // documents give equal bytes. Its <title> and <desc> tell what is drawn, with the ends and the peak of each
  // curve in numbers. Throws ChartError for what it can't draw (see ChartPanels.h).
  static std::string Draw(const std::string& document);
};

}  // namespace BayesHost
