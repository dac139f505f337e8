#include "component/numeric/Moments.h"

#include <cmath>
#include <vector>

#include "gtest/gtest.h"

namespace {

using BayesComponent::MomentCollector;
using BayesComponent::Moments;

// Values around an offset, exact in binary, with the mean and the sum of squares of every full period.
constexpr double kPattern[] = {-1.5, 0.25, 2.0, -0.75, 1.0, 0.5, -2.0, 0.5};
constexpr double kSumOfSquares = 12.375;  // about their mean 0

TEST(Moments, KeepsDigitsOfOffsetDataInAnyPartition) {
  for (const double offset : {0.0, 1.0, 1e9, -1e12}) {
    for (const int nParts : {1, 2, 7}) {
      std::vector<Moments> parts(static_cast<std::size_t>(nParts));
      constexpr int kPeriods = 10000;
      for (int i = 0; i < 8 * kPeriods; ++i) {
        parts[static_cast<std::size_t>(i * nParts / (8 * kPeriods))].Add(offset + kPattern[i % 8], 1);
      }
      Moments whole;
      for (const Moments& part : parts) whole.Merge(part);
      EXPECT_EQ(whole.Count(), 8 * kPeriods);
      EXPECT_EQ(whole.Mean(), offset);
      EXPECT_EQ(whole.MeanMinus(offset - 0.5), 0.5) << offset;
      EXPECT_NEAR(whole.SumOfSquares() / kPeriods, kSumOfSquares, 1e-9) << offset << ' ' << nParts;
    }
  }
}

// Blocks that are full, begun and empty, with the values of several cases in between.
TEST(MomentCollector, GivesTheMomentsOfItsValuesOneByOne) {
  for (const double offset : {0.0, 1e9, -1e12}) {
    for (const int count : {1, 7, 8, 255, 256, 257, 1000, 5000}) {
      for (const int heavy : {1, 3, 10000}) {
        MomentCollector collector;
        Moments moments;
        for (int i = 0; i < count; ++i) {
          const double value = offset + kPattern[i * i % 8] * (1 + i % 3);
          const double weight = i % heavy == heavy - 1 ? 2 : 1;
          collector.Add(value, weight);
          moments.Add(value, weight);
        }
        const Moments& total = collector.Total();
        EXPECT_EQ(total.Count(), moments.Count());
        EXPECT_EQ(total.Mean(), moments.Mean()) << offset << ' ' << count << ' ' << heavy;
        EXPECT_NEAR(total.SumOfSquares(), moments.SumOfSquares(), 1e-13 * moments.SumOfSquares())
            << offset << ' ' << count << ' ' << heavy;
        EXPECT_EQ(&collector.Total(), &total) << "asked for again";
        EXPECT_EQ(collector.Total().Count(), moments.Count());
      }
    }
  }
}

TEST(MomentCollector, KeepsTheDigitsThatSingleValuesKeep) {
  MomentCollector constant;
  MomentCollector large;
  MomentCollector stagnant;
  for (int i = 0; i < 1000; ++i) constant.Add(0.1, 1);
  for (int i = 0; i < 1024; ++i) large.Add(i % 4 == 1 ? 1e17 : i % 4 == 3 ? -1e17 : 1.0, 1);
  stagnant.Add(1e9, 1e8);
  for (int i = 0; i < 1000000; ++i) stagnant.Add(1e9 + 1, 1);
  EXPECT_EQ(constant.Total().SumOfSquares(), 0);
  EXPECT_EQ(constant.Total().MeanMinus(0.1), 0);
  EXPECT_EQ(large.Total().Mean(), 0.5);
  EXPECT_NEAR(stagnant.Total().MeanMinus(1e9), 1e6 / 1.01e8, 1e-15);
  EXPECT_EQ(MomentCollector().Total().Count(), 0);
}

TEST(Moments, TakesABillionCasesByWeight) {
  Moments moments;
  for (const double value : kPattern) moments.Add(1e9 + value, 1.25e8);
  EXPECT_EQ(moments.Count(), 1e9);
  EXPECT_EQ(moments.Mean(), 1e9);
  EXPECT_NEAR(moments.SumOfSquares() / 1.25e8, kSumOfSquares, 1e-9);
}

TEST(Moments, DoesntLetAMeanOfABillionStagnate) {
  // Past ten million cases the steps of the mean are below half a unit in the last place of 1e9.
  Moments moments;
  moments.Add(1e9, 1e8);
  for (int i = 0; i < 1000000; ++i) moments.Add(1e9 + 1, 1);
  EXPECT_NEAR(moments.MeanMinus(1e9), 1e6 / 1.01e8, 1e-15);
}

TEST(Moments, GivesConstantsNoSpreadAtAll) {
  Moments left;
  Moments right;
  for (int i = 0; i < 1000; ++i) (i % 3 == 0 ? left : right).Add(0.1, 1 + i % 3);
  left.Merge(right);
  EXPECT_EQ(left.SumOfSquares(), 0);
  EXPECT_EQ(left.MeanMinus(0.1), 0);
}

TEST(Moments, KeepsWhatLargeValuesLeaveBehind) {
  Moments moments;
  for (const double value : {1.0, 1e100, 1.0, -1e100}) moments.Add(value, 1);
  EXPECT_EQ(moments.Mean(), 0.5);
}

}  // namespace
