#include "app/ChartFiles.h"

#include <fmt/format.h>

#include <vector>

#include "host/files/OutputFile.h"

namespace BayesApp {

namespace {

constexpr std::size_t kLongestTitle = 60;

void Collect(const BayesHost::ItemList& items, std::vector<const BayesHost::Chart*>& charts) {
  for (const BayesHost::Item& item : items) {
    if (const auto* heading = std::get_if<BayesHost::Heading>(&item.fContent))
      Collect(heading->fItems, charts);
    if (const auto* chart = std::get_if<BayesHost::Chart>(&item.fContent)) charts.push_back(chart);
  }
}

void WriteFile(const std::filesystem::path& path, const std::string& text) {
  BayesHost::OutputFile file(path);
  file.Stream() << text << '\n';
  file.Commit();
}

bool IsPlain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

}  // namespace

std::string NameChartFile(int number, const std::string& title) {
  std::string name;
  for (char c : title) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (IsPlain(c)) {
      name += c;
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
    if (name.size() == kLongestTitle) break;
  }
  if (!name.empty() && name.back() == '-') name.pop_back();
  return fmt::format("{:02}{}{}", number, name.empty() ? "" : "-", name);
}

void WriteChartFiles(const BayesHost::Report& report, const std::filesystem::path& folder) {
  std::vector<const BayesHost::Chart*> charts;
  for (const auto& command : report.fvCommands) Collect(command->GetItems(), charts);
  std::filesystem::create_directories(folder);
  int number = 0;
  for (const BayesHost::Chart* chart : charts) {
    const std::string name = NameChartFile(++number, chart->fTitle);
    if (!chart->fSvg.empty()) WriteFile(folder / (name + ".svg"), chart->fSvg);
    WriteFile(folder / (name + ".vl.json"), chart->fVegaLite);
  }
}

}  // namespace BayesApp
