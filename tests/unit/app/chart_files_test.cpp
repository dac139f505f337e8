#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "app/ChartFiles.h"

namespace {

namespace fs = std::filesystem;
using BayesApp::NameChartFile;
using BayesHost::Chart;
using BayesHost::CommandOutput;

TEST(ChartFiles, NamesKeepWhatFileSystemsTake) {
  EXPECT_EQ(NameChartFile(1, "Plots for height"), "01-plots-for-height");
  EXPECT_EQ(NameChartFile(12, "a - B"), "12-a-b");
  EXPECT_EQ(NameChartFile(3, "../../etc/passwd"), "03-etc-passwd");
  EXPECT_EQ(NameChartFile(4, "\xc3\xa4\xc3\xb6"), "04");
  EXPECT_EQ(NameChartFile(100, std::string(500, 'x')), "100-" + std::string(60, 'x'));
}

std::string Read(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

TEST(ChartFiles, ChartsUnderHeadingsAreWrittenTooAndEqualTitlesStayApart) {
  const auto output = std::make_shared<CommandOutput>("BAYES", "BAYES.", 1);
  output->Add(Chart{"T", "bayes", "{\"n\":1}", "<svg>1</svg>"});
  output->OpenHeading(BayesHost::ShownText::Plain("site = north"));
  output->Add(Chart{"T", "bayes", "{\"n\":2}", ""});
  const fs::path folder = fs::temp_directory_path() / ("charts-" + std::to_string(getpid())) / "new";
  BayesApp::WriteChartFiles({{}, {output}}, folder);
  EXPECT_EQ(Read(folder / "01-t.svg"), "<svg>1</svg>\n");
  EXPECT_EQ(Read(folder / "01-t.vl.json"), "{\"n\":1}\n");
  EXPECT_EQ(Read(folder / "02-t.vl.json"), "{\"n\":2}\n");
  EXPECT_FALSE(fs::exists(folder / "02-t.svg"));
  fs::remove_all(folder.parent_path());
}

}  // namespace
