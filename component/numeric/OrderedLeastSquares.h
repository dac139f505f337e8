// Least squares with columns taken in order: one that the columns before it determine is left out.
#pragma once

#include <Eigen/Core>
#include <vector>

namespace BayesComponent {

// R b = z for the columns that were kept, and what is left of the response.
struct LeastSquares {
  std::vector<int> fvKept;
  Eigen::MatrixXd fFactor;
  Eigen::VectorXd fRight;
  // 0 when it is no more than rounding leaves of a response that the columns determine.
  double fResidualSum = 0;
};

// `rows`: the design's columns and then the response, centred, at least as many rows as columns. `sizes`: the
// norms of these columns before they were centred, for it is there that the data were rounded. A remainder
// counts as rounding when it is below `noise` times the sizes of everything that was added up to it.
LeastSquares FitInOrder(Eigen::MatrixXd rows, const Eigen::VectorXd& sizes, double noise);

}  // namespace BayesComponent
