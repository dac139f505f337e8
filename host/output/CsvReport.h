// The tables of a report as one CSV file (RFC 4180): a line for each cell, which any program for data reads.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "host/output/Report.h"
#include "platform/Visibility.h"

namespace BayesHost {

struct BAYES_PLATFORM CsvReport {
  // A text as a field. Spreadsheets take some texts for formulas and run them: those get an apostrophe
  // before.
  static std::string Field(std::string_view text);

  // The columns: the command's place in the report (1-based), its name, the split, the table's title, the
  // labels of layer, row and column from the outermost inwards, the number in full precision (empty for texts
  // and missing numbers), the cell as shown, and the texts of its footnotes.
  static void Write(const Report& report, std::ostream& out);
};

}  // namespace BayesHost
