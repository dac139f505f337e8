#include "component/numeric/OrderedLeastSquares.h"

#include <Eigen/Householder>
#include <cmath>

namespace BayesComponent {

namespace {

// Householder's QR factorisation, column after column. G. H. Golub & C. F. Van Loan, Matrix Computations,
// algorithm 5.2.1, without a step for the columns that are left out.
class OrderedQr {
 public:
  OrderedQr(Eigen::MatrixXd& rows, const Eigen::VectorXd& sizes, double noise)
      : fRows(rows), fSizes(sizes), fNoise(noise), fWorkspace(rows.cols()) {}

  void Take(Eigen::Index column) {
    if (IsRemainderNoise(column)) return;
    auto remainder = fRows.col(column).tail(fRows.rows() - Rank());
    double tau;
    double beta;
    Eigen::VectorXd essential(remainder.size() - 1);
    remainder.makeHouseholder(essential, tau, beta);
    fRows.bottomRightCorner(remainder.size(), fRows.cols() - column - 1)
        .applyHouseholderOnTheLeft(essential, tau, fWorkspace.data());
    remainder[0] = beta;
    fvKept.push_back(static_cast<int>(column));
  }

  // Whether a column is the sum of kept columns but for rounding.
  bool IsRemainderNoise(Eigen::Index column) const {
    const double remainder = fRows.col(column).tail(fRows.rows() - Rank()).norm();
    if (remainder > kPlainlyThere * fSizes[column]) return false;
    const Eigen::VectorXd coefficients =
        Factor().triangularView<Eigen::Upper>().solve(fRows.col(column).head(Rank()));
    double added = fSizes[column];
    for (Eigen::Index i = 0; i < Rank(); ++i) added += std::abs(coefficients[i]) * fSizes[Kept(i)];
    return remainder <= fNoise * added;
  }

  Eigen::MatrixXd Factor() const {
    Eigen::MatrixXd factor = Eigen::MatrixXd::Zero(Rank(), Rank());
    for (Eigen::Index i = 0; i < Rank(); ++i) factor.col(i).head(i + 1) = fRows.col(Kept(i)).head(i + 1);
    return factor;
  }

  Eigen::Index Rank() const { return static_cast<Eigen::Index>(fvKept.size()); }
  const std::vector<int>& Kept() const { return fvKept; }

 private:
  // Above this share of its size nothing is rounding; saves the solution of a system.
  static constexpr double kPlainlyThere = 1e-2;

  Eigen::Index Kept(Eigen::Index i) const { return fvKept[static_cast<std::size_t>(i)]; }

  Eigen::MatrixXd& fRows;
  const Eigen::VectorXd& fSizes;
  double fNoise;
  Eigen::VectorXd fWorkspace;
  std::vector<int> fvKept;
};

}  // namespace

LeastSquares FitInOrder(Eigen::MatrixXd rows, const Eigen::VectorXd& sizes, double noise) {
  OrderedQr qr(rows, sizes, noise);
  const Eigen::Index response = rows.cols() - 1;
  for (Eigen::Index column = 0; column < response; ++column) qr.Take(column);
  const auto right = rows.col(response);
  const bool isPerfect = qr.IsRemainderNoise(response);
  return {qr.Kept(), qr.Factor(), right.head(qr.Rank()),
          isPerfect ? 0 : right.tail(rows.rows() - qr.Rank()).squaredNorm()};
}

}  // namespace BayesComponent
