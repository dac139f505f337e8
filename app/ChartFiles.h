// The charts of a report as files of their own.
#pragma once

#include <filesystem>
#include <string>

#include "host/output/Report.h"

namespace BayesApp {

// The name, without ending, of the file of a report's chart: its number (1-based, in the order shown) and
// what file systems take of its title, in lower case: "01-plots-for-height".
std::string NameChartFile(int number, const std::string& title);

// Writes each chart to the folder, which is made when it isn't there: NAME.svg when the chart was drawn, and
// NAME.vl.json. Throws std::system_error when a file can't be written.
void WriteChartFiles(const BayesHost::Report& report, const std::filesystem::path& folder);

}  // namespace BayesApp
