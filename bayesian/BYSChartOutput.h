// The posterior chart as text of a graph language, for hosts that draw from such texts. The output of
// commands doesn't use it.
#pragma once

#include <string>
#include <vector>

#include "platform/host/Data.h"
#include "platform/host/Output.h"

class BYSChartOutput {
 public:
  // A chart as a host of the graph language takes it. Sizes are in points.
  struct Chart {
    std::string name;
    std::string description;
    std::string colourRole;
    std::string width;
    std::string height;
    std::string dataSource;
    std::vector<std::string> curves;
    std::string text;
  };

  // The chart of one-sample tests. The procedure must be there; neither is kept: the text names its columns
  // itself.
  BYSChartOutput(BpProcedure* procedure, ProcedureDataSource& dataSource);

  Chart createPosteriorPlotChart() const;
  // The text alone.
  std::string createGplPosteriorChart() const;

 protected:
  // How title and description name the test.
  BYSChartOutput(BpProcedure* procedure, const char* titleSample, const char* descriptionSample);

 private:
  std::string fTitleSample;
  std::string fDescriptionSample;
};

// The chart of related samples tests.
class BYSRelatedChartOutput : public BYSChartOutput {
 public:
  BYSRelatedChartOutput(BpProcedure* procedure, ProcedureDataSource& dataSource);
};
