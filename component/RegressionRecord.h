// The contents of the regression record.
#pragma once

#include <optional>

#include "component/Records.h"
#include "component/RegressionModel.h"
#include "component/numeric/LinearPosterior.h"

namespace BayesComponent {

// The expected response of single cases under a fitted model.
class RegressionScorer {
 public:
  // `parameters`: those of the posterior. `level` in percent. Without `withVariance` the variance stays
  // missing.
  RegressionScorer(Predictors predictors, std::vector<MCRegrParameter> parameters,
                   NormalInverseGamma posterior, double level, bool withVariance);

  bool Score(const double* record, MCBSN_850::BayesEstimation& estimation) const;

  const Predictors& GetPredictors() const { return fPredictors; }
  const std::vector<MCRegrParameter>& GetParameters() const { return fvParameters; }
  const NormalInverseGamma& GetPosterior() const { return fPosterior; }

 private:
  Predictors fPredictors;
  std::vector<MCRegrParameter> fvParameters;
  NormalInverseGamma fPosterior;
  bool fWithVariance;
  // Of a quantity with leverage 1: what every other one has in proportion.
  bool fHasMean;
  std::optional<double> fUnitVariance;
  double fUnitHalfWidth;
};

}  // namespace BayesComponent

namespace MCBSN_850 {

struct BSNMultiRegOutputStats::Data {
  Values fvAnova;
  double fBayesFactor = BayesComponent::kMissing;
  bool fIsLogBayesFactor = false;
  double fRSquared = BayesComponent::kMissing;
  double fAdjRSquared = BayesComponent::kMissing;
  double fRSquaredFull = BayesComponent::kMissing;
  std::vector<MCMath_850::MCRegrParameter> fvParameters;
  MCMath_850::MCBitSet fRedundancy;
  std::vector<BayesEstimation> fvCoefficients;
  BayesEstimation fErrorVariance;
  BayesEstimation fPredicted;
  Values fvPredictionPoint;
  std::vector<MCMath_850::MCTestStats> fvFTests;
  BayesComponent::CurveSetColumns fCoefficientCurves;
  BayesComponent::CurveSet fErrorVarianceCurves;
  BayesComponent::CurveSet fPredictedCurves;
  // Record slots, negative when there is none, and the credible level in percent: for exported models.
  int fDependent = -1;
  int fFrequencyWeight = -1;
  int fRegressionWeight = -1;
  double fLevel = BayesComponent::kMissing;
  // Nothing without a posterior.
  std::optional<BayesComponent::RegressionScorer> fScorer;
};

}  // namespace MCBSN_850
