#include "host/data/ValueRange.h"

#include <algorithm>
#include <array>

namespace BayesHost {

void ValueRange::Take(const ValueRange& other) {
  fSmallest = std::min(fSmallest, other.fSmallest);
  fLargest = std::max(fLargest, other.fLargest);
}

// Lanes side by side: each comparison by itself would wait for the one before.
void ValueRange::Take(const double* values, std::size_t count) {
  constexpr std::size_t kLanes = 8;
  std::array<double, kLanes> smallest;
  std::array<double, kLanes> largest;
  smallest.fill(fSmallest);
  largest.fill(fLargest);
  const std::size_t whole = count - count % kLanes;
  for (std::size_t i = 0; i < whole; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
      const double value = values[i + lane];
      smallest[lane] = value < smallest[lane] ? value : smallest[lane];
      largest[lane] = value > largest[lane] ? value : largest[lane];
    }
  }
  fSmallest = *std::min_element(smallest.begin(), smallest.end());
  fLargest = *std::max_element(largest.begin(), largest.end());
  for (std::size_t i = whole; i < count; ++i) Take(values[i]);
}

}  // namespace BayesHost
