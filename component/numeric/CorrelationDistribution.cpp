#include "component/numeric/CorrelationDistribution.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace BayesComponent {

CorrelationDistribution::CorrelationDistribution(const CoefficientScale& scale, double anchor,
                                                 LogFunction lnDensity, double width,
                                                 std::optional<double> mode, const GaussLobatto& quadrature)
    : fScale(scale),
      fAnchor(anchor),
      fLnDensity(std::move(lnDensity)),
      fIntegral(fLnDensity, width, quadrature),
      fMode(mode) {
  SetMoments();
  Tabulate(quadrature.Tolerance());
}

// By way of the distance from the value at the peak: no digits are lost to its size.
void CorrelationDistribution::SetMoments() {
  const double peak = fIntegral.Peak();
  const auto shift = [&](double d) { return fScale.fDifference(fAnchor + peak, d - peak); };
  const PeakedIntegral::Moments shifts = fIntegral.MomentsOf(fLnDensity, shift);
  fMean = fScale.fValue(fAnchor + peak) + shifts.fMean;
  fVariance = shifts.fMeanSquare - shifts.fMean * shifts.fMean;
}

void CorrelationDistribution::Tabulate(double tolerance) {
  constexpr double kRounding = 1e-9;
  fvEdges = fIntegral.PanelEdges();
  for (std::size_t i = 0; i + 1 < fvEdges.size(); ++i) {
    fvMasses.push_back(MassBetween(fvEdges[i], fvEdges[i + 1]));
  }
  const double total = std::accumulate(fvMasses.begin(), fvMasses.end(), 0.0);
  fConverged = fIntegral.Result().fConverged && std::abs(total - 1) <= std::max(tolerance, kRounding);
}

double CorrelationDistribution::MassBetween(double from, double to) const {
  return SmoothIntegral([this](double d) { return std::exp(fLnDensity(d) - LogNormaliser()); }, from, to);
}

// Panels are summed up to the one in which the tail ends; Newton's method, kept inside, finds the point.
double CorrelationDistribution::LowerQuantile(double tail) const {
  std::size_t i = 0;
  double rest = tail;
  for (; i + 1 < fvMasses.size() && rest > fvMasses[i]; ++i) rest -= fvMasses[i];
  double low = fvEdges[i];
  double high = fvEdges[i + 1];
  const double precision = 1e-11 * (high - low);
  double x = (low + high) / 2;
  for (int step = 0; step < 60; ++step) {
    const double excess = MassBetween(fvEdges[i], x) - rest;
    (excess > 0 ? high : low) = x;
    const double newton = x - excess / std::exp(fLnDensity(x) - LogNormaliser());
    const double next = newton > low && newton < high ? newton : (low + high) / 2;
    if (std::abs(std::exchange(x, next) - next) <= precision) break;
  }
  return fScale.fValue(fAnchor + x);
}

double CorrelationDistribution::UpperQuantile(double tail) const {
  return LowerQuantile(1 - tail);
}

double CorrelationDistribution::Density(double x) const {
  constexpr double kLast = 1 - std::numeric_limits<double>::epsilon();
  const double u = fScale.fInverse(std::clamp(x, -kLast, kLast));
  return std::exp(fLnDensity(u - fAnchor) - LogNormaliser() - fScale.fLogSlope(u));
}

}  // namespace BayesComponent
