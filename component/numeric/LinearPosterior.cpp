#include "component/numeric/LinearPosterior.h"

#include <Eigen/Cholesky>
#include <Eigen/QR>
#include <cmath>
#include <utility>

namespace BayesComponent {

namespace {

Eigen::MatrixXd TriangularFactor(const Eigen::MatrixXd& rows) {
  const Eigen::HouseholderQR<Eigen::MatrixXd> qr(rows);
  return qr.matrixQR().topRows(rows.cols()).triangularView<Eigen::Upper>();
}

Eigen::MatrixXd SymmetricMatrix(Eigen::Index size, const std::vector<double>& lowerTriangle) {
  if (lowerTriangle.empty()) return Eigen::MatrixXd::Identity(size, size);
  Eigen::MatrixXd matrix(size, size);
  auto value = lowerTriangle.begin();
  for (Eigen::Index i = 0; i < size; ++i) {
    for (Eigen::Index j = 0; j <= i; ++j) matrix(i, j) = matrix(j, i) = *value++;
  }
  return matrix;
}

}  // namespace

NormalInverseGamma::NormalInverseGamma(Eigen::MatrixXd factor, Eigen::VectorXd location, double shape,
                                       double scale)
    : fFactor(std::move(factor)), fLocation(std::move(location)), fShape(shape), fScale(scale) {}

NormalInverseGamma NormalInverseGamma::UnderReferencePrior(const LinearEvidence& data) {
  const double df = data.fN - static_cast<double>(data.fRight.size());
  return {data.fFactor, data.fFactor.triangularView<Eigen::Upper>().solve(data.fRight), df / 2,
          data.fResidualSum / 2};
}

// The prior is so many further cases, with its location as their response: one QR factorisation of them and
// the data has the posterior in its factor, and in its last remainder all that is added to the scale.
NormalInverseGamma NormalInverseGamma::UpdatedBy(const LinearEvidence& data) const {
  const Eigen::Index q = fLocation.size();
  Eigen::MatrixXd cases = Eigen::MatrixXd::Zero(2 * q + 1, q + 1);
  cases.topLeftCorner(q, q) = data.fFactor;
  cases.col(q).head(q) = data.fRight;
  cases(q, q) = std::sqrt(data.fResidualSum);
  cases.bottomLeftCorner(q, q) = fFactor;
  cases.col(q).tail(q) = fFactor.triangularView<Eigen::Upper>() * fLocation;
  const Eigen::MatrixXd factor = TriangularFactor(cases);
  const Eigen::MatrixXd coefficients = factor.topLeftCorner(q, q);
  return {coefficients, coefficients.triangularView<Eigen::Upper>().solve(factor.col(q).head(q)),
          fShape + data.fN / 2, fScale + factor(q, q) * factor(q, q) / 2};
}

double NormalInverseGamma::LeverageOf(const Eigen::VectorXd& x) const {
  const Eigen::VectorXd scaled = fFactor.transpose().triangularView<Eigen::Lower>().solve(x);
  return scaled.squaredNorm();
}

Eigen::MatrixXd NormalInverseGamma::SquaredScales() const {
  const Eigen::Index q = fLocation.size();
  const Eigen::MatrixXd inverse =
      fFactor.triangularView<Eigen::Upper>().solve(Eigen::MatrixXd::Identity(q, q));
  return SquaredScale() * inverse * inverse.transpose();
}

std::unique_ptr<Distribution> NormalInverseGamma::Student(double location, double variance) const {
  if (IsPoint()) return std::make_unique<PointDistribution>(location);
  return std::make_unique<StudentDistribution>(DF(), location, variance * SquaredScale());
}

std::unique_ptr<Distribution> NormalInverseGamma::LinearFunction(const Eigen::VectorXd& x) const {
  return Student(LocationOf(x), LeverageOf(x));
}

std::unique_ptr<Distribution> NormalInverseGamma::Response(const Eigen::VectorXd& x) const {
  return Student(LocationOf(x), 1 + LeverageOf(x));
}

std::unique_ptr<Distribution> NormalInverseGamma::ErrorVariance() const {
  if (IsPoint()) return std::make_unique<PointDistribution>(0);
  return std::make_unique<InverseGammaDistribution>(fShape, fScale);
}

double NormalInverseGamma::FStatistic(const std::vector<int>& parameters,
                                      const std::vector<double>& values) const {
  const auto q = static_cast<Eigen::Index>(parameters.size());
  // Columns of R^-T: their cross products are the part of V, and so is T'T for their triangular factor T.
  Eigen::MatrixXd columns = Eigen::MatrixXd::Zero(fLocation.size(), q);
  Eigen::VectorXd distance(q);
  for (Eigen::Index i = 0; i < q; ++i) {
    const int parameter = parameters[static_cast<std::size_t>(i)];
    columns(parameter, i) = 1;
    distance[i] = fLocation[parameter] - values[static_cast<std::size_t>(i)];
  }
  fFactor.transpose().triangularView<Eigen::Lower>().solveInPlace(columns);
  const Eigen::MatrixXd factor = TriangularFactor(columns);
  const Eigen::VectorXd scaled = factor.transpose().triangularView<Eigen::Lower>().solve(distance);
  return scaled.squaredNorm() / (static_cast<double>(q) * SquaredScale());
}

std::unique_ptr<NormalInverseGamma> ConjugatePrior(const std::vector<double>& location,
                                                   const std::vector<double>& lowerTriangle, double shape,
                                                   double scale) {
  const auto q = static_cast<Eigen::Index>(location.size());
  const Eigen::LLT<Eigen::MatrixXd> root(SymmetricMatrix(q, lowerTriangle));
  if (root.info() != Eigen::Success) return nullptr;
  // V = LL', so that R'R = (L^-1)'L^-1.
  const Eigen::MatrixXd inverseRoot = root.matrixL().solve(Eigen::MatrixXd::Identity(q, q));
  return std::make_unique<NormalInverseGamma>(
      TriangularFactor(inverseRoot), Eigen::Map<const Eigen::VectorXd>(location.data(), q), shape, scale);
}

}  // namespace BayesComponent
