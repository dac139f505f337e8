// The regression record as the platform hands it out, and the prediction of single cases.
#include <cmath>
#include <ostream>
#include <utility>

#include "component/RegressionRecord.h"
#include "component/Results.h"

namespace BayesComponent {

RegressionScorer::RegressionScorer(Predictors predictors, std::vector<MCRegrParameter> parameters,
                                   NormalInverseGamma posterior, double level, bool withVariance)
    : fPredictors(std::move(predictors)),
      fvParameters(std::move(parameters)),
      fPosterior(std::move(posterior)),
      fWithVariance(withVariance) {
  const auto unit = fPosterior.Student(0, 1);
  fHasMean = unit->Mean().has_value();
  fUnitVariance = unit->Variance();
  fUnitHalfWidth = unit->UpperQuantile((1 - level / 100) / 2);
}

bool RegressionScorer::Score(const double* record, MCBSN_850::BayesEstimation& estimation) const {
  if (!IsComplete(fPredictors, record)) return false;
  Eigen::VectorXd x(static_cast<Eigen::Index>(fvParameters.size()));
  for (Eigen::Index i = 0; i < x.size(); ++i)
    x[i] = TermOf(fvParameters[static_cast<std::size_t>(i)], record);
  const double location = fPosterior.LocationOf(x);
  const double leverage = fPosterior.LeverageOf(std::move(x));
  const double halfWidth = fUnitHalfWidth * std::sqrt(leverage);
  estimation = {};
  estimation.fMode = estimation.fMedian = Shown(location);
  if (fHasMean) estimation.fMean = Shown(location);
  if (fWithVariance && fUnitVariance) estimation.fVariance = Shown(*fUnitVariance * (1 + leverage));
  estimation.fLower = Shown(location - halfWidth);
  estimation.fUpper = Shown(location + halfWidth);
  return true;
}

}  // namespace BayesComponent

namespace MCBSN_850 {

namespace {

using BayesComponent::IsGiven;

void WriteValue(std::ostream& stream, double value) {
  if (IsGiven(value)) {
    stream << ' ' << value;
  } else {
    stream << " .";
  }
}

void WriteEstimation(std::ostream& stream, const char* name, const BayesEstimation& estimation) {
  stream << name << ':';
  for (const double value :
       {estimation.fMode, estimation.fMean, estimation.fVariance, estimation.fLower, estimation.fUpper}) {
    WriteValue(stream, value);
  }
  stream << '\n';
}

}  // namespace

using Regression = BSNMultiRegOutputStats;

Regression::BSNMultiRegOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Values& Regression::GetAnova() const { return fpData->fvAnova; }
double Regression::GetBayesFactor() const { return fpData->fBayesFactor; }
bool Regression::IsLogBayesFactor() const { return fpData->fIsLogBayesFactor; }
double Regression::GetRSquared() const { return fpData->fRSquared; }
double Regression::GetAdjRSquared() const { return fpData->fAdjRSquared; }
double Regression::GetRSquaredFull() const { return fpData->fRSquaredFull; }
const std::vector<MCMath_850::MCRegrParameter>& Regression::GetRegrParameters() const { return fpData->fvParameters; }
const MCMath_850::MCBitSet& Regression::GetRedundancy() const { return fpData->fRedundancy; }
const std::vector<BayesEstimation>& Regression::GetVarCoeffBayesEstimations() const { return fpData->fvCoefficients; }
const BayesEstimation& Regression::GetErrorBayesEstimation() const { return fpData->fErrorVariance; }
const BayesEstimation& Regression::GetPredictedBayesEstimation() const { return fpData->fPredicted; }
const Values& Regression::GetPredictionPoint() const { return fpData->fvPredictionPoint; }
const std::vector<MCMath_850::MCTestStats>& Regression::GetFTestResults() const { return fpData->fvFTests; }
const Curves& Regression::GetParamsArgumentsPlots4Likelihoods() const { return fpData->fCoefficientCurves.fLikelihoods.fvArguments; }
const Curves& Regression::GetLikelihoodParamPlots() const { return fpData->fCoefficientCurves.fLikelihoods.fvValues; }
const Curves& Regression::GetParamsArgumentsPlots4Posterior() const { return fpData->fCoefficientCurves.fPosteriors.fvArguments; }
const Curves& Regression::GetPosteriorParamPlots() const { return fpData->fCoefficientCurves.fPosteriors.fvValues; }
const Curves& Regression::GetParamsArgumentsPlots4Prior() const { return fpData->fCoefficientCurves.fPriors.fvArguments; }
const Curves& Regression::GetPriorParamPlots() const { return fpData->fCoefficientCurves.fPriors.fvValues; }
const Values& Regression::GetArgumentErrorVarPlot4Likelihoods() const { return fpData->fErrorVarianceCurves.fLikelihood.fArguments; }
const Values& Regression::GetLikelihoodErrorVarPlot() const { return fpData->fErrorVarianceCurves.fLikelihood.fValues; }
const Values& Regression::GetArgumentErrorVarPlot4Posterior() const { return fpData->fErrorVarianceCurves.fPosterior.fArguments; }
const Values& Regression::GetPosteriorErrorVarPlot() const { return fpData->fErrorVarianceCurves.fPosterior.fValues; }
const Values& Regression::GetArgumentErrorVarPlot4Prior() const { return fpData->fErrorVarianceCurves.fPrior.fArguments; }
const Values& Regression::GetPriorErrorVarPlot() const { return fpData->fErrorVarianceCurves.fPrior.fValues; }
const Values& Regression::GetArgumentPredictedPlot4Likelihoods() const { return fpData->fPredictedCurves.fLikelihood.fArguments; }
const Values& Regression::GetLikelihoodPredictedPlot() const { return fpData->fPredictedCurves.fLikelihood.fValues; }
const Values& Regression::GetArgumentPredictedPlot4Posterior() const { return fpData->fPredictedCurves.fPosterior.fArguments; }
const Values& Regression::GetPosteriorPredictedPlot() const { return fpData->fPredictedCurves.fPosterior.fValues; }
const Values& Regression::GetArgumentPredictedPlot4Prior() const { return fpData->fPredictedCurves.fPrior.fArguments; }
const Values& Regression::GetPriorPredictedPlot() const { return fpData->fPredictedCurves.fPrior.fValues; }
// clang-format on

bool Regression::Score(const MCCommon_850::Record& record, BayesEstimation& estimation) const {
  return fpData->fScorer && fpData->fScorer->Score(record.fValues, estimation);
}

void Regression::Write(std::ostream& stream) const {
  stream << (fpData->fIsLogBayesFactor ? "log Bayes factor:" : "Bayes factor:");
  WriteValue(stream, fpData->fBayesFactor);
  stream << "\nR squared:";
  WriteValue(stream, fpData->fRSquared);
  stream << "\nanalysis of variance:";
  for (const double value : fpData->fvAnova) WriteValue(stream, value);
  stream << '\n';
  for (const BayesEstimation& coefficient : fpData->fvCoefficients) {
    WriteEstimation(stream, "coefficient", coefficient);
  }
  WriteEstimation(stream, "error variance", fpData->fErrorVariance);
  WriteEstimation(stream, "predicted response", fpData->fPredicted);
}

}  // namespace MCBSN_850
