// Count, mean and sum of squares of a weighted sample in one pass over the cases, by blocks of some hundreds.
//
// The sum of squares: B. P. Welford (1962), Technometrics 4:419-420; merging: T. F. Chan, G. H. Golub, R. J.
// LeVeque (1983), Am. Stat. 37:242-247. Its running mean is kept as an offset from the first value: a mean of
// 1e9 can't take up the steps of 1e-9 that a billion cases make, an offset of the size of the standard
// deviation can. The mean itself comes from a sum of twice the precision, so that it is good to its last
// digit however much cancels: D. E. Knuth, The Art of Computer Programming 2, section 4.2.2, theorem B.
#pragma once

#include <array>
#include <cstddef>

namespace BayesComponent {

// A sum with its accumulated rounding errors.
class TwofoldSum {
 public:
  TwofoldSum() = default;
  TwofoldSum(double high, double low) : fHigh(high), fLow(low) {}

  void Add(double value);
  void AddProduct(double left, double right);
  void Merge(const TwofoldSum& other);
  double Value() const { return fHigh + fLow; }

 private:
  double fHigh = 0;
  double fLow = 0;
};

class Moments {
 public:
  // `weight` > 0: how many cases have this value.
  void Add(double value, double weight);
  // Values that have one case each. Twice through: first for their mean, then for the squares about it.
  void Add(const double* values, std::size_t count);
  // As if the other's values had been added here.
  void Merge(const Moments& other);

  double Count() const { return fCount; }
  // Mean minus a constant, as exact when they are nearly equal as when they are not. Needs a count above 0.
  double MeanMinus(double constant) const;
  double Mean() const { return MeanMinus(0); }
  // Sum of the squared distances from the mean.
  double SumOfSquares() const { return fSumOfSquares; }

 private:
  static Moments OfLanes(const double* values, std::size_t count, double origin);

  double fCount = 0;
  TwofoldSum fSum;
  double fOrigin = 0;
  double fOffset = 0;
  double fSumOfSquares = 0;
};

// Takes values one by one, and gives the moments those of one case in blocks. The blocks are counted from the
// first value: what comes out depends on nothing but the sequence of values.
class MomentCollector {
 public:
  // `weight` > 0: how many cases have this value.
  void Add(double value, double weight) {
    if (weight != 1) return fMoments.Add(value, weight);
    fBlock[fFill++] = value;
    if (fFill == fBlock.size()) EndBlock();
  }
  // Of all values so far.
  const Moments& Total() {
    EndBlock();
    return fMoments;
  }

 private:
  void EndBlock();

  Moments fMoments;
  std::size_t fFill = 0;
  std::array<double, 256> fBlock;
};

}  // namespace BayesComponent
