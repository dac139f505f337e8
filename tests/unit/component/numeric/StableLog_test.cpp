// Differences of logarithms: small ones, and arguments at the end of the range of numbers.
#include "component/numeric/StableLog.h"

#include <cmath>
#include <limits>

#include "gtest/gtest.h"

namespace BayesComponent {
namespace {

struct DevianceCase {
  double x;
  double m;
  double expected;  // x ln(x/m) + m - x
};

class DevianceTest : public ::testing::TestWithParam<DevianceCase> {};

TEST_P(DevianceTest, HoldsOnBothSidesOfTheSeriesAndAtTheEndOfTheRange) {
  const DevianceCase& c = GetParam();
  EXPECT_NEAR(Deviance(c.x, c.m) / c.expected, 1, 1e-13) << c.x << " " << c.m;
}

INSTANTIATE_TEST_SUITE_P(Values, DevianceTest,
                         ::testing::Values(DevianceCase{3, 7, 1.4581064188384892},
                                           DevianceCase{1000, 1000.001, 4.9999966664326983e-10},
                                           DevianceCase{1.7e308, 8.5e307, 3.2835020695190701e307},
                                           DevianceCase{1.7e308, 1.6e308, 3.0618570879392301e305}));

TEST(StableLogTest, DevianceEndsWithoutFiniteArguments) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(std::isnan(Deviance(kInfinity, kInfinity)));
  EXPECT_EQ(Deviance(5e-324, 5e-324), 0);
}

}  // namespace
}  // namespace BayesComponent
