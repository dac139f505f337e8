#include "component/numeric/ScatterFactor.h"

#include <Eigen/QR>
#include <algorithm>
#include <cmath>

namespace BayesComponent {

namespace {

Eigen::Index BlockRows(Eigen::Index columns) {
  return std::max<Eigen::Index>(256, 4 * columns);
}

// Replaces the rows by their triangular factor, on top.
void Fold(Eigen::Ref<Eigen::MatrixXd> rows) {
  const Eigen::HouseholderQR<Eigen::Ref<Eigen::MatrixXd>> factorisation(rows);
  rows.topRows(rows.cols()).triangularView<Eigen::StrictlyLower>().setZero();
}

}  // namespace

ScatterFactor::ScatterFactor(std::size_t groups, std::size_t columns) : fvWeights(groups, 0.0) {
  const auto nColumns = static_cast<Eigen::Index>(columns);
  fOrigin.setZero(nColumns);
  fMeans.setZero(nColumns, static_cast<Eigen::Index>(groups));
  fStack.setZero(nColumns + BlockRows(nColumns), nColumns);
  fNextRow = nColumns;
}

// One loop over the columns: this is where the time of a pass over the data goes.
void ScatterFactor::Add(std::size_t group, const double* row, double weight) {
  if (fIsEmpty) std::copy_n(row, fOrigin.size(), fOrigin.data());
  fIsEmpty = false;
  const double before = fvWeights[group];
  fvWeights[group] += weight;
  const double share = weight / fvWeights[group];
  const double root = std::sqrt(before * share);
  const double* origin = fOrigin.data();
  double* mean = fMeans.col(static_cast<Eigen::Index>(group)).data();
  double* scaled = &fStack(fNextRow, 0);
  for (Eigen::Index i = 0; i < fOrigin.size(); ++i) {
    const double difference = (row[i] - origin[i]) - mean[i];
    mean[i] += share * difference;
    scaled[i * fStack.rows()] = root * difference;
  }
  if (before > 0) AdvanceRow();
}

void ScatterFactor::AdvanceRow() {
  if (++fNextRow < fStack.rows()) return;
  Fold(fStack);
  fNextRow = fStack.cols();
}

void ScatterFactor::Merge(const ScatterFactor& other) {
  for (std::size_t group = 0; group < fvWeights.size(); ++group) {
    if (other.fvWeights[group] == 0) continue;
    const Eigen::VectorXd mean = other.fOrigin + other.fMeans.col(static_cast<Eigen::Index>(group));
    Add(group, mean.data(), other.fvWeights[group]);
  }
  for (Eigen::Index i = 0; i < other.fNextRow; ++i) {
    fStack.row(fNextRow) = other.fStack.row(i);
    AdvanceRow();
  }
}

Eigen::MatrixXd ScatterFactor::Factor() const {
  Eigen::MatrixXd rows = fStack.topRows(fNextRow);
  Fold(rows);
  return rows.topRows(rows.cols());
}

}  // namespace BayesComponent
