#pragma once

#include <cstddef>
#include <limits>

namespace BayesHost {

// Bounds of some numbers; of none at all when the smallest is above the largest.
struct ValueRange {
  double fSmallest = std::numeric_limits<double>::max();
  double fLargest = std::numeric_limits<double>::lowest();

  bool MayHold(double value) const { return fSmallest <= value && value <= fLargest; }
  void Take(double value) {
    fSmallest = value < fSmallest ? value : fSmallest;
    fLargest = value > fLargest ? value : fLargest;
  }
  void Take(const ValueRange& other);
  void Take(const double* values, std::size_t count);
};

}  // namespace BayesHost
