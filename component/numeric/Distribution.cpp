#include "component/numeric/Distribution.h"

#include <algorithm>
#include <boost/math/distributions/beta.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/gamma.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <limits>
#include <numbers>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

namespace policies = boost::math::policies;

// Out of range is infinite or NaN, which the caller turns into a missing value, never an exception.
using Quiet = policies::policy<
    policies::domain_error<policies::ignore_error>, policies::pole_error<policies::ignore_error>,
    policies::overflow_error<policies::ignore_error>, policies::evaluation_error<policies::ignore_error>>;

using Normal = boost::math::normal_distribution<double, Quiet>;
using Student = boost::math::students_t_distribution<double, Quiet>;
// Without the detour through long double, for what is asked thousands of times under an integral.
using FastStudent =
    boost::math::students_t_distribution<double,
                                         policies::normalise<Quiet, policies::promote_double<false>>::type>;
using Beta = boost::math::beta_distribution<double, Quiet>;
using Gamma = boost::math::gamma_distribution<double, Quiet>;
using FisherF = boost::math::fisher_f_distribution<double, Quiet>;

// Boost's tail probabilities lose their digits among the subnormal doubles.
double WithoutSubnormal(double probability) {
  return probability < std::numeric_limits<double>::min() ? 0 : probability;
}

}  // namespace

NormalDistribution::NormalDistribution(double mean, double variance) : fMean(mean), fVariance(variance) {}

double NormalDistribution::LowerQuantile(double tail) const {
  return fMean + std::sqrt(fVariance) * quantile(Normal(), tail);
}

double NormalDistribution::UpperQuantile(double tail) const {
  return fMean - std::sqrt(fVariance) * quantile(Normal(), tail);
}

double NormalDistribution::Density(double x) const {
  return pdf(Normal(fMean, std::sqrt(fVariance)), x);
}

StudentDistribution::StudentDistribution(double df, double location, double squaredScale)
    : fDF(df),
      fLocation(location),
      fScale(std::sqrt(squaredScale)),
      fLogPeak(-LogGammaHalfStep(df / 2) - 0.5 * std::log(std::numbers::pi * df * squaredScale)) {}

std::optional<double> StudentDistribution::Mean() const {
  if (fDF > 1) return fLocation;
  return {};
}

std::optional<double> StudentDistribution::Variance() const {
  if (fDF > 2) return fScale * fScale * (fDF / (fDF - 2));
  return {};
}

double StudentDistribution::LowerQuantile(double tail) const {
  return fLocation + fScale * quantile(Student(fDF), tail);
}

double StudentDistribution::UpperQuantile(double tail) const {
  return fLocation - fScale * quantile(Student(fDF), tail);
}

double StudentDistribution::Density(double x) const {
  return std::exp(LogDensity(x));
}

double StudentDistribution::LogDensity(double x) const {
  const double z = (x - fLocation) / fScale;
  return fLogPeak - (fDF + 1) / 2 * std::log1p(z * z / fDF);
}

double StudentDistribution::UpperProbability(double x) const {
  return cdf(complement(FastStudent(fDF), (x - fLocation) / fScale));
}

BetaDistribution::BetaDistribution(double a, double b) : fA(a), fB(b) {}

std::optional<double> BetaDistribution::Mode() const {
  if (fA > 1 && fB > 1) return (fA - 1) / (fA - 1 + (fB - 1));
  if (fA == 1 && fB == 1) return {};
  if (fA <= 1 && fB >= 1) return 0.0;
  if (fB <= 1 && fA >= 1) return 1.0;
  return {};
}

std::optional<double> BetaDistribution::Variance() const {
  const double n = fA + fB;
  return fA / n * (fB / n) / (n + 1);
}

double BetaDistribution::LowerQuantile(double tail) const {
  return quantile(Beta(fA, fB), tail);
}

double BetaDistribution::UpperQuantile(double tail) const {
  return quantile(complement(Beta(fA, fB), tail));
}

double BetaDistribution::Density(double x) const {
  return pdf(Beta(fA, fB), x);
}

GammaDistribution::GammaDistribution(double shape, double rate) : fShape(shape), fRate(rate) {}

std::optional<double> GammaDistribution::Mode() const {
  return std::max(0.0, fShape - 1) / fRate;
}

double GammaDistribution::LowerQuantile(double tail) const {
  return quantile(Gamma(fShape, 1), tail) / fRate;
}

double GammaDistribution::UpperQuantile(double tail) const {
  return quantile(complement(Gamma(fShape, 1), tail)) / fRate;
}

double GammaDistribution::Density(double x) const {
  return fRate * pdf(Gamma(fShape, 1), fRate * x);
}

InverseGammaDistribution::InverseGammaDistribution(double shape, double scale)
    : fShape(shape), fScale(scale) {}

std::optional<double> InverseGammaDistribution::Mean() const {
  if (fShape > 1) return fScale / (fShape - 1);
  return {};
}

std::optional<double> InverseGammaDistribution::Variance() const {
  if (!(fShape > 2)) return {};
  const double mean = fScale / (fShape - 1);
  return mean * (mean / (fShape - 2));
}

double InverseGammaDistribution::LowerQuantile(double tail) const {
  return fScale / quantile(complement(Gamma(fShape, 1), tail));
}

double InverseGammaDistribution::UpperQuantile(double tail) const {
  return fScale / quantile(Gamma(fShape, 1), tail);
}

double InverseGammaDistribution::Density(double x) const {
  if (!(x > 0)) return 0;
  // scale/x has the gamma distribution with this shape and rate 1.
  const double y = fScale / x;
  return pdf(Gamma(fShape, 1), y) * (y / x);
}

double PointDistribution::Density(double x) const {
  return x == fPoint ? std::numeric_limits<double>::infinity() : 0;
}

double FSignificance(double statistic, double df1, double df2) {
  return WithoutSubnormal(cdf(complement(FisherF(df1, df2), statistic)));
}

double TwoSidedSignificance(double statistic, double df) {
  const double x = -std::abs(statistic);
  return WithoutSubnormal(2 * (std::isinf(df) ? cdf(Normal(), x) : cdf(Student(df), x)));
}

}  // namespace BayesComponent
