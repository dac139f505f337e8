// The log-linear record as the platform hands it out.
#include <ostream>

#include "component/LogLinearRecord.h"

namespace MCBSN_850 {

namespace {

void WriteValue(std::ostream& stream, const char* name, double value) {
  stream << ' ' << name << ' ';
  if (BayesComponent::IsGiven(value)) {
    stream << value;
  } else {
    stream << '.';
  }
}

void WriteTest(std::ostream& stream, const char* name, const MCMath_850::MCTestStats& test) {
  stream << name << ':';
  WriteValue(stream, "value", test.GetWald());
  WriteValue(stream, "df", test.GetDF());
  WriteValue(stream, "significance", test.GetSig());
  stream << '\n';
}

}  // namespace

using LogLin = BSNLogLinearOutputStats;

BSNContingency::BSNContingency(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}
LogLin::BSNLogLinearOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Matrix& BSNContingency::GetAllCounts() const { return fpData->fvCounts; }
double BSNContingency::GetTotalWeight() const { return fpData->fTotal; }
const Values& BSNContingency::GetRowTotals() const { return fpData->fvRowTotals; }
const Values& BSNContingency::GetColTotals() const { return fpData->fvColTotals; }
const Matrix& BSNContingency::GetExpectedCounts() const { return fpData->fvExpected; }
const Indices& BSNContingency::GetNonEmptyRows() const { return fpData->fvNonEmptyRows; }
const Indices& BSNContingency::GetNonEmptyCols() const { return fpData->fvNonEmptyCols; }
double BSNContingency::GetNCellsExpLess5() const { return fpData->fCellsBelow5; }
double BSNContingency::GetPctCellsExpLess5() const { return fpData->fPctCellsBelow5; }
double BSNContingency::GetMinExpectedCount() const { return fpData->fMinExpected; }

const BSNContingency& LogLin::GetContingencyMatrix() const { return fpData->fTable; }
double LogLin::GetBayesFactor() const { return fpData->fBayesFactor.fvValues.front(); }
bool LogLin::IsLogBayesFactor() const { return fpData->fBayesFactor.fvAreLogs.front(); }
const MCMath_850::MCTestStats& LogLin::GetChiSquareResult() const { return fpData->fChiSquare; }
const MCMath_850::MCTestStats& LogLin::GetLikeRatioResult() const { return fpData->fLikelihoodRatio; }
const MCMath_850::MCTestStats& LogLin::GetContCorrectResult() const { return fpData->fContinuityCorrected; }
double LogLin::GetFisher2SidedSig() const { return fpData->fFisherTwoSided; }
double LogLin::GetFisher1SidedSig() const { return fpData->fFisherOneSided; }
double LogLin::GetT() const { return fpData->fTrainingCases; }
double LogLin::GetT1() const { return fpData->fTrainingCategories; }
double LogLin::GetT2() const { return fpData->fCasesPerCategory; }
const std::vector<BayesEstimation>& LogLin::GetPosteriorEstimations() const { return fpData->fvInteractions; }
// clang-format on

void LogLin::Write(std::ostream& stream) const {
  for (const Values& row : fpData->fTable.GetAllCounts()) {
    stream << "counts:";
    for (const double count : row) stream << ' ' << count;
    stream << '\n';
  }
  stream << "independence:";
  WriteValue(stream, IsLogBayesFactor() ? "log Bayes factor" : "Bayes factor", GetBayesFactor());
  stream << '\n';
  WriteTest(stream, "chi-square", fpData->fChiSquare);
  WriteTest(stream, "likelihood ratio", fpData->fLikelihoodRatio);
  WriteTest(stream, "continuity correction", fpData->fContinuityCorrected);
  for (const BayesEstimation& interaction : fpData->fvInteractions) {
    stream << "interaction:";
    WriteValue(stream, "median", interaction.fMedian);
    WriteValue(stream, "mean", interaction.fMean);
    WriteValue(stream, "variance", interaction.fVariance);
    WriteValue(stream, "lower", interaction.fLower);
    WriteValue(stream, "upper", interaction.fUpper);
    stream << '\n';
  }
}

}  // namespace MCBSN_850
