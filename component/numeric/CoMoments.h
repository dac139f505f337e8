// Joint moments of a weighted sample of pairs in one pass.
//
// The updates are those of Moments.h, with the product of the two distances beside their squares: T. F. Chan,
// G. H. Golub, R. J. LeVeque (1983), Am. Stat. 37:242-247. Means are kept as offsets from the first pair.
#pragma once

namespace BayesComponent {

class CoMoments {
 public:
  // One of the two variables: its mean as an offset from some value of it, its squared distances from that.
  struct Margin {
    double fOrigin = 0;
    double fOffset = 0;
    double fSquares = 0;
  };

  CoMoments() = default;
  // Of `count` > 0 pairs that were summed elsewhere; `products`: those of the distances from the means.
  CoMoments(double count, const Margin& x, const Margin& y, double products)
      : fCount(count), fX(x), fY(y), fProducts(products) {}

  // `weight` > 0: how many cases are such a pair.
  void Add(double x, double y, double weight);
  // As if the other's pairs had been added here.
  void Merge(const CoMoments& other);

  double Count() const { return fCount; }
  // Whether one of the two has the same value in every case.
  bool HasConstant() const { return fX.fSquares == 0 || fY.fSquares == 0; }
  // Pearson's r in [-1, 1], or NaN: for a constant, and where sums left the range of a double.
  double Correlation() const;

 private:
  double fCount = 0;
  Margin fX;
  Margin fY;
  double fProducts = 0;
};

}  // namespace BayesComponent
