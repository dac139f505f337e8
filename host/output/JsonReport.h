// The report as JSON, schema "bayes-report/1" (docs/report-schema.md). Equal runs give equal bytes.
#pragma once

#include <ostream>

#include "host/output/Report.h"

namespace BayesHost {

struct BAYES_PLATFORM JsonReport {
  static void Write(const Report& report, std::ostream& out);
};

}  // namespace BayesHost
