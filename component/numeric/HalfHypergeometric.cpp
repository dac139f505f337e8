#include "component/numeric/HalfHypergeometric.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

constexpr double kNegligible = 1e-18;

// Abramowitz & Stegun (1964), eqs. 15.1.1 and 15.2.1. Terms fall as x^k k^-c.
LogAndSlope BySeries(double c, double x) {
  double term = 1;
  double sum = 0;
  double slope = 0;
  for (int k = 0; term > kNegligible * sum; ++k) {
    const double ratio = (k + 0.5) * (k + 0.5) / (c + k);
    sum += term;
    slope += term * ratio;
    term *= ratio / (k + 1) * x;
  }
  return {std::log(sum), slope / sum};
}

// Euler's integral, eq. 15.3.1 there, with t = tanh^2 s: Gamma(c)/(Gamma(1/2) Gamma(c - 1/2)) times the
// integral of cosh(s)^(2 - 2c) (1 + (1 - x) sinh^2 s)^(-1/2) over the real line. The integrand has no pole
// within pi/2 of the line for any x, so that equal steps converge exponentially.
LogAndSlope ByEqualSteps(double c, double complement) {
  constexpr double kStep = 0.125;
  constexpr double kLargestCosh = 1e150;
  double sum = 0.5;
  double slope = 0;
  for (int k = 1;; ++k) {
    const double cosh = std::cosh(k * kStep);
    const double square = (cosh - 1) * (cosh + 1);
    const double term = std::pow(cosh, 2 - 2 * c) / std::sqrt(1 + complement * square);
    const double inSlope = 0.5 * term * square / (1 + complement * square);
    sum += term;
    slope += inSlope;
    if ((term < kNegligible * sum && inSlope < kNegligible * slope) || cosh > kLargestCosh) break;
  }
  const double lnFactor = std::log(2 * kStep) - LogGammaHalfStep(c - 0.5) - 0.5 * std::log(std::numbers::pi);
  return {lnFactor + std::log(sum), slope / sum};
}

}  // namespace

LogAndSlope LogHalfHypergeometric(double c, double complement) {
  constexpr double kSeriesFrom = 8;
  const double x = 1 - complement;
  return c >= kSeriesFrom || x < 0.5 ? BySeries(c, x) : ByEqualSteps(c, complement);
}

}  // namespace BayesComponent
