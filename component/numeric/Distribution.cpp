#include "component/numeric/Distribution.h"

#include <algorithm>
#include <array>
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

// Above these shapes the library's searches for a quantile lose digits or do not end, while the expansions
// below are exact to double precision.
constexpr double kLargestGammaShape = 1e8;
constexpr double kLargestBetaShape = 1e12;
constexpr double kNearlyNormalShape = 1e7;

// The quantile of a nearly normal distribution at the standard normal quantile `z`, from its mean, standard
// deviation, skewness and excess kurtosis. Cornish and Fisher (1938), to the second order.
double CornishFisher(double z, double mean, double deviation, double skewness, double kurtosis) {
  const double z2 = z * z;
  const double shift =
      skewness * (z2 - 1) / 6 + kurtosis * z * (z2 - 3) / 24 - skewness * skewness * z * (2 * z2 - 5) / 36;
  return mean + deviation * (z + shift);
}

double NearlyNormalGamma(double shape, double z) {
  return CornishFisher(z, shape, std::sqrt(shape), 2 / std::sqrt(shape), 6 / shape);
}

// An eighth of the time without long doubles, which in this range change the last digit or two only.
double ComputeStudentLower(double df, double tail) {
  const bool isOrdinary = df >= 0.5 && df <= 1e10 && tail >= 1e-6 && tail <= 0.25;
  return isOrdinary ? quantile(FastStudent(df), tail) : quantile(Student(df), tail);
}

// The variables of a table, and the groups of a balanced design, share their degrees of freedom: the last few
// answers are kept.
double StandardStudentLower(double df, double tail) {
  struct Answer {
    double fDF = 0;
    double fTail = 0;
    double fQuantile = 0;
  };
  thread_local std::array<Answer, 4> answers;
  thread_local std::size_t oldest = 0;
  const auto known = std::find_if(answers.begin(), answers.end(), [&](const Answer& answer) {
    return answer.fDF == df && answer.fTail == tail;
  });
  if (known != answers.end()) return known->fQuantile;
  const double computed = ComputeStudentLower(df, tail);
  answers[oldest] = {df, tail, computed};
  oldest = (oldest + 1) % answers.size();
  return computed;
}

// A sixth of the time, for twice the rounding error at most.
double StandardStudentCdf(double df, double x) {
  const bool isOrdinary = df >= 2 && df <= 1e10;
  return isOrdinary ? cdf(FastStudent(df), x) : cdf(Student(df), x);
}

double StandardGammaLower(double shape, double tail) {
  if (shape > kLargestGammaShape) return NearlyNormalGamma(shape, quantile(Normal(), tail));
  return quantile(Gamma(shape, 1), tail);
}

double StandardGammaUpper(double shape, double tail) {
  if (shape > kLargestGammaShape) return NearlyNormalGamma(shape, -quantile(Normal(), tail));
  return quantile(complement(Gamma(shape, 1), tail));
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
  return fLocation + fScale * StandardStudentLower(fDF, tail);
}

double StudentDistribution::UpperQuantile(double tail) const {
  return fLocation - fScale * StandardStudentLower(fDF, tail);
}

Interval StudentDistribution::CentralInterval(double tail) const {
  const double reach = fScale * StandardStudentLower(fDF, tail);
  return {fLocation + reach, fLocation - reach};
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
  return *Mean() / (1 + fA / fB) / (fA + fB + 1);
}

double BetaDistribution::LowerQuantile(double tail) const {
  if (std::max(fA, fB) <= kLargestBetaShape) return quantile(Beta(fA, fB), tail);
  if (std::min(fA, fB) > kNearlyNormalShape) return NearlyNormalQuantile(quantile(Normal(), tail));
  return LimitQuantile(tail, fA > fB);
}

double BetaDistribution::UpperQuantile(double tail) const {
  if (std::max(fA, fB) <= kLargestBetaShape) return quantile(complement(Beta(fA, fB), tail));
  if (std::min(fA, fB) > kNearlyNormalShape) return NearlyNormalQuantile(-quantile(Normal(), tail));
  return LimitQuantile(tail, fA < fB);
}

double BetaDistribution::NearlyNormalQuantile(double z) const {
  const double n = fA + fB;
  const double p = *Mean();
  const double q = 1 / (1 + fA / fB);
  const double oddness = (q - p) / std::sqrt(p * q);
  return CornishFisher(z, p, std::sqrt(*Variance()), 2 * oddness / std::sqrt(n),
                       6 * (oddness * oddness - 1) / n);
}

// With one shape large, from a gamma variable of the small shape: Wise (1950); the relative error is of the
// order of the squared ratio of the shapes.
double BetaDistribution::LimitQuantile(double tail, bool upper) const {
  const double small = std::min(fA, fB);
  const double g = upper ? StandardGammaUpper(small, tail) : StandardGammaLower(small, tail);
  const double x = g / (std::max(fA, fB) + (small - 1 + g) / 2);
  return fA < fB ? x : 1 - x;
}

double BetaDistribution::Density(double x) const {
  return pdf(Beta(fA, fB), x);
}

GammaDistribution::GammaDistribution(double shape, double rate) : fShape(shape), fRate(rate) {}

std::optional<double> GammaDistribution::Mode() const {
  return std::max(0.0, fShape - 1) / fRate;
}

double GammaDistribution::LowerQuantile(double tail) const {
  return StandardGammaLower(fShape, tail) / fRate;
}

double GammaDistribution::UpperQuantile(double tail) const {
  return StandardGammaUpper(fShape, tail) / fRate;
}

// The library calls the density at 0 zero whatever the shape.
double GammaDistribution::Density(double x) const {
  if (x == 0 && fShape <= 1) return fShape < 1 ? std::numeric_limits<double>::infinity() : fRate;
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
  return fScale / StandardGammaUpper(fShape, tail);
}

double InverseGammaDistribution::UpperQuantile(double tail) const {
  return fScale / StandardGammaLower(fShape, tail);
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
  return WithoutSubnormal(2 * (std::isinf(df) ? cdf(Normal(), x) : StandardStudentCdf(df, x)));
}

}  // namespace BayesComponent
