#include "component/Results.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace BayesComponent {

namespace {

constexpr double kLargestLog = 700;
constexpr int kCurvePoints = 201;
constexpr double kCurveTail = 0.0005;

// Empty over a range that is no interval of finite numbers.
Curve CurveOver(const Interval& range, const Density& f, bool isShown) {
  const double width = range.fUpper - range.fLower;
  if (!(width > 0) || std::isinf(width)) return {};
  Curve curve;
  const std::size_t least = isShown ? kCurvePoints : 1;
  curve.fArguments.reserve(least);
  curve.fValues.reserve(least);
  for (int i = 0; i < kCurvePoints; ++i) {
    const double x = range.fLower + width * i / (kCurvePoints - 1);
    curve.fArguments.push_back(x);
    curve.fValues.push_back(Shown(f(x)));
    if (!isShown && IsGiven(curve.fValues.back())) break;
  }
  return curve;
}

Density DensityOf(const Distribution& distribution) {
  return [&distribution](double x) { return distribution.Density(x); };
}

void Report(const LogIntegral& lnBayesFactor, StatusList& statuses) {
  if (std::isnan(lnBayesFactor.fLogValue)) {
    statuses.Warn(kNumericFailure);
  } else if (!lnBayesFactor.fConverged) {
    statuses.Warn(kIntegralNotConverged);
  }
}

}  // namespace

double Shown(double value) {
  return std::isfinite(value) ? value : kMissing;
}

double Shown(const std::optional<double>& value) {
  return value ? Shown(*value) : kMissing;
}

double BayesFactorOf(const LogIntegral& lnBayesFactor, StatusList& statuses) {
  Report(lnBayesFactor, statuses);
  if (std::isnan(lnBayesFactor.fLogValue)) return kMissing;
  using Limits = std::numeric_limits<double>;
  return std::clamp(std::exp(lnBayesFactor.fLogValue), Limits::min(), Limits::max());
}

void AppendBayesFactor(const LogIntegral& lnBayesFactor, LoggableColumns& columns, StatusList& statuses) {
  const bool isLog = std::abs(lnBayesFactor.fLogValue) > kLargestLog;
  if (isLog) statuses.Warn(kBayesFactorIsLog);
  columns.fvValues.push_back(isLog ? Shown(lnBayesFactor.fLogValue) : BayesFactorOf(lnBayesFactor, statuses));
  columns.fvAreLogs.push_back(isLog);
}

void AppendNoBayesFactor(LoggableColumns& columns) {
  columns.fvValues.push_back(kMissing);
  columns.fvAreLogs.push_back(false);
}

PosteriorRow Characterise(const Distribution* posterior, double level, StatusList& statuses) {
  if (!posterior) return {kMissing, kMissing, kMissing, kMissing, kMissing};
  const double tail = (1 - level / 100) / 2;
  const Interval interval = posterior->CentralInterval(tail);
  const std::optional<double> numbers[] = {posterior->Mode(), posterior->Mean(), posterior->Variance(),
                                           interval.fLower, interval.fUpper};
  const auto isLost = [](const std::optional<double>& number) { return number && !std::isfinite(*number); };
  if (std::any_of(std::begin(numbers), std::end(numbers), isLost)) statuses.Warn(kNumericFailure);
  return {Shown(numbers[0]), Shown(numbers[1]), Shown(numbers[2]), Shown(numbers[3]), Shown(numbers[4])};
}

Density FlatPrior() {
  return [](double) { return 1.0; };
}

Density PriorDensity(const std::shared_ptr<const Distribution>& prior) {
  if (!prior) return FlatPrior();
  return [prior](double x) { return prior->Density(x); };
}

CurveSet DrawCurves(const BSNSettings& settings, const Likelihood& likelihood, const Distribution* posterior,
                    const Density& prior) {
  if (!likelihood.fNormalised) return {};
  Interval range = likelihood.fNormalised->CentralInterval(kCurveTail);
  if (posterior) {
    const Interval ofPosterior = posterior->CentralInterval(kCurveTail);
    range = {std::min(range.fLower, ofPosterior.fLower), std::max(range.fUpper, ofPosterior.fUpper)};
  }
  const auto draw = [&](const Density& f) { return CurveOver(range, f, settings.GetPlotsShown()); };
  return {draw(likelihood.fLog), posterior ? draw(DensityOf(*posterior)) : Curve(), draw(prior)};
}

Curve DrawPosterior(const BSNSettings& settings, const Distribution& posterior) {
  return CurveOver(posterior.CentralInterval(kCurveTail), DensityOf(posterior), settings.GetPlotsShown());
}

}  // namespace BayesComponent
