// Moments of all pairs beside those of each pair by itself.
#include "component/numeric/PairMoments.h"

#include <cmath>
#include <limits>
#include <vector>

#include "component/numeric/RandomStream.h"
#include "gtest/gtest.h"

namespace {

using BayesComponent::CoMoments;
using BayesComponent::PairMoments;

struct Case {
  std::vector<double> fvValues;
  double fWeight;
};

// Four variables that share a part: one far from 0, one that lacks values from case 300 to 400.
std::vector<Case> SomeCases(std::size_t count) {
  BayesComponent::RandomStream random(9);
  std::vector<Case> cases;
  for (std::size_t i = 0; i < count; ++i) {
    const double shared = random.Normal();
    const bool lacks = i >= 300 && i < 400 && i % 3 == 0;
    cases.push_back({{shared + random.Normal(), 1e6 + shared,
                      lacks ? std::numeric_limits<double>::quiet_NaN() : random.Normal() - shared, 0.1},
                     1.0 + static_cast<double>(i % 2)});
  }
  return cases;
}

const std::vector<std::pair<int, int>> kPairs = {{0, 1}, {0, 2}, {1, 2}, {0, 3}, {2, 3}, {2, 0}};

CoMoments OnePairAtATime(const std::vector<Case>& cases, const std::pair<int, int>& pair) {
  CoMoments moments;
  for (const Case& c : cases) {
    const double x = c.fvValues[static_cast<std::size_t>(pair.first)];
    const double y = c.fvValues[static_cast<std::size_t>(pair.second)];
    if (!std::isnan(x) && !std::isnan(y)) moments.Add(x, y, c.fWeight);
  }
  return moments;
}

TEST(PairMoments, AreThoseOfEachPairWhereverBlocksEnd) {
  for (const std::size_t count : {1u, 255u, 256u, 257u, 1000u}) {
    const std::vector<Case> cases = SomeCases(count);
    PairMoments all(4, kPairs);
    for (const Case& c : cases) all.Add(c.fvValues, c.fWeight);
    all.Close();
    for (std::size_t i = 0; i < kPairs.size(); ++i) {
      const CoMoments expected = OnePairAtATime(cases, kPairs[i]);
      EXPECT_EQ(all.Of(i).Count(), expected.Count());
      EXPECT_EQ(all.Of(i).HasConstant(), expected.HasConstant()) << count << " cases, pair " << i;
      if (expected.HasConstant()) continue;
      EXPECT_NEAR(all.Of(i).Correlation(), expected.Correlation(), 1e-13) << count << " cases, pair " << i;
    }
  }
}

// A value that lies far out, in a case without the other value, takes no digits from the pair.
TEST(PairMoments, ForgetCasesOutsideThePair) {
  std::vector<Case> cases = SomeCases(200);
  cases[7].fvValues = {1e12, 0, std::numeric_limits<double>::quiet_NaN(), 0.1};
  PairMoments all(4, kPairs);
  for (const Case& c : cases) all.Add(c.fvValues, c.fWeight);
  all.Close();
  EXPECT_NEAR(all.Of(1).Correlation(), OnePairAtATime(cases, kPairs[1]).Correlation(), 1e-14);
}

TEST(PairMoments, OfNoCasesAreEmpty) {
  PairMoments none(2, {{0, 1}});
  none.Close();
  EXPECT_EQ(none.Of(0).Count(), 0);
}

}  // namespace
