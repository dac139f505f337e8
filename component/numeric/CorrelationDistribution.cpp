#include "component/numeric/CorrelationDistribution.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "component/numeric/LogMeanExp.h"

namespace BayesComponent {

namespace {

constexpr double kNegligibleLog = -60;
constexpr double kFarthest = 1e6;

// From `start` by steps that double, first of size `step`: the first point at which the function is below
// `floor`.
double FirstBelow(const LogFunction& lnF, double start, double step, double floor) {
  double distance = step;
  while (lnF(start + distance) > floor && std::abs(distance) < kFarthest) distance *= 2;
  return start + distance;
}

double FindPeakNearZero(const LogFunction& lnF, double width) {
  const double floor = lnF(0) - 1;
  return FindPeak(lnF, FirstBelow(lnF, 0, -width, floor), FirstBelow(lnF, 0, width, floor));
}

}  // namespace

PeakedIntegral::PeakedIntegral(const LogFunction& lnF, double width, const GaussLobatto& quadrature)
    : fPeak(FindPeakNearZero(lnF, width)) {
  const double floor = lnF(fPeak) + kNegligibleLog;
  fLower = FirstBelow(lnF, fPeak, -width, floor);
  fUpper = FirstBelow(lnF, fPeak, width, floor);
  fResult = quadrature.Integrate(lnF, {fLower, fPeak, fUpper});
}

double LogPeakedIntegral(const LogFunction& lnF, double width, int samples, RandomStream& random) {
  LogMeanExp mean;
  for (int i = 0; i < samples; ++i) {
    const double t = std::tan(std::numbers::pi * (random.Uniform() - 0.5));
    mean.Add(lnF(width * t) + std::log(std::numbers::pi * width) + std::log1p(t * t));
  }
  return mean.Value();
}

CorrelationDistribution::CorrelationDistribution(const CoefficientScale& scale, double anchor,
                                                 LogFunction lnDensity, double width,
                                                 std::optional<double> mode, const GaussLobatto& quadrature)
    : fScale(scale),
      fAnchor(anchor),
      fLnDensity(std::move(lnDensity)),
      fQuadrature(quadrature),
      fIntegral(fLnDensity, width, quadrature),
      fMode(mode),
      fConverged(fIntegral.Result().fConverged) {
  Tabulate();
  SetMoments();
}

void CorrelationDistribution::Tabulate() {
  constexpr int kPanelsPerSide = 24;
  const double peak = fIntegral.Peak();
  for (const auto& [from, to] : {std::pair(fIntegral.Lower(), peak), {peak, fIntegral.Upper()}}) {
    for (int i = 0; i < kPanelsPerSide; ++i) fvEdges.push_back(from + (to - from) * i / kPanelsPerSide);
  }
  fvEdges.push_back(fIntegral.Upper());
  for (std::size_t i = 0; i + 1 < fvEdges.size(); ++i) {
    const LogIntegral mass = fQuadrature.Integrate(fLnDensity, {fvEdges[i], fvEdges[i + 1]});
    fConverged = fConverged && mass.fConverged;
    fvMasses.push_back(std::exp(mass.fLogValue - LogNormaliser()));
  }
}

// Mean and variance by way of the distance from the value at the peak: no digits are lost to its size.
void CorrelationDistribution::SetMoments() {
  const double shift = MeanPower(1);
  fMean = fScale.fValue(fAnchor + fIntegral.Peak()) + shift;
  fVariance = MeanPower(2) - shift * shift;
}

double CorrelationDistribution::MeanPower(int power) {
  const double peak = fIntegral.Peak();
  const auto lnF = [&](double d) {
    return fLnDensity(d) + power * std::log(std::abs(fScale.fDifference(fAnchor + peak, d - peak)));
  };
  const LogIntegral below = fQuadrature.Integrate(lnF, {fIntegral.Lower(), peak});
  const LogIntegral above = fQuadrature.Integrate(lnF, {peak, fIntegral.Upper()});
  fConverged = fConverged && below.fConverged && above.fConverged;
  const double left = std::exp(below.fLogValue - LogNormaliser());
  const double right = std::exp(above.fLogValue - LogNormaliser());
  return power == 1 ? right - left : right + left;
}

double CorrelationDistribution::MassBetween(double from, double to) const {
  if (from == to) return 0;
  const double lnMass = fQuadrature.Integrate(fLnDensity, {from, to}).fLogValue;
  return std::exp(lnMass - LogNormaliser());
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
