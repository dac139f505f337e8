// A chart in an HTML page: its drawing, and the numbers behind it for those who would rather read them.
#pragma once

#include <ostream>

#include "host/output/CommandOutput.h"

namespace BayesHost {

struct HtmlChart {
  // `chart` must have a drawing.
  static void Write(const Chart& chart, std::ostream& out);
};

}  // namespace BayesHost
