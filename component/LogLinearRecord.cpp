#include "component/LogLinearRecord.h"

#include <ostream>

namespace MCBSN_850 {

using Stats = BSNLogLinearOutputStats;

Stats::BSNLogLinearOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

const BSNContingency& Stats::GetContingencyMatrix() const {
  return fpData->fTable;
}
double Stats::GetBayesFactor() const {
  return fpData->fBayesFactor;
}
bool Stats::IsLogBayesFactor() const {
  return fpData->fIsLog;
}
const MCMath_850::MCTestStats& Stats::GetChiSquareResult() const {
  return fpData->fChiSquare;
}
const MCMath_850::MCTestStats& Stats::GetLikeRatioResult() const {
  return fpData->fLikeRatio;
}
const MCMath_850::MCTestStats& Stats::GetContCorrectResult() const {
  return fpData->fContCorrect;
}
double Stats::GetFisher2SidedSig() const {
  return fpData->fFisher2Sided;
}
double Stats::GetFisher1SidedSig() const {
  return fpData->fFisher1Sided;
}
double Stats::GetT() const {
  return fpData->fT;
}
double Stats::GetT1() const {
  return fpData->fT1;
}
double Stats::GetT2() const {
  return fpData->fT2;
}
const std::vector<BayesEstimation>& Stats::GetPosteriorEstimations() const {
  return fpData->fvInteractions;
}

void Stats::Write(std::ostream& stream) const {
  stream << "Bayes factor" << (fpData->fIsLog ? " (ln): " : ": ") << fpData->fBayesFactor << "\n";
}

}  // namespace MCBSN_850
