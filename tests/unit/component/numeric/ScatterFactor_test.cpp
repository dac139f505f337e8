#include "component/numeric/ScatterFactor.h"

#include <array>
#include <cmath>
#include <vector>

#include "gtest/gtest.h"

namespace {

using namespace BayesComponent;

constexpr std::size_t kColumns = 3;
constexpr std::size_t kGroups = 4;

struct Case {
  std::size_t fGroup;
  std::array<double, kColumns> fRow;
  double fWeight;
};

// Columns that are nearly collinear, and far from zero by `offset`; group 2 stays empty.
std::vector<Case> MakeCases(int count, double offset) {
  std::vector<Case> cases;
  for (int i = 0; i < count; ++i) {
    const double x = std::sin(0.7 * i);
    const double z = std::cos(1.3 * i * i);
    const std::size_t group = i % 5 == 0 ? 0 : i % 2 == 0 ? 1 : 3;
    cases.push_back({group, {offset + x, offset + x + 1e-3 * z, offset - 2 * z}, 0.5 + (i % 3)});
  }
  return cases;
}

ScatterFactor FactorOf(const std::vector<Case>& cases) {
  ScatterFactor factor(kGroups, kColumns);
  for (const Case& c : cases) factor.Add(c.fGroup, c.fRow.data(), c.fWeight);
  return factor;
}

// The definition, in two passes and in extended precision, scaled to correlations so that all entries weigh
// the same.
std::vector<double> ScatterByDefinition(const std::vector<Case>& cases) {
  std::array<long double, kGroups> weights{};
  std::array<std::array<long double, kColumns>, kGroups> means{};
  for (const Case& c : cases) weights[c.fGroup] += c.fWeight;
  for (const Case& c : cases) {
    for (std::size_t j = 0; j < kColumns; ++j) {
      means[c.fGroup][j] += static_cast<long double>(c.fRow[j]) * c.fWeight / weights[c.fGroup];
    }
  }
  std::vector<double> scatter;
  for (std::size_t j = 0; j < kColumns; ++j) {
    for (std::size_t k = 0; k < kColumns; ++k) {
      long double sum = 0;
      for (const Case& c : cases) {
        sum += c.fWeight * (c.fRow[j] - means[c.fGroup][j]) * (c.fRow[k] - means[c.fGroup][k]);
      }
      scatter.push_back(static_cast<double>(sum));
    }
  }
  return scatter;
}

void ExpectScatter(const ScatterFactor& factor, const std::vector<Case>& cases, double tolerance) {
  const Eigen::MatrixXd r = factor.Factor();
  EXPECT_TRUE(r.isUpperTriangular(0));
  const Eigen::MatrixXd scatter = r.transpose() * r;
  const std::vector<double> expected = ScatterByDefinition(cases);
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const auto row = static_cast<Eigen::Index>(i / kColumns);
    const auto column = static_cast<Eigen::Index>(i % kColumns);
    const double size =
        std::sqrt(expected[i / kColumns * (kColumns + 1)] * expected[i % kColumns * (kColumns + 1)]);
    EXPECT_NEAR(scatter(row, column) / size, expected[i] / size, tolerance) << i;
  }
}

TEST(ScatterFactor, FollowsTheDefinition) {
  // Fewer cases than columns, a few blocks' worth, and many.
  for (const int count : {1, 2, 7, 256, 5000}) {
    SCOPED_TRACE(count);
    const std::vector<Case> cases = MakeCases(count, 10);
    const ScatterFactor factor = FactorOf(cases);
    if (count > 20) ExpectScatter(factor, cases, 1e-13);
    EXPECT_EQ(factor.GroupWeights()[2], 0);
    double weight = 0;
    for (const Case& c : cases) weight += c.fGroup == 0 ? c.fWeight : 0;
    EXPECT_EQ(factor.GroupWeights()[0], weight);
  }
}

TEST(ScatterFactor, KeepsItsDigitsFarFromZero) {
  const std::vector<Case> cases = MakeCases(5000, 1e9);
  ExpectScatter(FactorOf(cases), cases, 1e-9);
}

// The smallest diagonal element of R: products of sums would have lost it, 1e-3 squared being 1e-6 of the
// rest.
TEST(ScatterFactor, SeesASmallDirection) {
  std::vector<Case> cases = MakeCases(400, 0);
  for (Case& c : cases) {
    c.fGroup = 0;
    c.fRow[1] = c.fRow[0] + 1e-9 * c.fRow[2];
  }
  const Eigen::MatrixXd r = FactorOf(cases).Factor();
  const std::vector<double> scatter = ScatterByDefinition(cases);
  const double residual = scatter[8] - scatter[2] * scatter[2] / scatter[0];
  EXPECT_NEAR(std::abs(r(1, 1)) / (1e-9 * std::sqrt(residual)), 1, 1e-6);
}

TEST(ScatterFactor, MergesPartsIntoTheWhole) {
  const std::vector<Case> cases = MakeCases(1300, 100);
  ScatterFactor whole(kGroups, kColumns);
  for (std::size_t start = 0; start < cases.size(); start += 433) {
    const auto end = std::min(cases.size(), start + 433);
    whole.Merge(FactorOf({cases.begin() + static_cast<std::ptrdiff_t>(start),
                          cases.begin() + static_cast<std::ptrdiff_t>(end)}));
  }
  ExpectScatter(whole, cases, 1e-12);
  const ScatterFactor together = FactorOf(cases);
  EXPECT_EQ(whole.GroupWeights(), together.GroupWeights());
  const Eigen::MatrixXd means = whole.GroupMeanOffsets().colwise() + whole.Origin();
  EXPECT_LT((means - (together.GroupMeanOffsets().colwise() + together.Origin())).col(3).norm(), 1e-12);
}

}  // namespace
