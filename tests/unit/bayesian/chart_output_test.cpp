// The posterior chart as graph-language text.
#include <gtest/gtest.h>

#include "bayesian/BYSChartOutput.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"

namespace {

struct Case {
  const char* name;
  const char* title;
  const char* description;
  BYSChartOutput (*make)(BpProcedure&, ProcedureDataSource&);
};

class ChartOutput : public testing::TestWithParam<Case> {};

TEST_P(ChartOutput, WritesTheGraphLanguage) {
  BayesHost::Session session({});
  const BayesHost::Session::Use use(session);
  session.BeginCommand({}, std::make_shared<BayesHost::CommandOutput>("BAYES", "BAYES.", 1));
  BpProcedure procedure("Bayesian", 10);
  ProcedureDataSource dataSource;
  const BYSChartOutput output = GetParam().make(procedure, dataSource);
  const BYSChartOutput::Chart chart = output.createPosteriorPlotChart();

  EXPECT_EQ(chart.name, "BYSPosteriorPlot");
  EXPECT_EQ(chart.description, GetParam().description);
  EXPECT_EQ(chart.colourRole, "Color");
  EXPECT_EQ(chart.width, "495.0");
  EXPECT_EQ(chart.height, "136.0");
  EXPECT_EQ(chart.dataSource, "graphdataset");
  EXPECT_EQ(chart.curves, (std::vector<std::string>{"Likelihood", "Prior", "Posterior"}));
  EXPECT_EQ(chart.text, output.createGplPosteriorChart());
  const std::string expected =
      std::string("SOURCE: s=userSource(id(\"graphdataset\"))") +
      "\nDATA: educ=col(source(s), name(\"educ\"), unit.category())" +
      "\nDATA: MEAN_salbegin=col(source(s), name(\"MEAN_salbegin\"))" +
      "\nDATA: jobcat=col(source(s), name(\"jobcat\"), unit.category())" +
      "\nGUIDE: axis(dim(1), label(\"Theta\"))" + "\nGUIDE: axis(dim(2), label(\"\"))" +
      "\nGUIDE: legend(aesthetic(aesthetic.color.interior), label(\"\"))" + "\nGUIDE: text.title(label(\"" +
      GetParam().title + "\"))" + "\nSCALE: cat(dim(1))" + "\nSCALE: linear(dim(2))" +
      "\nSCALE: cat(aesthetic(aesthetic.color.interior))" +
      "\nELEMENT: line(position(educ*MEAN_salbegin), shape.interior(jobcat), color.interior(jobcat), "
      "missing.interpolate())";
  EXPECT_EQ(chart.text, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Tests, ChartOutput,
    testing::Values(Case{"OneSample",
                         "Posterior Distribution Characterization on One Sample Mean Difference ",
                         " Basic Quantities for One-Sample Bayesian Estimation",
                         [](BpProcedure& procedure, ProcedureDataSource& dataSource) {
                           return BYSChartOutput(&procedure, dataSource);
                         }},
                    Case{"Related",
                         "Posterior Distribution Characterization on Related Sample Mean Difference ",
                         " Basic Quantities for Related Sample Bayesian Estimation",
                         [](BpProcedure& procedure, ProcedureDataSource& dataSource) -> BYSChartOutput {
                           return BYSRelatedChartOutput(&procedure, dataSource);
                         }}),
    [](const auto& test) { return test.param.name; });

TEST(ChartOutputDeathTest, NeedsAProcedure) {
  ProcedureDataSource dataSource;
  EXPECT_DEATH(BYSChartOutput(nullptr, dataSource), "BYSChartOutput.*output != 0");
}

}  // namespace
