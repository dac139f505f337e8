// Count, mean and sum of squares of a weighted sample in one pass.
//
// B. P. Welford (1962), Technometrics 4:419-420; merging: T. F. Chan, G. H. Golub, R. J. LeVeque (1983), Am.
// Stat. 37:242-247. The mean is kept as an offset from the first value: a mean of 1e9 can't take up
// the steps of 1e-9 that a billion cases make, an offset of the size of the standard deviation can.
#pragma once

namespace BayesComponent {

class Moments {
 public:
  // `weight` > 0: how many cases have this value.
  void Add(double value, double weight);
  // As if the other's values had been added here.
  void Merge(const Moments& other);

  double Count() const { return fCount; }
  double Mean() const { return fOrigin + fOffset; }
  // Mean minus a constant, without the rounding of a mean that is large beside its distance from the
  // constant.
  double MeanMinus(double constant) const { return (fOrigin - constant) + fOffset; }
  // Sum of the squared distances from the mean.
  double SumOfSquares() const { return fSumOfSquares; }
  // SumOfSquares / (Count - 1). Needs a count above 1.
  double Variance() const { return fSumOfSquares / (fCount - 1); }

 private:
  double fCount = 0;
  double fOrigin = 0;
  double fOffset = 0;
  double fSumOfSquares = 0;
};

}  // namespace BayesComponent
