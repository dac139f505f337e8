#include "component/numeric/PeakedIntegral.h"

#include <algorithm>
#include <boost/math/quadrature/gauss.hpp>
#include <cmath>
#include <numbers>

#include "component/numeric/LogMeanExp.h"

namespace BayesComponent {

namespace {

// Where the function is below exp(-60) of its peak it is left out.
constexpr double kNegligible = 1e-26;
constexpr double kFarthest = 1e6;
constexpr double kFirstStep = 0.5;
constexpr int kMostHalvings = 10;
// Halving the step squares the error, so that this difference leaves one of about 1e-16.
constexpr double kSmallEnough = 1e-8;
constexpr double kSettledMoment = 1e-5;  // likewise, leaves about 1e-10

// From 0 by steps that double, first of size `step`: the first point at which the function is below `floor`.
double FirstBelow(const LogFunction& lnF, double step, double floor) {
  while (lnF(step) > floor && std::abs(step) < kFarthest) step *= 2;
  return step;
}

// Golden section search. The peak only centres the steps, so that few digits of it are enough.
double FindPeakNearZero(const LogFunction& lnF, double width) {
  constexpr double kGolden = std::numbers::phi - 1;
  const double floor = lnF(0) - 1;
  double a = FirstBelow(lnF, -width, floor);
  double b = FirstBelow(lnF, width, floor);
  double left = b - kGolden * (b - a);
  double right = a + kGolden * (b - a);
  double atLeft = lnF(left);
  double atRight = lnF(right);
  while (b - a > 0.05 * width) {
    if (atLeft < atRight) {
      a = std::exchange(left, right);
      atLeft = atRight;
      right = a + kGolden * (b - a);
      atRight = lnF(right);
    } else {
      b = std::exchange(right, left);
      atRight = atLeft;
      left = b - kGolden * (b - a);
      atLeft = lnF(left);
    }
  }
  return (a + b) / 2;
}

struct MomentSums {
  double fWeight = 0;
  double fFirst = 0;
  double fSecond = 0;

  void Add(double weight, double value) {
    fWeight += weight;
    fFirst += weight * value;
    fSecond += weight * value * value;
  }
  PeakedIntegral::Moments Means() const { return {fFirst / fWeight, fSecond / fWeight}; }
};

}  // namespace

PeakedIntegral::PeakedIntegral(const LogFunction& lnF, double width, const GaussLobatto& limits)
    : fWidth(width),
      fPeak(FindPeakNearZero(lnF, width)),
      fLnPeak(lnF(fPeak)),
      fStep(kFirstStep),
      fMostHalvings(std::min(limits.MaxRefinements(), kMostHalvings)) {
  fvNodes.push_back(NodeAt(lnF, 0));
  fFirst = FindEnd(lnF, -fStep);
  fLast = FindEnd(lnF, fStep);
  const double target = std::min(limits.Tolerance(), kSmallEnough);
  double integral = Sum();
  double change = integral;
  while (CanHalve() && change > target * integral) {
    Halve(lnF);
    change = std::abs(std::exchange(integral, Sum()) - integral);
  }
  fResult = {fLnPeak + std::log(integral), change <= limits.Tolerance() * integral};
}

PeakedIntegral::Node PeakedIntegral::NodeAt(const LogFunction& lnF, double t) const {
  // sinh t and cosh t from one exponential: that t is no smaller than a step keeps the digits of the first.
  const double growth = std::exp(t);
  const double at = fPeak + fWidth * (growth - 1 / growth) / 2;
  return {at, std::exp(lnF(at) - fLnPeak) * fWidth * (growth + 1 / growth) / 2};
}

double PeakedIntegral::FindEnd(const LogFunction& lnF, double step) {
  double t = 0;
  do {
    t += step;
    fvNodes.push_back(NodeAt(lnF, t));
  } while (fvNodes.back().fWeight > kNegligible * fWidth && std::abs(fvNodes.back().fAt) < kFarthest);
  return t;
}

void PeakedIntegral::Halve(const LogFunction& lnF) {
  fCoarse = fvNodes.size();
  for (double t = fFirst + fStep / 2; t < fLast; t += fStep) fvNodes.push_back(NodeAt(lnF, t));
  fStep /= 2;
  ++fHalvings;
}

double PeakedIntegral::Sum() const {
  double sum = 0;
  for (const Node& node : fvNodes) sum += node.fWeight;
  return sum * fStep;
}

std::vector<double> PeakedIntegral::PanelEdges() const {
  const double panel = std::min(4 * fStep, kFirstStep);
  std::vector<double> edges;
  for (double t = fFirst; t < fLast + panel / 2; t += panel) edges.push_back(fPeak + fWidth * std::sinh(t));
  return edges;
}

PeakedIntegral::Moments PeakedIntegral::MomentsOf(const LogFunction& lnF,
                                                  const std::function<double(double)>& value) {
  for (;;) {
    MomentSums coarse, fine;
    for (std::size_t i = 0; i < fvNodes.size(); ++i) {
      if (i == fCoarse) coarse = fine;
      fine.Add(fvNodes[i].fWeight, value(fvNodes[i].fAt));
    }
    const Moments moments = fine.Means();
    const double change = std::abs(moments.fMeanSquare - coarse.Means().fMeanSquare);
    const bool isSettled = change <= kSettledMoment * moments.fMeanSquare;
    if (isSettled || !CanHalve()) {
      fResult.fConverged = fResult.fConverged && isSettled;
      return moments;
    }
    Halve(lnF);
  }
}

double SmoothIntegral(const std::function<double(double)>& f, double from, double to) {
  return from == to ? 0 : boost::math::quadrature::gauss<double, 10>::integrate(f, from, to);
}

double LogPeakedIntegral(const LogFunction& lnF, double width, int samples, RandomStream& random) {
  LogMeanExp mean;
  for (int i = 0; i < samples; ++i) {
    const double t = std::tan(std::numbers::pi * (random.Uniform() - 0.5));
    mean.Add(lnF(width * t) + std::log(std::numbers::pi * width) + std::log1p(t * t));
  }
  return mean.Value();
}

}  // namespace BayesComponent
