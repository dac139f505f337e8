// Round numbers on axes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "host/charts/ChartTicks.h"

namespace {

using BayesHost::Interval;
using BayesHost::Ticks;
using BayesHost::Widen;
using testing::ElementsAreArray;

struct TickCase {
  Interval interval;
  int count;
  bool isRound;
  std::vector<std::string> labels;
};

TEST(ChartTicks, AreRoundNumbersWithEqualDecimals) {
  const TickCase cases[] = {
      {{0, 10}, 5, false, {"0", "2", "4", "6", "8", "10"}},
      {{0.1, 9.7}, 5, false, {"2", "4", "6", "8"}},
      {{0.1, 9.7}, 5, true, {"0", "2", "4", "6", "8", "10"}},
      {{-0.31, 0.34}, 6, false, {"-0.3", "-0.2", "-0.1", "0.0", "0.1", "0.2", "0.3"}},
      {{-6.3, 0}, 4, true, {"-8", "-6", "-4", "-2", "0"}},
      {{0, 1000000}, 4, false, {"0", "200000", "400000", "600000", "800000", "1000000"}},
      {{0, 3.2e12}, 3, false, {"0", "1e12", "2e12", "3e12"}},
      {{0, 2.4e-9}, 5, false, {"0", "5e-10", "1.0e-9", "1.5e-9", "2.0e-9"}},
      {{1e9, 1e9 + 1}, 2, false, {"1000000000.0", "1000000000.5", "1000000001.0"}},
  };
  for (const TickCase& given : cases) {
    const Ticks ticks(given.interval, given.count, given.isRound);
    EXPECT_THAT(ticks.GetLabels(), ElementsAreArray(given.labels));
  }
}

TEST(ChartTicks, RoundIntervalsEndAtTheFirstAndLastTick) {
  const Ticks ticks({0.13, 0.68}, 5, true);
  EXPECT_EQ(ticks.GetInterval().fLower, 0.1);
  EXPECT_EQ(ticks.GetInterval().fUpper, 0.7);
  EXPECT_EQ(ticks.GetValues().front(), 0.1);
  EXPECT_EQ(ticks.GetValues().back(), 0.7);
  EXPECT_EQ(ticks.GetLongestLabel(), 3);
}

// Every scale that doubles have, with offsets: never nothing, never a number that is none.
TEST(ChartTicks, HoldAtEveryScale) {
  for (int power = -280; power <= 300; power += 20)
    for (double lower : {-1.0, 0.0, 0.37, 1e6})
      for (double width : {1.0, 1.9, 7.3}) {
        const double scale = std::pow(10.0, power);
        const Interval interval = Widen(lower * scale, (lower + width) * scale);
        const Ticks ticks(interval, 5, true);
        ASSERT_GE(ticks.GetValues().size(), 2U) << power;
        ASSERT_LE(ticks.GetValues().size(), 12U) << power;
        for (double value : ticks.GetValues()) ASSERT_TRUE(std::isfinite(value)) << power;
        ASSERT_LE(ticks.GetInterval().fLower, interval.fLower + 1e-8 * scale);
        ASSERT_GE(ticks.GetInterval().fUpper, interval.fUpper - 1e-8 * scale);
        ASSERT_LE(ticks.GetLongestLabel(), 16);
      }
}

TEST(ChartTicks, ConstantsGetRoomAroundThem) {
  for (double value : {0.0, 1.0, -250.0, 1e-300, 1e300}) {
    const Interval interval = Widen(value, value);
    EXPECT_LT(interval.fLower, value);
    EXPECT_GT(interval.fUpper, value);
  }
  EXPECT_EQ(Widen(1, 2).fLower, 1);
  EXPECT_EQ(Widen(1, 2).fUpper, 2);
}

}  // namespace
