#include "component/numeric/NormalBayesFactor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "component/numeric/LogMeanExp.h"
#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

// g reaches from where its prior has no mass left to the end of the doubles, on the log scale.
constexpr double kLogGBelowScale = 40;
constexpr double kLargestLogG = 700;

// Normal effect with a known variance: the ratio of two normal densities of z.
double LogBF01NormalEffectOfZ(double z, double noncentrality, double variance) {
  const double distance = z - noncentrality;
  return 0.5 * std::log(variance) + 0.5 * (distance * distance / variance - z * z);
}

// ln E[exp(c W)] with W^2 ~ chi-square(v + 1)/v: the factor by which a noncentral t density exceeds a central
// one. The integrand is taken relative to its value exp(-v/2) at w = 1 when c is 0, and so is its known
// integral, by Stirling: for v = 1e9 each alone would lose seven digits.
LogIntegral LogNoncentralFactor(double v, double c, const GaussLobatto& quadrature) {
  const auto lnF = [v, c](double w) {
    if (w <= 0) return -std::numeric_limits<double>::infinity();
    const double d = w - 1;
    const double logPart = std::abs(d) < 0.5 ? std::log1p(d) : std::log(w);
    return v * (logPart - d - d * d / 2) + c * w;
  };
  const double root = std::hypot(c, 2 * v);
  const double peak = c > 0 ? (c + root) / (2 * v) : 2 * v / (root - c);
  const double width = 1 / std::sqrt(v / (peak * peak) + v);
  LogIntegral result = quadrature.IntegrateAround(lnF, 0, peak, peak + 60 * std::max(width, 1 / v));
  const double lnNormaliser = -std::numbers::ln2 - 0.5 + 0.5 * std::log(4 * std::numbers::pi / v) +
                              v / 2 * std::log1p(1 / v) + StirlingRemainder((v + 1) / 2);
  result.fLogValue -= lnNormaliser;
  return result;
}

}  // namespace

double LogBF10GivenG(const MeanTest& test, double g) {
  const double t2 = test.fT * test.fT;
  const double v = test.fDF;
  const double ng = test.fN * g;
  const double shrinkage = std::isinf(ng) ? 1 : ng / (1 + ng);
  if (std::isinf(v)) return -0.5 * std::log1p(ng) + 0.5 * t2 * shrinkage;
  // (1 + t^2/v) / (1 + t^2/(v (1 + N g))), less 1.
  const double bracket = t2 / v * shrinkage / (1 + t2 / (v * (1 + ng)));
  return -0.5 * std::log1p(ng) + 0.5 * (v + 1) * std::log1p(bracket);
}

LogIntegral LogBF01Cauchy(const MeanTest& test, double scale, const GaussLobatto& quadrature) {
  const double b = scale * scale / 2;
  const auto lnF = [&test, b](double lnG) {
    const double g = std::exp(lnG);
    // One factor g comes from integrating over ln g.
    return LogBF10GivenG(test, g) + 0.5 * std::log(b / std::numbers::pi) - 0.5 * lnG - b / g;
  };
  const double lower = std::log(2 * b) - kLogGBelowScale;
  LogIntegral result = quadrature.IntegrateUnimodal(lnF, lower, kLargestLogG);
  result.fLogValue = -result.fLogValue;
  return result;
}

double LogBF01Cauchy(const MeanTest& test, double scale, int samples, RandomStream& random) {
  LogMeanExp mean;
  for (int i = 0; i < samples; ++i) {
    // scale^2/z^2 has the inverse gamma distribution (1/2, scale^2/2).
    const double root = scale / random.Normal();
    mean.Add(LogBF10GivenG(test, root * root));
  }
  return -mean.Value();
}

LogIntegral LogBF01NormalEffect(const MeanTest& test, double mean, double variance,
                                const GaussLobatto& quadrature) {
  const double t = test.fT;
  const double v = test.fDF;
  const double s2 = 1 + test.fN * variance;
  const double noncentrality = std::sqrt(test.fN) * mean;
  if (std::isinf(v)) return {LogBF01NormalEffectOfZ(t, noncentrality, s2), true};
  // t/s is noncentral t with noncentrality delta under the alternative, s^2 = 1 + N variance.
  const double x = t / std::sqrt(s2);
  const double delta = noncentrality / std::sqrt(s2);
  const double c = x * delta / std::sqrt(1 + x * x / v);
  LogIntegral result = LogNoncentralFactor(v, c, quadrature);
  // ln [(1 + x^2/v) / (1 + t^2/v)], with t^2 - x^2 = t^2 N variance/s^2.
  const double kernels = std::log1p(-t * t * (test.fN * variance / s2) / (v + t * t));
  result.fLogValue = 0.5 * std::log(s2) + 0.5 * (v + 1) * kernels + (delta * delta / 2 - result.fLogValue);
  return result;
}

double LogBF01PearsonSix(const MeanTest& test, double a) {
  const double v = test.fDF;
  if (!(v > 2 * a + 2) || std::isinf(v)) return std::numeric_limits<double>::quiet_NaN();
  const double lnBF10 = LogGammaHalfStep(v / 2) - LogGammaHalfStep(a + 1) +
                        (v - 2 * a - 2) / 2 * std::log1p(test.fT * test.fT / v);
  return -lnBF10;
}

}  // namespace BayesComponent
