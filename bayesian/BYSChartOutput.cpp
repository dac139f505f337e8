#include "bayesian/BYSChartOutput.h"

#include "bayesian/BYSAssert.h"

BYSChartOutput::BYSChartOutput(BpProcedure* procedure, ProcedureDataSource& /*dataSource*/)
    : BYSChartOutput(procedure, "One Sample", "One-Sample") {}

BYSChartOutput::BYSChartOutput(BpProcedure* procedure, const char* titleSample, const char* descriptionSample)
    : fTitleSample(titleSample), fDescriptionSample(descriptionSample) {
  BYS::Assert(procedure != nullptr, "BYSChartOutput", "output != 0");
}

BYSChartOutput::Chart BYSChartOutput::createPosteriorPlotChart() const {
  return {"BYSPosteriorPlot",
          " Basic Quantities for " + fDescriptionSample + " Bayesian Estimation",
          "Color",
          "495.0",
          "136.0",
          "graphdataset",
          {"Likelihood", "Prior", "Posterior"},
          createGplPosteriorChart()};
}

std::string BYSChartOutput::createGplPosteriorChart() const {
  return R"(SOURCE: s=userSource(id("graphdataset"))
DATA: educ=col(source(s), name("educ"), unit.category())
DATA: MEAN_salbegin=col(source(s), name("MEAN_salbegin"))
DATA: jobcat=col(source(s), name("jobcat"), unit.category())
GUIDE: axis(dim(1), label("Theta"))
GUIDE: axis(dim(2), label(""))
GUIDE: legend(aesthetic(aesthetic.color.interior), label(""))
GUIDE: text.title(label("Posterior Distribution Characterization on )" +
         fTitleSample + R"( Mean Difference "))
SCALE: cat(dim(1))
SCALE: linear(dim(2))
SCALE: cat(aesthetic(aesthetic.color.interior))
ELEMENT: line(position(educ*MEAN_salbegin), shape.interior(jobcat), color.interior(jobcat), missing.interpolate()))";
}

BYSRelatedChartOutput::BYSRelatedChartOutput(BpProcedure* procedure, ProcedureDataSource& /*dataSource*/)
    : BYSChartOutput(procedure, "Related Sample", "Related Sample") {}
