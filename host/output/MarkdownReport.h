// The report as Markdown with pipe tables, for notebooks, wikis and version control.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "host/output/Report.h"
#include "platform/Visibility.h"

namespace BayesHost {

struct BAYES_PLATFORM MarkdownReport {
  // Text that Markdown takes for nothing but text, on one line.
  static std::string Escape(std::string_view text);

  static void Write(const Report& report, std::ostream& out);
};

}  // namespace BayesHost
