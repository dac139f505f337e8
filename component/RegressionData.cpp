#include "component/RegressionData.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "component/numeric/OrderedLeastSquares.h"

namespace BayesComponent {

namespace {

int LargestFactor(const Predictors& predictors) {
  const auto& factors = predictors.fvFactors;
  const auto hasFewerLevels = [](const RegressionFactor& left, const RegressionFactor& right) {
    return left.fLevels < right.fLevels;
  };
  if (factors.empty()) return -1;
  return static_cast<int>(std::max_element(factors.begin(), factors.end(), hasFewerLevels) - factors.begin());
}

std::size_t GroupCount(const Predictors& predictors) {
  const int grouping = LargestFactor(predictors);
  return grouping < 0
             ? 1
             : static_cast<std::size_t>(predictors.fvFactors[static_cast<std::size_t>(grouping)].fLevels);
}

// One column for each covariate, one for each level but the last of a factor that doesn't group the cases.
std::map<int, int> ColumnsOf(const Predictors& predictors) {
  std::map<int, int> columns;
  int next = 0;
  const int grouping = LargestFactor(predictors);
  for (std::size_t i = 0; i < predictors.fvFactors.size(); ++i) {
    if (static_cast<int>(i) == grouping) continue;
    columns[predictors.fvFactors[i].fSlot] = next;
    next += predictors.fvFactors[i].fLevels - 1;
  }
  for (const int covariate : predictors.fvCovariates) columns[covariate] = next++;
  return columns;
}

std::size_t ColumnCount(const Predictors& predictors) {
  std::size_t count = predictors.fvCovariates.size() + 1;
  for (std::size_t i = 0; i < predictors.fvFactors.size(); ++i) {
    const bool isGrouping = static_cast<int>(i) == LargestFactor(predictors);
    if (!isGrouping) count += static_cast<std::size_t>(predictors.fvFactors[i].fLevels - 1);
  }
  return count;
}

// What the rounding of so many additions may leave, relative to their size: it walks at random.
double RoundingNoise(double cases) {
  return std::numeric_limits<double>::epsilon() * (64 + std::sqrt(cases));
}

// Positions of the parameters that have a column of their own.
std::vector<int> Candidates(const Predictors& model, std::size_t parameters) {
  const std::vector<int> lastLevels = LastLevels(model);
  std::vector<int> candidates;
  for (int i = 1; i < static_cast<int>(parameters); ++i) {
    if (!std::binary_search(lastLevels.begin(), lastLevels.end(), i)) candidates.push_back(i);
  }
  return candidates;
}

// The factor of the centred columns with one row more, which says where their centre is. `means`: of all
// columns and, last, of the response.
LinearEvidence WithIntercept(const LeastSquares& slopes, const Eigen::VectorXd& means, double totalWeight) {
  const double root = std::sqrt(totalWeight);
  const Eigen::Index p = slopes.fRight.size();
  LinearEvidence evidence{Eigen::MatrixXd::Zero(p + 1, p + 1), Eigen::VectorXd(p + 1), slopes.fResidualSum,
                          0};
  evidence.fFactor(0, 0) = root;
  for (Eigen::Index i = 0; i < p; ++i) {
    evidence.fFactor(0, i + 1) = root * means[slopes.fvKept[static_cast<std::size_t>(i)]];
  }
  evidence.fFactor.bottomRightCorner(p, p) = slopes.fFactor;
  evidence.fRight << root * means[means.size() - 1], slopes.fRight;
  return evidence;
}

}  // namespace

RegressionFit ModelFit::Shares() const {
  return {fEvidence.fN, SlopeCount(), fExplainedSum / fTotalSum, fEvidence.fResidualSum / fTotalSum};
}

RegressionData::RegressionData(const BSNSettings& settings, const Predictors& predictors)
    : fPredictors(predictors),
      fDependent(settings.GetDependentVar()),
      fRegressionWeight(settings.GetRegrWeightVar()),
      fGrouping(LargestFactor(predictors)),
      fColumns(ColumnsOf(predictors)),
      fvRow(ColumnCount(predictors)),
      fScatter(GroupCount(predictors), fvRow.size()) {}

void RegressionData::Add(const double* record, double frequency) {
  const double weight = fRegressionWeight < 0 ? 1 : record[fRegressionWeight];
  if (!(weight > 0) || !FillRow(record)) return;
  fCount += frequency;
  fScatter.Add(fGroup, fvRow.data(), weight * frequency);
}

bool RegressionData::FillRow(const double* record) {
  auto next = fvRow.begin();
  for (std::size_t i = 0; i < fPredictors.fvFactors.size(); ++i) {
    const int code = CodeOf(fPredictors.fvFactors[i], record);
    if (code < 0) return false;
    if (IsGrouping(i)) {
      fGroup = static_cast<std::size_t>(code);
    } else {
      const auto end = std::fill_n(next, fPredictors.fvFactors[i].fLevels - 1, 0.0);
      if (next + code < end) next[code] = 1;
      next = end;
    }
  }
  for (const int slot : fPredictors.fvCovariates) {
    if (!IsGiven(record[slot])) return false;
    *next++ = record[slot];
  }
  *next = record[fDependent];
  return IsGiven(*next);
}

Eigen::Map<const Eigen::VectorXd> RegressionData::GroupWeights() const {
  const std::vector<double>& weights = fScatter.GroupWeights();
  return {weights.data(), static_cast<Eigen::Index>(weights.size())};
}

double RegressionData::MeanOffset(int column) const {
  return fScatter.GroupMeanOffsets().row(column).dot(GroupWeights()) / TotalWeight();
}

double RegressionData::MeanOf(int covariate) const {
  const int column = fColumns.at(covariate);
  return fScatter.Origin()[column] + MeanOffset(column);
}

// Between groups, each group's mean against the mean of all, times the root of its weight.
RegressionData::Column RegressionData::LevelColumn(int level) const {
  const double share = GroupWeights()[level] / TotalWeight();
  Eigen::VectorXd rows =
      Eigen::VectorXd::Zero(GroupWeights().size() + static_cast<Eigen::Index>(fvRow.size()));
  rows.head(GroupWeights().size()) = -share * GroupWeights().cwiseSqrt();
  rows[level] += std::sqrt(GroupWeights()[level]);
  return {rows, share};
}

// The same, and within groups a column of the scatter's factor.
RegressionData::Column RegressionData::DataColumn(int column, const Eigen::MatrixXd& scatter) const {
  const double mean = MeanOffset(column);
  const Eigen::VectorXd means = fScatter.GroupMeanOffsets().row(column).transpose();
  Eigen::VectorXd rows(means.size() + scatter.rows());
  rows << (means.array() - mean).matrix().cwiseProduct(GroupWeights().cwiseSqrt()), scatter.col(column);
  return {rows, fScatter.Origin()[column] + mean};
}

RegressionData::Column RegressionData::ColumnOf(const MCRegrParameter& parameter,
                                                const Eigen::MatrixXd& scatter) const {
  if (parameter.GetNCovariates() > 0) return DataColumn(fColumns.at(parameter.GetCovariates()[0]), scatter);
  const int slot = parameter.GetFactors()[0];
  const int level = parameter.GetCategories()[0];
  const auto column = fColumns.find(slot);
  return column == fColumns.end() ? LevelColumn(level) : DataColumn(column->second + level, scatter);
}

RegressionData::Design RegressionData::DesignOf(const std::vector<MCRegrParameter>& parameters,
                                                const std::vector<int>& candidates) const {
  const Eigen::MatrixXd scatter = fScatter.Factor();
  std::vector<Column> columns;
  columns.reserve(candidates.size());
  for (const int i : candidates) {
    columns.push_back(ColumnOf(parameters[static_cast<std::size_t>(i)], scatter));
  }
  columns.push_back(DataColumn(static_cast<int>(fvRow.size()) - 1, scatter));
  const auto nColumns = static_cast<Eigen::Index>(columns.size());
  Design design{Eigen::MatrixXd(columns.front().fRows.size(), nColumns), Eigen::VectorXd(nColumns)};
  for (Eigen::Index i = 0; i < nColumns; ++i) {
    design.fRows.col(i) = columns[static_cast<std::size_t>(i)].fRows;
    design.fMeans[i] = columns[static_cast<std::size_t>(i)].fMean;
  }
  return design;
}

ModelFit RegressionData::Fit(const Predictors& model) const {
  ModelFit fit{ParametersOf(model), {0}, false, {}, 0, 0};
  const std::vector<int> candidates = Candidates(model, fit.fvParameters.size());
  const Design design = DesignOf(fit.fvParameters, candidates);
  const Eigen::VectorXd sums = design.fRows.colwise().squaredNorm();
  const Eigen::VectorXd sizes = (sums + TotalWeight() * design.fMeans.cwiseAbs2()).cwiseSqrt();
  const LeastSquares slopes = FitInOrder(design.fRows, sizes, RoundingNoise(fCount));
  for (const int kept : slopes.fvKept) fit.fvActive.push_back(candidates[static_cast<std::size_t>(kept)]);
  fit.fHasAliased = slopes.fvKept.size() < candidates.size();
  fit.fTotalSum = sums[sums.size() - 1];
  fit.fExplainedSum = slopes.fRight.squaredNorm();
  fit.fEvidence = WithIntercept(slopes, design.fMeans, TotalWeight());
  fit.fEvidence.fN = fCount;
  if (fit.ResidualDF() <= 0) fit.fEvidence.fResidualSum = 0;
  return fit;
}

EffectsFit RegressionData::FitEffects(double residualSum) const {
  std::vector<double> weights;
  std::vector<double> means;
  for (Eigen::Index group = 0; group < GroupWeights().size(); ++group) {
    if (GroupWeights()[group] == 0) continue;
    weights.push_back(GroupWeights()[group]);
    means.push_back(fScatter.GroupMeanOffsets()(static_cast<Eigen::Index>(fvRow.size()) - 1, group));
  }
  return OneWayEffects(weights, means, residualSum, fCount);
}

}  // namespace BayesComponent
