// The report as one HTML file that needs nothing else: no script, no fonts, no network (its content security
// policy forbids them). The page around the results is the template share/html/report.html.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "host/output/Report.h"
#include "platform/Visibility.h"

namespace BayesHost {

struct BAYES_PLATFORM HtmlReport {
  // Text as it may stand between tags and in quoted attributes. Control characters, which HTML knows no way
  // to write, become U+FFFD.
  static std::string Escape(std::string_view text);

  static void Write(const Report& report, std::ostream& out);
  // With the page template given: {{title}}, {{head}}, {{outline}} and {{commands}} are filled.
  static void Write(const Report& report, std::string_view page, std::ostream& out);
};

}  // namespace BayesHost
