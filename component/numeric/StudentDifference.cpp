#include "component/numeric/StudentDifference.h"

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace BayesComponent {

namespace {

StudentDistribution Centred(const StudentDistribution& student) {
  return {student.DF(), 0, student.Scale() * student.Scale()};
}

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
  return MeanOverNarrow([this, x](double y) { return std::log(fWide.Density(x - fLocation - y)); });
}

// Both are symmetric about 0, so first minus second is beyond a distance as often as their sum.
double StudentDifference::UpperProbability(double distance) const {
  return MeanOverNarrow(
      [this, distance](double y) { return std::log(fWide.UpperProbability(distance - y)); });
}

double StudentDifference::DistanceToQuantile(double tail) const {
  if (tail == 0.5) return 0;
  // One of the two is beyond its own quantile whenever the sum is beyond the sum of these.
  const double bound = fWide.UpperQuantile(tail / 2) + fNarrow.UpperQuantile(tail / 2);
  const auto excess = [this, tail](double distance) { return UpperProbability(distance) / tail - 1; };
  std::uintmax_t iterations = 100;
  const boost::math::tools::eps_tolerance<double> tolerance(48);
  const auto [low, high] = boost::math::tools::toms748_solve(excess, 0.0, bound, 0.5 / tail - 1,
                                                             excess(bound), tolerance, iterations);
  return (low + high) / 2;
}

// E[exp(lnValue(Y))] for the narrow one: with y = scale sqrt(df) tan(angle) its density is the power df - 1
// of a cosine, on an interval that ends where this is negligible.
double StudentDifference::MeanOverNarrow(const LogFunction& lnValueAtNarrow) const {
  const double df = fNarrow.DF();
  const double stretch = fNarrow.Scale() * std::sqrt(df);
  const auto lnWeight = [df](double angle) { return (df - 1) * std::log(std::cos(angle)); };
  const auto lnF = [&](double angle) { return lnWeight(angle) + lnValueAtNarrow(stretch * std::tan(angle)); };
  const double end = df > 1 ? std::acos(std::exp(-60 / (df - 1))) : std::numbers::pi / 2;
  const GaussLobatto quadrature(1e-13, 2000);
  // The normaliser is that of the beta distribution (df/2, 1/2) of the squared cosine.
  const double lnNormaliser =
      std::lgamma(df / 2) - std::lgamma((df + 1) / 2) + 0.5 * std::log(std::numbers::pi);
  return std::exp(quadrature.Integrate(lnF, {-end, 0, end}).fLogValue - lnNormaliser);
}

}  // namespace BayesComponent
