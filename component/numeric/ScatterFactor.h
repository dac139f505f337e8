// The scatter of rows of numbers about the means of their groups, as a triangular factor and in one pass.
//
// A row x of weight w moves its group's mean m, of weight W, and adds w W/(W + w) (x - m)(x - m)' to the
// scatter: B. P. Welford (1962), Technometrics 4:419-420. The outer products are never formed, because that
// squares the condition of the data. The scaled differences are folded, block by block, into the factor R of
// a QR factorisation, with R'R the scatter: J. Demmel, L. Grigori, M. Hoemmen & J. Langou (2012), SIAM J.
// Sci. Comput. 34:A206-A239. As in Moments.h, means are kept as offsets from the first row.
#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <vector>

namespace BayesComponent {

class ScatterFactor {
 public:
  // Memory: about 8 bytes times columns times (groups + 256 + 5 columns), however many rows come.
  ScatterFactor(std::size_t groups, std::size_t columns);

  // One row of all columns; group < groups, weight > 0.
  void Add(std::size_t group, const double* row, double weight);
  // As if the other's rows had been added here.
  void Merge(const ScatterFactor& other);

  // 0 for a group without rows.
  const std::vector<double>& GroupWeights() const { return fvWeights; }
  // What the means are offsets from; one for each column.
  const Eigen::VectorXd& Origin() const { return fOrigin; }
  // A column for each group, a row for each column of the data; 0 for a group without rows.
  const Eigen::MatrixXd& GroupMeanOffsets() const { return fMeans; }
  // R, square and upper triangular.
  Eigen::MatrixXd Factor() const;

 private:
  void AdvanceRow();

  std::vector<double> fvWeights;
  bool fIsEmpty = true;
  Eigen::VectorXd fOrigin;
  Eigen::MatrixXd fMeans;
  // The factor so far, then the rows that wait to be folded into it.
  Eigen::MatrixXd fStack;
  Eigen::Index fNextRow;
};

}  // namespace BayesComponent
