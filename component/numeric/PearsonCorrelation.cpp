#include "component/numeric/PearsonCorrelation.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "component/numeric/HalfHypergeometric.h"
#include "component/numeric/LogMeanExp.h"

namespace BayesComponent {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The decreasing function `slope` is 0 at the distance returned: a bracket by doubling, then bisection.
double FindZero(const std::function<double(double)>& slope, double width) {
  double low = -width;
  double high = width;
  while (slope(low) < 0) low *= 2;
  while (slope(high) > 0) high *= 2;
  const double precision = std::numeric_limits<double>::epsilon() * width;
  while (high - low > precision) {
    const double middle = (low + high) / 2;
    if (middle <= low || middle >= high) break;
    (slope(middle) > 0 ? low : high) = middle;
  }
  return (low + high) / 2;
}

// Where the density of rho, not that of u, is largest.
std::optional<double> PearsonMode(const ReducedLikelihood& likelihood, double n, double c) {
  if (c + (n - 1) / 2 <= 0) return {};
  const double z = likelihood.Anchor();
  const auto slope = [&](double d) { return likelihood.SlopeAt(d) - 2 * c * std::tanh(z + d); };
  return std::tanh(z + FindZero(slope, likelihood.WidthTimes(c)));
}

// ln of the integrand over ln g, a factor g from that step included. q = 1 - r^2 keeps its digits near 0.
class JzsIntegrand {
 public:
  JzsIntegrand(const PearsonSample& sample, double rho0)
      : fN(sample.fN), fLnConstant(0.5 * std::log(sample.fN / (2 * std::numbers::pi))) {
    const double distance = std::atanh(sample.fR) - std::atanh(rho0);
    const double r = std::tanh(distance);
    fSquare = r * r;
    fRest = std::exp(-2 * LogCosh(distance));
  }

  // The Bayes factor BF10 given g.
  double LogBF10(double g) const {
    const double shrinkage = std::isinf(g) ? 1 : g / (1 + g);
    // ln[(1 + q g)/(1 + g)] by the form that doesn't cancel.
    const double lnRest =
        fSquare < 0.5 ? std::log1p(-fSquare * shrinkage) : std::log(fRest * shrinkage + 1 / (1 + g));
    return -0.5 * std::log1p(g) - (fN - 1) / 2 * lnRest;
  }

  double operator()(double lnG) const {
    const double g = std::exp(lnG);
    const double lnPrior = fLnConstant - 0.5 * lnG - fN / (2 * g);
    return LogBF10(g) + lnPrior;
  }

 private:
  double fN;
  double fLnConstant;
  double fSquare;  // r^2
  double fRest;    // 1 - r^2
};

// ln[L_n(rho0) / integral of L_n times the prior], both relative to the same constant.
double LogRatioAt(const ReducedLikelihood& likelihood, double rho0, double lnIntegral) {
  return likelihood.LogAt(std::atanh(rho0) - likelihood.Anchor()) - lnIntegral;
}

bool IsDefined(const PearsonSample& sample, const FractionalPrior& prior) {
  return prior.fB > 0 && prior.fB < 1 && sample.fN * prior.fB > 1 &&
         ReducedLikelihood({sample.fR, sample.fN * prior.fB}).IsProperTimes(prior.fC);
}

}  // namespace

ReducedLikelihood::ReducedLikelihood(const PearsonSample& sample)
    : fZ(std::atanh(sample.fR)), fN(sample.fN) {}

// At rho = 0 the curvature of the logarithm is n + 2c + 1.
double ReducedLikelihood::WidthTimes(double c) const {
  return 1 / std::sqrt(std::max({fN, fN + 2 * c, 1.0}));
}

double ReducedLikelihood::LogAt(double distance) const {
  const double u = fZ + distance;
  // 1 - rho r = cosh(u - z) / (cosh u cosh z).
  const double complement = std::exp(LogCosh(distance) - LogCosh(u) - LogCosh(fZ)) / 2;
  return -(fN - 1.5) * LogCosh(distance) - 0.5 * LogCosh(u) +
         LogHalfHypergeometric(fN - 0.5, complement).fLog;
}

