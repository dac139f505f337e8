#include <stdexcept>
#include <utility>

#include "host/output/SharePath.h"
#include "platform/host/Charts.h"

std::string PathFactory::getPathInstance(int kind) {
  constexpr int kChartTemplates = 3;
  if (kind != kChartTemplates)
    throw std::invalid_argument("the only known kind of path is 3, the chart templates");
  return (BayesHost::GetSharePath() / "charts").string();
}

FacSTDictionary::FacSTDictionary(std::string path) : fPath(std::move(path)) {}

void FacSTDictionary::SetProcedure(const std::string& title) {
  fProcedure = title;
}
