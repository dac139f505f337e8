#include "component/numeric/GaussLobatto.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <queue>

namespace BayesComponent {

namespace {

constexpr double kWorkingTolerance = 1e-10;
// Parts of the integrand below exp(-50) of its peak are left out: 2e-22 of the integral for any width met
// here.
constexpr double kNegligibleLog = -50;

// Nodes of the Kronrod extension on [-1, 1]: the Lobatto nodes -1, -1/sqrt(5), 1/sqrt(5), 1 among them.
const std::array<double, 7> kNodes = {
    -1, -std::sqrt(2.0 / 3), -1 / std::sqrt(5.0), 0, 1 / std::sqrt(5.0), std::sqrt(2.0 / 3), 1};

// One interval with the function at its seven nodes.
struct Interval {
  std::array<double, 7> fX;
  std::array<double, 7> fY;
  double fIntegral = 0;
  double fError = 0;
};

bool HasSmallerError(const Interval& left, const Interval& right) {
  return left.fError < right.fError;
}

std::array<double, 7> NodesBetween(double a, double b) {
  std::array<double, 7> x;
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = (a + b) / 2 + (b - a) / 2 * kNodes[i];
  x.front() = a;
  x.back() = b;
  return x;
}

// The four-point Lobatto rule and its Kronrod extension; their difference estimates the error of the first.
void ApplyRules(Interval& interval) {
  const auto& y = interval.fY;
  const double h = (interval.fX.back() - interval.fX.front()) / 2;
  const double lobatto = h / 6 * (y[0] + y[6] + 5 * (y[2] + y[4]));
  interval.fIntegral =
      h / 1470 * (77 * (y[0] + y[6]) + 432 * (y[1] + y[5]) + 625 * (y[2] + y[4]) + 672 * y[3]);
  interval.fError = std::abs(interval.fIntegral - lobatto);
}

// The intervals of one integration, the worst on top, and their sums.
class Refinement {
 public:
  Refinement(const LogFunction& lnF, const std::vector<double>& breaks) : fLnF(lnF), fQueue(HasSmallerError) {
    std::vector<Interval> intervals;
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i)
      intervals.push_back(LogValues(breaks[i], breaks[i + 1]));
    // Finite, so that a function that is 0 everywhere has the integral 0.
    fScale = std::numeric_limits<double>::lowest();
    for (const auto& interval : intervals) {
      fScale = std::max(fScale, *std::max_element(interval.fY.begin(), interval.fY.end()));
    }
    for (auto& interval : intervals) {
      for (double& y : interval.fY) y = std::exp(y - fScale);
      Push(interval);
    }
  }

  double Scale() const { return fScale; }
  double Integral() const { return fIntegral; }
  bool IsWithin(double tolerance) const { return fError <= tolerance * fIntegral; }

  // Splits the worst interval at its inner nodes, whose values are reused.
  void RefineWorst() {
    const Interval worst = fQueue.top();
    fQueue.pop();
    fIntegral -= worst.fIntegral;
    fError -= worst.fError;
    for (std::size_t i = 0; i < 6; ++i) {
      Interval part{NodesBetween(worst.fX[i], worst.fX[i + 1]), {}};
      part.fY.front() = worst.fY[i];
      part.fY.back() = worst.fY[i + 1];
      for (std::size_t j = 1; j < 6; ++j) part.fY[j] = std::exp(fLnF(part.fX[j]) - fScale);
      Push(part);
    }
  }

 private:
  Interval LogValues(double a, double b) const {
    Interval interval{NodesBetween(a, b), {}};
    std::transform(interval.fX.begin(), interval.fX.end(), interval.fY.begin(), fLnF);
    return interval;
  }

  void Push(Interval& interval) {
    ApplyRules(interval);
    fIntegral += interval.fIntegral;
    fError += interval.fError;
    fQueue.push(interval);
  }

  const LogFunction& fLnF;
  std::priority_queue<Interval, std::vector<Interval>, bool (*)(const Interval&, const Interval&)> fQueue;
  double fScale;
  double fIntegral = 0;
  double fError = 0;
};

// From the peak towards `limit`: the first point found at which the function is negligible, else the limit.
double NegligibleFrom(const LogFunction& lnF, double peak, double limit) {
  const double floor = lnF(peak) + kNegligibleLog;
  double inside = 0;
  double outside = 1e-14;
  while (outside < 1 && lnF(peak + outside * (limit - peak)) > floor) {
    inside = outside;
    outside *= 2;
  }
  if (outside >= 1) {
    if (lnF(limit) > floor) return limit;
    outside = 1;
  }
  for (int i = 0; i < 6; ++i) {
    const double middle = (inside + outside) / 2;
    (lnF(peak + middle * (limit - peak)) > floor ? inside : outside) = middle;
  }
  return peak + outside * (limit - peak);
}

}  // namespace

GaussLobatto::GaussLobatto(double tolerance, int maxRefinements)
    : fTolerance(tolerance), fMaxRefinements(maxRefinements) {}

LogIntegral GaussLobatto::Integrate(const LogFunction& lnF, const std::vector<double>& breaks) const {
  Refinement refinement(lnF, breaks);
  const double target = std::min(fTolerance, kWorkingTolerance);
  for (int i = 0; i < fMaxRefinements && !refinement.IsWithin(target); ++i) refinement.RefineWorst();
  return {refinement.Scale() + std::log(refinement.Integral()), refinement.IsWithin(fTolerance)};
}

LogIntegral GaussLobatto::IntegrateUnimodal(const LogFunction& lnF, double lower, double upper) const {
  return IntegrateAround(lnF, lower, FindPeak(lnF, lower, upper), upper);
}

LogIntegral GaussLobatto::IntegrateAround(const LogFunction& lnF, double lower, double peak,
                                          double upper) const {
  std::vector<double> breaks{NegligibleFrom(lnF, peak, lower), peak, NegligibleFrom(lnF, peak, upper)};
  breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());
  return Integrate(lnF, breaks);
}

double FindPeak(const LogFunction& lnF, double lower, double upper) {
  constexpr int kSteps = 128;
  const double step = (upper - lower) / kSteps;
  double best = lower;
  double bestValue = lnF(lower);
  for (int i = 1; i <= kSteps; ++i) {
    const double value = lnF(lower + i * step);
    if (value > bestValue) std::tie(best, bestValue) = std::pair(lower + i * step, value);
  }
  double a = std::max(lower, best - step);
  double b = std::min(upper, best + step);
  constexpr double kGolden = std::numbers::phi - 1;
  for (int i = 0; i < 32; ++i) {
    const double left = b - kGolden * (b - a);
    const double right = a + kGolden * (b - a);
    if (lnF(left) < lnF(right)) {
      a = left;
    } else {
      b = right;
    }
  }
  return (a + b) / 2;
}

}  // namespace BayesComponent
