#include "component/numeric/StudentDifference.h"

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

StudentDistribution Centred(const StudentDistribution& student) {
  return {student.DF(), 0, student.Scale() * student.Scale()};
}

// Where the power of cosh(w) is no longer counted.
constexpr double kNegligibleLog = -60;

bool IsWider(const StudentDistribution& left, const StudentDistribution& right) {
  return left.Scale() > right.Scale();
}

}  // namespace

StudentDifference::StudentDifference(const StudentDistribution& first, const StudentDistribution& second)
    : fLocation(first.Location() - second.Location()),
      fWide(Centred(IsWider(first, second) ? first : second)),
      fNarrow(Centred(IsWider(first, second) ? second : first)) {}

std::optional<double> StudentDifference::Mean() const {
  if (fWide.Mean() && fNarrow.Mean()) return fLocation;
  return {};
}

std::optional<double> StudentDifference::Variance() const {
  if (fWide.Variance() && fNarrow.Variance()) return *fWide.Variance() + *fNarrow.Variance();
  return {};
}

double StudentDifference::LowerQuantile(double tail) const {
  return tail > 0.5 ? UpperQuantile(1 - tail) : fLocation - DistanceToQuantile(tail);
}

double StudentDifference::UpperQuantile(double tail) const {
  return tail > 0.5 ? LowerQuantile(1 - tail) : fLocation + DistanceToQuantile(tail);
}

double StudentDifference::Density(double x) const {
  const double distance = x - fLocation;
  return MeanOverNarrow(distance, [&](double y) { return fWide.LogDensity(distance - y); });
}

// Both are symmetric about 0, so first minus second is beyond a distance as often as their sum.
double StudentDifference::UpperProbability(double distance) const {
  return MeanOverNarrow(distance, [&](double y) { return std::log(fWide.UpperProbability(distance - y)); });
}

double StudentDifference::DistanceToQuantile(double tail) const {
  if (tail == 0.5) return 0;
  // One of the two is beyond its own quantile whenever the sum is beyond the sum of these.
  const double bound = fWide.UpperQuantile(tail / 2) + fNarrow.UpperQuantile(tail / 2);
  if (!std::isfinite(bound)) return bound;  // a scale that left the range of numbers
  const auto excess = [this, tail](double distance) { return UpperProbability(distance) / tail - 1; };
  std::uintmax_t iterations = 100;
  const boost::math::tools::eps_tolerance<double> tolerance(42);
  const auto [low, high] = boost::math::tools::toms748_solve(excess, 0.0, bound, 0.5 / tail - 1,
                                                             excess(bound), tolerance, iterations);
  return (low + high) / 2;
}

// E[exp(lnValue(Y))] for the narrow one: with y = scale sqrt(df) sinh(w) its density in w is a power -df of
// cosh(w). Heavy tails have a second contribution where the wide one is near its centre, at y = distance.
double StudentDifference::MeanOverNarrow(double distance, const LogFunction& lnValue) const {
  const double df = fNarrow.DF();
  const double stretch = fNarrow.Scale() * std::sqrt(df);
  const auto lnF = [&](double w) {
    const double half = std::sinh(w / 2);
    // cosh(w) = 1 + 2 sinh^2(w/2), which keeps its digits near 1.
    return -df * std::log1p(2 * half * half) + lnValue(stretch * std::sinh(w));
  };
  const double end = std::asinh(std::sqrt(std::expm1(-2 * kNegligibleLog / df)));
  std::vector<double> breaks{-end, 0, end};
  const double second = std::asinh(distance / stretch);
  if (second != 0 && std::abs(second) < end) breaks.insert(breaks.begin() + (second > 0 ? 2 : 1), second);
  const double lnNormaliser = LogGammaHalfStep(df / 2) + 0.5 * std::log(std::numbers::pi);
  return std::exp(GaussLobatto(1e-10, 2000).Integrate(lnF, breaks).fLogValue - lnNormaliser);
}

}  // namespace BayesComponent
