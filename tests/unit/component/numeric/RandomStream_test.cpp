// Random numbers: their distributions by moments, their independence of one another.
#include "component/numeric/RandomStream.h"

#include <boost/math/distributions/normal.hpp>
#include <boost/math/special_functions/digamma.hpp>
#include <boost/math/special_functions/trigamma.hpp>
#include <cmath>
#include <functional>
#include <limits>

#include "component/numeric/Moments.h"
#include "component/numeric/SliceSampling.h"
#include "gtest/gtest.h"

namespace {

using BayesComponent::Moments;
using BayesComponent::RandomStream;

constexpr int kDraws = 100000;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Moments MomentsOf(const std::function<double()>& draw) {
  Moments moments;
  for (int i = 0; i < kDraws; ++i) moments.Add(draw(), 1);
  return moments;
}

// Within five standard errors; that of a variance is taken for a kurtosis up to 9.
void ExpectMoments(const Moments& moments, double mean, double variance) {
  EXPECT_NEAR(moments.Mean(), mean, 5 * std::sqrt(variance / kDraws));
  EXPECT_NEAR(moments.SumOfSquares() / kDraws, variance, 5 * variance * std::sqrt(8.0 / kDraws));
}

TEST(RandomStream, DrawsTruncatedNormals) {
  const std::pair<double, double> bounds[] = {{-kInfinity, kInfinity},
                                              {-1, kInfinity},
                                              {1.5, kInfinity},
                                              {-kInfinity, -6},
                                              {-0.2, 0.3},
                                              {0.5, 0.7},
                                              {-3, 2},
                                              {4, 4.1},
                                              {-0.1, 2.5},
                                              {1, 3},
                                              {8, 20}};
  const boost::math::normal normal;
  const auto density = [&](double x) { return std::isinf(x) ? 0 : pdf(normal, x); };
  const auto moment = [&](double x) { return std::isinf(x) ? 0 : x * pdf(normal, x); };
  for (const auto& [a, b] : bounds) {
    SCOPED_TRACE(testing::Message() << a << " to " << b);
    RandomStream random(17);
    const double lower = a, upper = b;
    const Moments moments = MomentsOf([&] {
      const double x = random.NormalBetween(lower, upper);
      EXPECT_TRUE(x >= lower && x <= upper);
      return x;
    });
    // Tails on the side on which they keep their digits.
    const double mass = a > 0 ? cdf(complement(normal, a)) - (std::isinf(b) ? 0 : cdf(complement(normal, b)))
                              : (std::isinf(b) ? 1 : cdf(normal, b)) - (std::isinf(a) ? 0 : cdf(normal, a));
    const double mean = (density(a) - density(b)) / mass;
    ExpectMoments(moments, mean, 1 + (moment(a) - moment(b)) / mass - mean * mean);
  }
}

TEST(RandomStream, DrawsLogarithmsOfGammas) {
  for (const double shape : {1e-3, 0.3, 1.0, 2.5, 40.0, 1e9}) {
    SCOPED_TRACE(shape);
    RandomStream random(3);
    ExpectMoments(MomentsOf([&] { return random.LogGamma(shape); }), boost::math::digamma(shape),
                  boost::math::trigamma(shape));
  }
}

TEST(RandomStream, SliceSamplingKeepsADistribution) {
  // A gamma distribution's logarithm; the chain's draws are nearly independent.
  RandomStream random(9);
  double x = 0;
  const auto lnF = [](double y) { return 3 * y - std::exp(y); };
  const Moments moments = MomentsOf([&] { return x = BayesComponent::SliceSample(lnF, x, 2, random); });
  EXPECT_NEAR(moments.Mean(), boost::math::digamma(3.0), 0.02);
  EXPECT_NEAR(moments.SumOfSquares() / kDraws, boost::math::trigamma(3.0), 0.02);
}

TEST(RandomStream, TasksDrawApart) {
  RandomStream first(4, 0), again(4, 0), second(4, 1), otherSeed(5, 0);
  const double draw = first.Uniform();
  EXPECT_EQ(draw, again.Uniform());
  EXPECT_NE(draw, second.Uniform());
  EXPECT_NE(draw, otherSeed.Uniform());
}

}  // namespace