double ReducedLikelihood::SlopeAt(double distance) const {
  const double u = fZ + distance;
  const double complement = std::exp(LogCosh(distance) - LogCosh(u) - LogCosh(fZ)) / 2;
  const double inU = 0.5 * std::tanh(fZ) * std::exp(-2 * LogCosh(u));
  return -(fN - 1.5) * std::tanh(distance) - 0.5 * std::tanh(u) +
         LogHalfHypergeometric(fN - 0.5, complement).fSlope * inU;
}

LogFunction ReducedLikelihood::Times(double c) const {
  return [*this, c](double distance) { return LogAt(distance) - (2 * c + 2) * LogCosh(fZ + distance); };
}

std::unique_ptr<CorrelationDistribution> PearsonPosterior(const PearsonSample& sample, double c,
                                                          const GaussLobatto& quadrature) {
  const ReducedLikelihood likelihood(sample);
  if (!likelihood.IsProperTimes(c)) return nullptr;
  return std::make_unique<CorrelationDistribution>(kPearsonScale, likelihood.Anchor(), likelihood.Times(c),
                                                   likelihood.WidthTimes(c),
                                                   PearsonMode(likelihood, sample.fN, c), quadrature);
}

double LogProfileLikelihood(const PearsonSample& sample, double distance) {
  return -sample.fN * LogCosh(distance);
}

std::unique_ptr<CorrelationDistribution> NormalisedProfileLikelihood(const PearsonSample& sample,
                                                                     const GaussLobatto& quadrature) {
  const double z = std::atanh(sample.fR);
  const auto lnF = [sample, z](double d) { return LogProfileLikelihood(sample, d) - 2 * LogCosh(z + d); };
  return std::make_unique<CorrelationDistribution>(kPearsonScale, z, lnF, 1 / std::sqrt(sample.fN), sample.fR,
                                                   quadrature);
}

LogIntegral LogBF01Jzs(const PearsonSample& sample, double rho0, const GaussLobatto& quadrature) {
  const double lnScale = std::log(sample.fN);
  const auto lnF = [integrand = JzsIntegrand(sample, rho0), lnScale](double d) {
    return integrand(lnScale + d);
  };
  LogIntegral result = PeakedIntegral(lnF, 1, quadrature).Result();
  result.fLogValue = -result.fLogValue;
  return result;
}

double LogBF01Jzs(const PearsonSample& sample, double rho0, int samples, RandomStream& random) {
  const JzsIntegrand integrand(sample, rho0);
  LogMeanExp mean;
  for (int i = 0; i < samples; ++i) {
    // n/z^2 has the inverse gamma distribution (1/2, n/2).
    const double z = random.Normal();
    mean.Add(integrand.LogBF10(sample.fN / (z * z)));
  }
  return -mean.Value();
}

LogIntegral LogBF01Fractional(const PearsonSample& sample, double rho0, const FractionalPrior& prior,
                              const GaussLobatto& quadrature) {
  if (!IsDefined(sample, prior)) return {kNaN, true};
  LogIntegral result;
  for (const auto& [n, sign] : {std::pair(sample.fN, 1.0), {sample.fN * prior.fB, -1.0}}) {
    const ReducedLikelihood likelihood({sample.fR, n});
    const LogIntegral integral =
        PeakedIntegral(likelihood.Times(prior.fC), likelihood.WidthTimes(prior.fC), quadrature).Result();
    result.fLogValue += sign * LogRatioAt(likelihood, rho0, integral.fLogValue);
    result.fConverged = result.fConverged && integral.fConverged;
  }
  return result;
}

double LogBF01Fractional(const PearsonSample& sample, double rho0, const FractionalPrior& prior, int samples,
                         RandomStream& random) {
  if (!IsDefined(sample, prior)) return kNaN;
  double lnBF01 = 0;
  for (const auto& [n, sign] : {std::pair(sample.fN, 1.0), {sample.fN * prior.fB, -1.0}}) {
    const ReducedLikelihood likelihood({sample.fR, n});
    const double lnIntegral =
        LogPeakedIntegral(likelihood.Times(prior.fC), likelihood.WidthTimes(prior.fC), samples, random);
    lnBF01 += sign * LogRatioAt(likelihood, rho0, lnIntegral);
  }
  return lnBF01;
}

}  // namespace BayesComponent
