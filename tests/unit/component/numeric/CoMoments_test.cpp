// Joint moments: weights, parts, offsets.
#include "component/numeric/CoMoments.h"

#include <cmath>
#include <vector>

#include "component/numeric/RandomStream.h"
#include "gtest/gtest.h"

namespace {

using BayesComponent::CoMoments;

struct Pair {
  double fX;
  double fY;
  double fWeight;
};

std::vector<Pair> SomePairs(double offset) {
  BayesComponent::RandomStream random(5);
  std::vector<Pair> pairs;
  for (int i = 0; i < 200; ++i) {
    // Multiples of 2^-10, so that an offset of 1e9 rounds nothing.
    const double x = std::round(1024 * random.Normal()) / 1024;
    const double y = std::round(1024 * (0.4 * x + random.Normal())) / 1024;
    pairs.push_back({offset + x, 2 * offset + y, 1.0 + i % 3});
  }
  return pairs;
}

// Sums in long double about the exact means.
double DirectCorrelation(const std::vector<Pair>& pairs) {
  long double n = 0, x = 0, y = 0, xx = 0, yy = 0, xy = 0;
  for (const Pair& p : pairs) {
    n += p.fWeight;
    x += p.fWeight * static_cast<long double>(p.fX);
    y += p.fWeight * static_cast<long double>(p.fY);
  }
  for (const Pair& p : pairs) {
    const long double dx = p.fX - x / n, dy = p.fY - y / n;
    xx += p.fWeight * dx * dx;
    yy += p.fWeight * dy * dy;
    xy += p.fWeight * dx * dy;
  }
  return static_cast<double>(xy / std::sqrt(xx * yy));
}

CoMoments MomentsOf(const std::vector<Pair>& pairs, std::size_t from, std::size_t to) {
  CoMoments moments;
  for (std::size_t i = from; i < to; ++i) moments.Add(pairs[i].fX, pairs[i].fY, pairs[i].fWeight);
  return moments;
}

TEST(CoMoments, MatchDirectSumsWhateverTheOffset) {
  for (const double offset : {0.0, 1e3, 1e9}) {
    const std::vector<Pair> pairs = SomePairs(offset);
    EXPECT_NEAR(MomentsOf(pairs, 0, pairs.size()).Correlation(), DirectCorrelation(pairs), 1e-14) << offset;
  }
}

TEST(CoMoments, OfPartsMergeIntoThoseOfTheWhole) {
  const std::vector<Pair> pairs = SomePairs(1e9);
  const CoMoments whole = MomentsOf(pairs, 0, pairs.size());
  for (const std::size_t cut : {0u, 1u, 77u, 200u}) {
    CoMoments left = MomentsOf(pairs, 0, cut);
    left.Merge(MomentsOf(pairs, cut, pairs.size()));
    EXPECT_EQ(left.Count(), whole.Count());
    EXPECT_NEAR(left.Correlation(), whole.Correlation(), 1e-14) << cut;
  }
}

TEST(CoMoments, KnowAConstantAndAnOverflow) {
  CoMoments constant;
  for (const double x : {0.1, 0.2, 0.7}) constant.Add(x, 0.3, 3);
  EXPECT_TRUE(constant.HasConstant());
  EXPECT_TRUE(std::isnan(constant.Correlation()));
  CoMoments huge;
  for (const double x : {-1e200, 0.0, 1e200}) huge.Add(x, x, 1);
  EXPECT_FALSE(huge.HasConstant());
  EXPECT_TRUE(std::isnan(huge.Correlation()));
}

}  // namespace
