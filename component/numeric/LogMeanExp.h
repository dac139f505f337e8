// The mean of exp(x) over values of x that come one by one, as a logarithm.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace BayesComponent {

class LogMeanExp {
 public:
  void Add(double x) {
    ++fCount;
    if (x > fLargest) {
      const double shrink = std::exp(fLargest - x);
      fSum *= shrink;
      fSumOfSquares *= shrink * shrink;
      fLargest = x;
    }
    // Minus infinity adds nothing, not even where it is the largest so far.
    if (x == -std::numeric_limits<double>::infinity()) return;
    const double y = std::exp(x - fLargest);
    fSum += y;
    fSumOfSquares += y * y;
  }

  double Count() const { return fCount; }
  double Value() const { return fLargest + std::log(fSum / fCount); }
  // Standard error of Value() when the values are independent draws; infinite for fewer than two.
  double StandardError() const {
    if (fCount < 2 || fSum == 0) return std::numeric_limits<double>::infinity();
    const double mean = fSum / fCount;
    const double variance = std::max(0.0, fSumOfSquares / fCount - mean * mean);
    return std::sqrt(variance / (fCount - 1)) / mean;
  }

 private:
  double fCount = 0;
  double fLargest = -std::numeric_limits<double>::infinity();
  double fSum = 0;
  double fSumOfSquares = 0;
};

}  // namespace BayesComponent
