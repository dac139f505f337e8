// The contents of the log-linear record.
#pragma once

#include <vector>

#include "component/Records.h"

namespace MCBSN_850 {

struct BSNLogLinearOutputStats::Data {
  BSNContingency fTable;
  double fBayesFactor = 0;
  bool fIsLog = false;
  MCMath_850::MCTestStats fChiSquare;
  MCMath_850::MCTestStats fLikeRatio;
  MCMath_850::MCTestStats fContCorrect;
  double fFisher2Sided = 0;
  double fFisher1Sided = 0;
  double fT = 0;
  double fT1 = 0;
  double fT2 = 0;
  std::vector<BayesEstimation> fvInteractions;
};

}  // namespace MCBSN_850
