// Round numbers along an axis, and their labels.
#pragma once

#include <string>
#include <vector>

#include "platform/Visibility.h"

namespace BayesHost {

// A closed interval of finite numbers, lower < upper.
struct Interval {
  double fLower = 0;
  double fUpper = 1;
};

// An interval of positive width around the bounds: bounds too close to tell apart, as those of a constant
// curve are, are moved away from each other.
BAYES_PLATFORM Interval Widen(double lower, double upper);

// Multiples of 1, 2 or 5 times a power of ten.
class BAYES_PLATFORM Ticks {
 public:
  // About `count` of them (>= 1) inside the interval. `isRound`: the interval is moved outwards to ticks
  // first.
  Ticks(const Interval& interval, int count, bool isRound);

  const Interval& GetInterval() const { return fInterval; }
  const std::vector<double>& GetValues() const { return fvValues; }
  // All with the same decimals, or all in scientific notation where that is shorter.
  const std::vector<std::string>& GetLabels() const { return fvLabels; }
  // In characters.
  int GetLongestLabel() const;

 private:
  void ChooseStep(double width);
  double GetValue(double index) const;

  Interval fInterval;
  int fMantissa = 1;
  int fPower = 0;
  std::vector<double> fvValues;
  std::vector<std::string> fvLabels;
};

}  // namespace BayesHost
