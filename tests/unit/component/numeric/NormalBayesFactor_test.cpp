// Beside the reference cases: identities between the functions, the Monte Carlo form, the corners.
#include "component/numeric/NormalBayesFactor.h"

#include <cmath>
#include <limits>
#include <vector>

#include "gtest/gtest.h"

namespace {

using namespace BayesComponent;

const GaussLobatto kQuadrature(1e-6, 2000);
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NormalBayesFactor, IsFiniteConvergedAndFallsWithTheStatistic) {
  for (const double n : {2.0, 3.0, 10.0, 1e3, 1e6, 1e9}) {
    for (const double scale : {1e-3, 1.0, 1e3}) {
      double last = kInfinity;
      for (const double t : {0.0, 1e-8, 0.5, 2.0, 30.0, 1e3}) {
        for (const double df : {n - 1, kInfinity}) {
          const auto result = LogBF01Cauchy({t, n, df}, scale, kQuadrature);
          EXPECT_TRUE(std::isfinite(result.fLogValue) && result.fConverged) << n << ' ' << scale << ' ' << t;
        }
        const double lnBF = LogBF01Cauchy({-t, n, n - 1}, scale, kQuadrature).fLogValue;
        EXPECT_LE(lnBF, last) << n << ' ' << scale << ' ' << t;
        last = lnBF;
      }
    }
  }
}

// A normal effect with mean 0 is the fixed-g alternative, reached there without the noncentral t.
TEST(NormalBayesFactor, NormalEffectAtZeroIsTheFixedG) {
  for (const double df : {1.0, 1.6, 8.0, 1e5, 1e9, kInfinity}) {
    for (const double t : {0.0, -2.5, 1e3}) {
      for (const double g : {1e-9, 0.3, 1e3}) {
        const MeanTest test{t, 12.5, df};
        const double expected = -LogBF10GivenG(test, g);
        const double lnBF = LogBF01NormalEffect(test, 0, g, kQuadrature).fLogValue;
        EXPECT_NEAR(lnBF, expected, 1e-10 * std::max(1.0, std::abs(expected))) << df << ' ' << t << ' ' << g;
      }
    }
  }
}

// With ever more degrees of freedom the t forms reach the normal ones.
TEST(NormalBayesFactor, TendsToTheKnownVariance) {
  const double df = 1e9;
  for (const double t : {0.3, -2.0, 5.0}) {
    const MeanTest test{t, 40, df};
    const MeanTest z{t, 40, kInfinity};
    EXPECT_NEAR(LogBF10GivenG(test, 0.7), LogBF10GivenG(z, 0.7), 1e-6);
    EXPECT_NEAR(LogBF01Cauchy(test, 1, kQuadrature).fLogValue, LogBF01Cauchy(z, 1, kQuadrature).fLogValue,
                1e-6);
    EXPECT_NEAR(LogBF01NormalEffect(test, 0.4, 0.2, kQuadrature).fLogValue,
                LogBF01NormalEffect(z, 0.4, 0.2, kQuadrature).fLogValue, 1e-6);
  }
}

TEST(NormalBayesFactor, RefusesPearsonSixWithoutEnoughDegreesOfFreedom) {
  EXPECT_TRUE(std::isnan(LogBF01PearsonSix({2, 5, 1}, -0.5)));
  EXPECT_TRUE(std::isnan(LogBF01PearsonSix({2, 5, kInfinity}, -0.5)));
  EXPECT_TRUE(std::isfinite(LogBF01PearsonSix({2, 5, 1.01}, -0.5)));
}

// The mean over 40 seeds of BF10 by 10,000 draws lies within 4 of its standard errors of the integral.
TEST(NormalBayesFactor, MonteCarloAgreesWithTheIntegral) {
  for (const MeanTest& test : {MeanTest{0.4, 20, 19}, MeanTest{2.8, 10, 9}, MeanTest{-3, 200, kInfinity}}) {
    constexpr int kSeeds = 40;
    double sum = 0;
    double sumOfSquares = 0;
    const double exact = LogBF01Cauchy(test, 0.8, kQuadrature).fLogValue;
    for (int seed = 1; seed <= kSeeds; ++seed) {
      RandomStream random(static_cast<std::uint64_t>(seed));
      const double ratio = std::exp(exact - LogBF01Cauchy(test, 0.8, 10000, random));
      sum += ratio;
      sumOfSquares += ratio * ratio;
    }
    const double mean = sum / kSeeds;
    const double stdError = std::sqrt((sumOfSquares / kSeeds - mean * mean) / (kSeeds - 1));
    EXPECT_LT(stdError, 0.005);
    EXPECT_NEAR(mean, 1, 4 * stdError) << test.fT;
  }
}

TEST(NormalBayesFactor, MonteCarloRepeatsForASeedToTheLastBit) {
  const MeanTest test{2.5, 15, 14};
  const auto draw = [&test](std::uint64_t seed) {
    RandomStream random(seed);
    return LogBF01Cauchy(test, 1, 1000, random);
  };
  EXPECT_EQ(draw(20240229), draw(20240229));
  EXPECT_NE(draw(20240229), draw(20240230));
}

}  // namespace
