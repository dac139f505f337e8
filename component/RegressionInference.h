// The posterior of a fitted regression, and what the record says of it.
#pragma once

#include <memory>
#include <vector>

#include "component/RegressionData.h"
#include "component/RegressionRecord.h"
#include "component/Results.h"

namespace BayesComponent {

class RegressionInference {
 public:
  using Data = MCBSN_850::BSNMultiRegOutputStats::Data;

  // All arguments must outlive it. Fails when the prior's numbers don't fit the parameters that are not
  // redundant; a prior that is none is replaced by the reference prior.
  RegressionInference(const BSNSettings& settings, const Predictors& model, const ModelFit& fit,
                      StatusList& statuses);

  // Estimations, F-tests and curves. The record's prediction point must be there.
  void Report(Data& record) const;
  // Nothing when the posterior is improper.
  std::optional<RegressionScorer> Scorer() const;

 private:
  // x'b, or the response of one further case with these terms.
  struct Quantity {
    Eigen::VectorXd fTerms;
    bool fIsResponse;
  };
  std::unique_ptr<NormalInverseGamma> ReadPrior() const;
  std::unique_ptr<NormalInverseGamma> MakePosterior() const;
  void WarnOfMissingVariances() const;

  const MCRegrParameter& Active(std::size_t i) const;
  Quantity Coefficient(std::size_t i) const;
  // Without terms when the point has a level that the factor hasn't got.
  Quantity PredictedResponse(const Values& point) const;
  MCBSN_850::BayesEstimation Estimate(const Quantity& quantity) const;
  CurveSet Draw(const Quantity& quantity) const;
  CurveSet DrawErrorVariance() const;
  bool IsPlotted(const MCRegrParameter& parameter) const;
  bool IsLevelPlotted(int factor, int level) const;
  std::vector<int> TestedParameters(const MCBSN_850::BayesFTest& test) const;
  MCMath_850::MCTestStats Test(int number, const MCBSN_850::BayesFTest& test) const;

  const BSNSettings& fSettings;
  const Predictors& fModel;
  const ModelFit& fFit;
  StatusList& fStatuses;
  // Where the likelihood has its maximum, and its curvature.
  NormalInverseGamma fLeastSquares;
  // Null: the reference prior.
  std::unique_ptr<NormalInverseGamma> fpPrior;
  // Null: improper.
  std::unique_ptr<NormalInverseGamma> fpPosterior;
};

}  // namespace BayesComponent
