#include "component/numeric/CorrelationScale.h"

#include <cmath>
#include <numbers>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

using std::numbers::pi;

// ln sinh x for x > 0.
double LogSinh(double x) {
  return x < 20 ? std::log(std::sinh(x)) : x - std::numbers::ln2;
}

double SignedExp(double sign, double x) {
  return std::copysign(std::exp(x), sign);
}

double PearsonValue(double u) {
  return std::tanh(u);
}

// tanh a - tanh b = sinh(a - b) / (cosh a cosh b).
double PearsonDifference(double u, double distance) {
  if (distance == 0) return 0;
  return SignedExp(distance, LogSinh(std::abs(distance)) - LogCosh(u) - LogCosh(u + distance));
}

double PearsonLogSlope(double u) {
  return -2 * LogCosh(u);
}

double PearsonInverse(double value) {
  return std::atanh(value);
}

double SpearmanValue(double u) {
  return 6 / pi * std::asin(std::tanh(u) / 2);
}

double SpearmanDifference(double u, double distance) {
  const double a = std::tanh(u + distance);
  const double b = std::tanh(u);
  // asin(a/2) - asin(b/2) as one arcsine.
  const double sine = (a * std::sqrt(4 - b * b) - b * std::sqrt(4 - a * a)) / 4;
  return 6 / pi * std::asin(sine);
}

double SpearmanLogSlope(double u) {
  const double rho = std::tanh(u);
  return std::log(6 / pi) - 2 * LogCosh(u) - 0.5 * std::log(4 - rho * rho);
}

double SpearmanInverse(double value) {
  return std::atanh(2 * std::sin(pi / 6 * value));
}

// asin(tanh u) = 2 atan(tanh(u/2)).
double KendallValue(double u) {
  return 4 / pi * std::atan(std::tanh(u / 2));
}

double KendallDifference(double u, double distance) {
  if (distance == 0) return 0;
  const double half = distance / 2;
  return 4 / pi * std::atan(SignedExp(half, LogSinh(std::abs(half)) - LogCosh(u + half)));
}

double KendallLogSlope(double u) {
  return std::log(2 / pi) - LogCosh(u);
}

double KendallInverse(double value) {
  return std::atanh(std::sin(pi / 2 * value));
}

}  // namespace

double LogCosh(double u) {
  const double x = std::abs(u);
  if (x > 0.5) return x + std::log1p(std::exp(-2 * x)) - std::numbers::ln2;
  const double sinh = std::sinh(x);
  return 0.5 * std::log1p(sinh * sinh);
}

const CoefficientScale kPearsonScale{PearsonValue, PearsonDifference, PearsonLogSlope, PearsonInverse};
const CoefficientScale kSpearmanScale{SpearmanValue, SpearmanDifference, SpearmanLogSlope, SpearmanInverse};
const CoefficientScale kKendallScale{KendallValue, KendallDifference, KendallLogSlope, KendallInverse};

// d rho = du / cosh^2 u, and the integral of (1 - rho^2)^c is B(1/2, c + 1).
double CorrelationPrior::LogDensity(double u) const {
  const double lnBeta = IsProper() ? 0.5 * std::log(pi) + LogGammaHalfStep(fC + 1) : 0;
  return -(2 * fC + 2) * LogCosh(u) - lnBeta;
}

double CorrelationPrior::Density(const CoefficientScale& scale, double value) const {
  const double u = scale.fInverse(value);
  return std::exp(LogDensity(u) - scale.fLogSlope(u));
}

}  // namespace BayesComponent
