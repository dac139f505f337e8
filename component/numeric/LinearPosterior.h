// What data and prior say of a normal linear model y = X b + e, e_i ~ N(0, sigma^2/w_i).
#pragma once

#include <Eigen/Core>
#include <memory>
#include <vector>

#include "component/numeric/Distribution.h"

namespace BayesComponent {

// The data: R'R = X'WX with R square, upper triangular and regular, the least squares estimate solves R b =
// z, the residual sum of squares and the number of cases.
struct LinearEvidence {
  Eigen::MatrixXd fFactor;
  Eigen::VectorXd fRight;
  double fResidualSum;
  double fN;
};

// sigma^2 ~ inverse gamma (shape, scale), b | sigma^2 ~ N(location, sigma^2 V), V = (R'R)^-1: the conjugate
// prior of the model, and its posterior. A. O'Hagan & J. Forster (2004), Kendall's Advanced Theory of
// Statistics 2B, chapter 11. At scale 0 everything shrinks to points.
class NormalInverseGamma {
 public:
  // `factor`: R, upper triangular; shape > 0, scale >= 0.
  NormalInverseGamma(Eigen::MatrixXd factor, Eigen::VectorXd location, double shape, double scale);

  // The posterior under the prior p(b, sigma^2) ~ 1/sigma^2. Needs more cases than parameters.
  static NormalInverseGamma UnderReferencePrior(const LinearEvidence& data);
  // The posterior with this distribution as the prior.
  NormalInverseGamma UpdatedBy(const LinearEvidence& data) const;

  // Of the Student distribution of every linear function of b.
  double DF() const { return 2 * fShape; }
  double LocationOf(const Eigen::VectorXd& x) const { return x.dot(fLocation); }
  // x'Vx.
  double LeverageOf(const Eigen::VectorXd& x) const;
  // sigma^2 as it scales those distributions: their squared scale is this times x'Vx.
  double SquaredScale() const { return fScale / fShape; }
  const Eigen::VectorXd& Location() const { return fLocation; }
  // V times the squared scale.
  Eigen::MatrixXd SquaredScales() const;
  bool IsPoint() const { return fScale == 0; }

  // Never null. A quantity with this location and, but for the squared scale, this variance.
  std::unique_ptr<Distribution> Student(double location, double variance) const;
  std::unique_ptr<Distribution> LinearFunction(const Eigen::VectorXd& x) const;
  // x'b with the error of one further case.
  std::unique_ptr<Distribution> Response(const Eigen::VectorXd& x) const;
  std::unique_ptr<Distribution> ErrorVariance() const;

  // (b - v)' C^-1 (b - v)/q for q >= 1 different parameters, C their part of V times the squared scale: F
  // with (q, DF()) degrees of freedom if the parameters are v.
  double FStatistic(const std::vector<int>& parameters, const std::vector<double>& values) const;

 private:
  Eigen::MatrixXd fFactor;
  Eigen::VectorXd fLocation;
  double fShape;
  double fScale;
};

// The same from the covariance matrix V itself; null when that isn't positive definite. `lowerTriangle`: with
// its diagonal, by rows; empty for the identity.
std::unique_ptr<NormalInverseGamma> ConjugatePrior(const std::vector<double>& location,
                                                   const std::vector<double>& lowerTriangle, double shape,
                                                   double scale);

}  // namespace BayesComponent
