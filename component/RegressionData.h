// The cases of a regression, reduced in one pass to what every model of its predictors needs.
#pragma once

#include <Eigen/Core>
#include <map>
#include <vector>

#include "component/RegressionModel.h"
#include "component/numeric/LinearPosterior.h"
#include "component/numeric/RegressionBayesFactor.h"
#include "component/numeric/ScatterFactor.h"

namespace BayesComponent {

// A model fitted by weighted least squares.
struct ModelFit {
  std::vector<MCRegrParameter> fvParameters;
  // Positions of the parameters that are not redundant, in order, the intercept first.
  std::vector<int> fvActive;
  // Whether some are redundant beside the last levels of the factors.
  bool fHasAliased;
  LinearEvidence fEvidence;
  // Corrected for the mean.
  double fExplainedSum;
  double fTotalSum;

  double SlopeCount() const { return static_cast<double>(fvActive.size()) - 1; }
  double ResidualDF() const { return fEvidence.fN - 1 - SlopeCount(); }
  bool IsPerfect() const { return fEvidence.fResidualSum == 0; }
  RegressionFit Shares() const;
};

// Cases of one level of a factor have the same indicators, so the factor with the most levels enters as
// groups: their means, weights and common scatter hold all that its indicators would.
class RegressionData {
 public:
  RegressionData(const BSNSettings& settings, const Predictors& predictors);

  // A case that lacks the response, a predictor or a positive regression weight is left out.
  void Add(const double* record, double frequency);

  double CaseCount() const { return fCount; }
  // `model`: some of the predictors. Needs a case.
  ModelFit Fit(const Predictors& model) const;
  // Of the factor, when it is the only predictor.
  EffectsFit FitEffects(double residualSum) const;
  // Weighted.
  double MeanOf(int covariate) const;

 private:
  // A column of the design: its cases summed up in as many rows as there are groups and columns.
  struct Column {
    Eigen::VectorXd fRows;
    double fMean;
  };
  struct Design {
    Eigen::MatrixXd fRows;
    Eigen::VectorXd fMeans;
  };
  bool FillRow(const double* record);
  bool IsGrouping(std::size_t factor) const { return static_cast<int>(factor) == fGrouping; }
  Column LevelColumn(int level) const;
  Column DataColumn(int column, const Eigen::MatrixXd& scatter) const;
  Column ColumnOf(const MCRegrParameter& parameter, const Eigen::MatrixXd& scatter) const;
  // The columns of these parameters, and last the response.
  Design DesignOf(const std::vector<MCRegrParameter>& parameters, const std::vector<int>& candidates) const;
  double MeanOffset(int column) const;
  double TotalWeight() const { return GroupWeights().sum(); }
  Eigen::Map<const Eigen::VectorXd> GroupWeights() const;

  Predictors fPredictors;
  int fDependent;
  int fRegressionWeight;
  // Position among the factors; -1 without factors.
  int fGrouping;
  // First column of each predictor by its slot; the response has the last column.
  std::map<int, int> fColumns;
  std::size_t fGroup = 0;
  std::vector<double> fvRow;
  double fCount = 0;
  ScatterFactor fScatter;
};

}  // namespace BayesComponent
