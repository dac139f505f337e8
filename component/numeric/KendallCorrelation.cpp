#include "component/numeric/KendallCorrelation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace BayesComponent {

namespace {

// The last value that has a u of its own: artanh(sin(pi/2 value)) is about 8 there.
constexpr double kLastValue = 1 - 1e-4;

}  // namespace

KendallLikelihood::KendallLikelihood(double tau, double n)
    : fSlope(1.5 * std::sqrt(n)),
      fEstimate(3 * tau * std::sqrt(n * (n - 1)) / std::sqrt(2 * (2 * n + 5)) / fSlope),
      fAnchor(kKendallScale.fInverse(std::clamp(fEstimate, -kLastValue, kLastValue))) {}

double KendallLikelihood::LogOf(double tau) const {
  const double smallest = fSlope * (fEstimate - std::clamp(fEstimate, -1.0, 1.0));
  const double residual = fSlope * (fEstimate - tau);
  return (smallest - residual) * (smallest + residual) / 2;
}

// ln of the normal density without its constant; the difference of two values of tau keeps its digits.
double KendallLikelihood::LogAt(double distance) const {
  const double atAnchor = fEstimate - kKendallScale.fValue(fAnchor);
  const double residual = fSlope * (atAnchor - kKendallScale.fDifference(fAnchor, distance));
  return -residual * residual / 2;
}

LogFunction KendallLikelihood::Times(double c) const {
  return [*this, c](double distance) { return LogAt(distance) - (2 * c + 2) * LogCosh(fAnchor + distance); };
}

double KendallLikelihood::LogBF01(double tau0, double c, double lnIntegral) const {
  const double residual = fSlope * (fEstimate - tau0);
  const double lnBeta = -CorrelationPrior(c).LogDensity(0);
  return -residual * residual / 2 - (lnIntegral - lnBeta);
}

// The narrower one of likelihood and prior.
double KendallLikelihood::WidthTimes(double c) const {
  const double ofPrior = 1 / std::sqrt(std::max(2 * c + 2, 1.0));
  return std::min(ofPrior, std::exp(-kKendallScale.fLogSlope(fAnchor)) / fSlope);
}

// The log density of tau is a parabola plus (2c + 1) ln cos(pi tau/2): concave, with its largest value where
// the slope vanishes or, under a flat prior, possibly at the end. Unbounded at the ends for c < -1/2.
std::optional<double> KendallLikelihood::Mode(double c) const {
  if (c < -0.5) return {};
  const auto slope = [&](double tau) {
    const double ofPrior =
        c == -0.5 ? 0 : (2 * c + 1) * std::numbers::pi / 2 * std::tan(std::numbers::pi / 2 * tau);
    return fSlope * fSlope * (fEstimate - tau) - ofPrior;
  };
  double low = -1;
  double high = 1;
  for (double middle = 0; middle > low && middle < high; middle = (low + high) / 2) {
    (slope(middle) > 0 ? low : high) = middle;
    if (high - low < 1e-16) break;
  }
  return (low + high) / 2;
}

std::unique_ptr<CorrelationDistribution> KendallLikelihood::Posterior(double c,
                                                                      const GaussLobatto& quadrature) const {
  if (!CorrelationPrior(c).IsProper()) return nullptr;
  return std::make_unique<CorrelationDistribution>(kKendallScale, fAnchor, Times(c), WidthTimes(c), Mode(c),
                                                   quadrature);
}

std::unique_ptr<CorrelationDistribution> KendallLikelihood::Normalised(const GaussLobatto& quadrature) const {
  // Flat in tau: (1 - rho^2)^(-1/2).
  return Posterior(-0.5, quadrature);
}

}  // namespace BayesComponent
