// The contents of the correlation record.
#pragma once

#include <utility>
#include <vector>

#include "component/Records.h"

namespace MCBSN_850 {

struct BSNPearsonCorrelationOutputStats::Data {
  std::vector<std::pair<int, int>> fvPairs;
  Values fvCoefficients;
  BayesComponent::LoggableColumns fBayesFactors;
  Flags fvAreEstimates;
  Values fvVariableNs;
  Values fvPairNs;
  BayesComponent::PosteriorColumns fPosterior;
  BayesComponent::CurveSetColumns fCurves;
};

}  // namespace MCBSN_850
