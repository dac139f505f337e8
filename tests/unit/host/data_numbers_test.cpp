#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "host/data/ValueNumbers.h"
#include "platform/component/Common.h"

namespace BayesHost {
namespace {

struct NumbersCase {
  const char* fName;
  std::vector<double> fvValues;
};

TEST(ValueNumbers, CountTheDistinctValuesInOrder) {
  std::vector<double> shuffled;
  for (int i = 0; i < 30000; ++i) shuffled.push_back(i * 7919 % 10000);
  const NumbersCase cases[] = {
      {"small whole numbers", {3, 0, 3, 1, 63, 64, 0}},
      {"far and near", {1e9, 5, 1e9, 70, 65, 70, 1e300}},
      {"what is no index", {-1, 0.5, -0.0, 0, 1.5, MCCommon_850::MCMV::Missing(), 0.5, -1}},
      {"in no order", shuffled},
  };
  for (const NumbersCase& c : cases) {
    SCOPED_TRACE(c.fName);
    ValueNumbers numbers;
    std::map<double, int> expected;
    for (const double value : c.fvValues) {
      EXPECT_EQ(numbers.Find(value), expected.contains(value) ? expected[value] : -1) << value;
      const int next = static_cast<int>(expected.size());
      EXPECT_EQ(numbers.Add(value), expected.try_emplace(value, next).first->second) << value;
    }
    EXPECT_EQ(numbers.Count(), static_cast<int>(expected.size()));
  }
}

}  // namespace
}  // namespace BayesHost
