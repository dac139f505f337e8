// The contents of a report as nested lists of links.
#pragma once

#include <ostream>

#include "host/output/Report.h"

namespace BayesHost {

// Anchors of a report's page. Whoever walks the report in its own order, commands and the items in them each
// before what they hold, and takes a number for each, gets the same ones.
class HtmlAnchors {
 public:
  int Next() { return ++fLast; }
  static std::string OfItem(int number) { return "r" + std::to_string(number); }
  // Of the line above the item that names its split.
  static std::string OfSplit(int number) { return "s" + std::to_string(number); }

 private:
  int fLast = 0;
};

struct HtmlOutline {
  static void Write(const Report& report, std::ostream& out);
};

}  // namespace BayesHost
