#include "component/numeric/DrawnMean.h"

#include <algorithm>
#include <cmath>

#include "component/numeric/LogMeanExp.h"

namespace BayesComponent {

LogIntegral LogMeanOfDraws(const std::function<double()>& draw, const DrawLimits& limits) {
  LogMeanExp mean;
  const auto isPrecise = [&] {
    const double wanted = std::max(0.01, limits.fRelativeError * std::abs(mean.Value()));
    return mean.StandardError() <= wanted;
  };
  while (mean.Count() < limits.fLeast || (mean.Count() < limits.fMost && !isPrecise())) {
    if (limits.fIsCancelled()) break;
    mean.Add(draw());
  }
  return {mean.Value(), isPrecise()};
}

}  // namespace BayesComponent
