#include "component/numeric/Distribution.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "component/numeric/StudentDifference.h"
#include "gtest/gtest.h"

namespace {

using namespace BayesComponent;

// The median and its derivative: quantiles on both sides, checked against the density by a small step.
TEST(Distribution, QuantilesFollowTheDensity) {
  std::vector<std::unique_ptr<Distribution>> distributions;
  distributions.push_back(std::make_unique<NormalDistribution>(3, 4));
  distributions.push_back(std::make_unique<StudentDistribution>(2.5, -1, 9));
  distributions.push_back(std::make_unique<StudentDistribution>(1e9, 1, 0.25));
  distributions.push_back(std::make_unique<BetaDistribution>(0.5, 7));
  distributions.push_back(std::make_unique<BetaDistribution>(5e8, 4e8));
  distributions.push_back(std::make_unique<GammaDistribution>(0.5, 3));
  distributions.push_back(std::make_unique<GammaDistribution>(3e9, 1e9));
  distributions.push_back(std::make_unique<InverseGammaDistribution>(0.5, 3));
  distributions.push_back(std::make_unique<InverseGammaDistribution>(4e8, 1e9));
  distributions.push_back(
      std::make_unique<StudentDifference>(StudentDistribution(4, 1, 2), StudentDistribution(2, 0, 0.5)));
  for (std::size_t i = 0; i < distributions.size(); ++i) {
    const Distribution& x = *distributions[i];
    for (const double tail : {0.025, 0.2, 0.5}) {
      const double step = 1e-3 * tail;
      const double width = x.LowerQuantile(tail + step) - x.LowerQuantile(tail - step);
      EXPECT_NEAR(x.Density(x.LowerQuantile(tail)) * width / (2 * step), 1, 1e-5) << i << ' ' << tail;
      EXPECT_NEAR(x.UpperQuantile(1 - tail) / x.LowerQuantile(tail), 1, 1e-7) << i << ' ' << tail;
    }
  }
}

struct QuantileRow {
  std::shared_ptr<Distribution> fDistribution;
  double fLower, fUpper;
};

// Shapes at which a search for the quantile would not end or would lose digits; values of an independent
// program.
TEST(Distribution, KeepsItsDigitsWithLargeShapes) {
  const QuantileRow rows[] = {
      {std::make_shared<BetaDistribution>(3, 2e12), 3.0933606144759748e-13, 3.612343833853647e-12},
      {std::make_shared<BetaDistribution>(9e6, 2e12), 4.4970402975575716e-06, 4.5029201497648232e-06},
      {std::make_shared<BetaDistribution>(1e10, 2e12), 0.0049750271107962332, 0.0049752216463557356},
      {std::make_shared<BetaDistribution>(2e12, 1e10), 0.99502477835364422, 0.99502497288920377},
      {std::make_shared<BetaDistribution>(2e12, 3), 0.99999999999638767, 0.99999999999969069},
      {std::make_shared<BetaDistribution>(1e308, 1e308), 0.5, 0.5},
      {std::make_shared<GammaDistribution>(1.01e8, 1), 100980303.55290355, 101019698.34140234},
  };
  for (const QuantileRow& row : rows) {
    EXPECT_NEAR(row.fDistribution->LowerQuantile(0.025) / row.fLower, 1, 1e-14) << row.fLower;
    EXPECT_NEAR(row.fDistribution->UpperQuantile(0.025) / row.fUpper, 1, 1e-14) << row.fUpper;
  }
}

TEST(Distribution, DensitiesAtTheEdgeOfTheirRange) {
  const double infinite = std::numeric_limits<double>::infinity();
  for (const auto& [shape, atZero] : {std::pair(0.5, infinite), {1.0, 3.0}, {1.5, 0.0}}) {
    EXPECT_EQ(GammaDistribution(shape, 3).Density(0), atZero) << shape;
    EXPECT_EQ(BetaDistribution(shape, 3).Density(0), atZero) << shape;
    EXPECT_EQ(BetaDistribution(3, shape).Density(1), atZero) << shape;
    EXPECT_EQ(InverseGammaDistribution(shape, 3).Density(0), 0) << shape;
  }
}

struct MomentRow {
  std::shared_ptr<Distribution> fDistribution;
  std::optional<double> fMode, fMean, fVariance;
};

TEST(Distribution, HasNoMomentsThatDontExist) {
  const StudentDistribution one(1, 3, 4), two(2, 3, 4), five(5, 3, 4);
  const MomentRow rows[] = {
      {std::make_shared<StudentDistribution>(one), 3, {}, {}},
      {std::make_shared<StudentDistribution>(two), 3, 3, {}},
      {std::make_shared<StudentDistribution>(five), 3, 3, 20.0 / 3},
      {std::make_shared<StudentDifference>(one, five), 0, {}, {}},
      {std::make_shared<StudentDifference>(five, two), 0, 0, {}},
      {std::make_shared<StudentDifference>(five, five), 0, 0, 40.0 / 3},
      {std::make_shared<BetaDistribution>(3, 2), 2.0 / 3, 0.6, 0.04},
      {std::make_shared<BetaDistribution>(1, 2), 0, 1.0 / 3, 1.0 / 18},
      {std::make_shared<BetaDistribution>(2, 1), 1, 2.0 / 3, 1.0 / 18},
      {std::make_shared<BetaDistribution>(1, 1), {}, 0.5, 1.0 / 12},
      {std::make_shared<BetaDistribution>(0.5, 0.5), {}, 0.5, 0.125},
      {std::make_shared<GammaDistribution>(3, 2), 1, 1.5, 0.75},
      {std::make_shared<GammaDistribution>(0.5, 2), 0, 0.25, 0.125},
      {std::make_shared<InverseGammaDistribution>(1, 2), 1, {}, {}},
      {std::make_shared<InverseGammaDistribution>(2, 3), 1, 3, {}},
      {std::make_shared<InverseGammaDistribution>(3, 2), 0.5, 1, 1},
  };
  for (const MomentRow& row : rows) {
    const auto i = &row - rows;
    EXPECT_EQ(row.fDistribution->Mode(), row.fMode) << i;
    EXPECT_EQ(row.fDistribution->Mean(), row.fMean) << i;
    ASSERT_EQ(row.fDistribution->Variance().has_value(), row.fVariance.has_value()) << i;
    if (!row.fVariance) continue;
    EXPECT_NEAR(*row.fDistribution->Variance(), *row.fVariance, 1e-14 * *row.fVariance) << i;
  }
}

// Of 1 and 2 degrees of freedom quantiles have closed forms. Whatever was asked for before, in whichever
// order, an answer is that of its own question.
TEST(StudentDistribution, QuantilesMeetTheirClosedForms) {
  const double tails[] = {0.0005, 0.005, 0.025, 0.05, 0.2, 0.4};
  for (int round = 0; round < 3; ++round) {
    for (const double tail : tails) {
      for (int repeats = 0; repeats <= round; ++repeats) {
        const double cauchy = -1 / std::tan(std::numbers::pi * tail);
        EXPECT_NEAR(StudentDistribution(1, 0, 1).LowerQuantile(tail), cauchy, -1e-13 * cauchy) << tail;
        const double two = (2 * tail - 1) / std::sqrt(2 * tail * (1 - tail));
        EXPECT_NEAR(StudentDistribution(2, 0, 1).LowerQuantile(tail), two, -1e-13 * two) << tail;
      }
    }
  }
}

// Two Cauchy variables have a Cauchy difference, their scales added; and a negligible one drops out.
TEST(StudentDifference, MeetsItsClosedForms) {
  const StudentDistribution cauchy(1, 2, 9);
  for (const double scale : {1e-8, 0.1, 3.0, 50.0}) {
    const StudentDifference difference(cauchy, StudentDistribution(1, 1, scale * scale));
    const StudentDistribution expected(1, 1, (3 + scale) * (3 + scale));
    for (const double tail : {1e-6, 0.0005, 0.025, 0.4}) {
      const double distance = expected.UpperQuantile(tail) - 1;
      EXPECT_NEAR(difference.UpperQuantile(tail) - 1, distance, 1e-9 * distance) << scale << ' ' << tail;
      EXPECT_NEAR(1 - difference.LowerQuantile(tail), distance, 1e-9 * distance) << scale << ' ' << tail;
      const double x = expected.UpperQuantile(tail);
      EXPECT_NEAR(difference.Density(x) / expected.Density(x), 1, 1e-9) << scale << ' ' << tail;
    }
  }
  const StudentDistribution narrow(1e9, 0, 1e-30);
  EXPECT_NEAR(StudentDifference(narrow, cauchy).UpperQuantile(0.025), cauchy.UpperQuantile(0.025) - 4, 1e-8);
}

TEST(StudentDifference, AddsVariancesOfManyDegreesOfFreedom) {
  const StudentDifference difference(StudentDistribution(1e9, 1, 9), StudentDistribution(1e9, 0, 16));
  EXPECT_NEAR(difference.UpperQuantile(0.025), NormalDistribution(1, 25).UpperQuantile(0.025), 1e-6);
}

TEST(Distribution, SignificanceUnderflowsToZero) {
  EXPECT_EQ(TwoSidedSignificance(1000, 1e9), 0);
  EXPECT_EQ(TwoSidedSignificance(-1000, std::numeric_limits<double>::infinity()), 0);
  EXPECT_NEAR(TwoSidedSignificance(-1, 1), 0.5, 1e-15);
  EXPECT_EQ(TwoSidedSignificance(0, 5), 1);
  EXPECT_EQ(FSignificance(1e6, 1, 1e9), 0);
}

TEST(TwoSidedSignificance, MeetsItsClosedForms) {
  for (const double t : {1e-3, 0.7, 12.0, 1e6}) {
    const double hypotenuse = std::sqrt(t * t + 2);
    const double ofTwo = 2 / (hypotenuse * (hypotenuse + t));
    EXPECT_NEAR(TwoSidedSignificance(t, 2), ofTwo, 2e-14 * ofTwo) << t;
    const double ofOne = std::atan(1 / t) * 2 / std::numbers::pi;
    EXPECT_NEAR(TwoSidedSignificance(-t, 1), ofOne, 2e-14 * ofOne) << t;
    const double ofNormal = std::erfc(t / std::numbers::sqrt2);
    EXPECT_NEAR(TwoSidedSignificance(t, 1e13), ofNormal, 1e-9 * ofNormal) << t;
  }
}

TEST(FSignificance, MeetsItsClosedForms) {
  EXPECT_NEAR(FSignificance(3, 2, 4), 0.16, 1e-15);
  EXPECT_NEAR(FSignificance(6.25, 1, 7), TwoSidedSignificance(2.5, 7), 1e-15);
  EXPECT_EQ(FSignificance(0, 3, 7), 1);
}

}  // namespace
