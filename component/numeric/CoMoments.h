// Joint moments of a weighted sample of pairs in one pass.
//
// The updates are those of Moments.h, with the product of the two distances beside their squares: T. F. Chan,
// G. H. Golub, R. J. LeVeque (1983), Am. Stat. 37:242-247. Means are kept as offsets from the first pair.
#pragma once

namespace BayesComponent {

class CoMoments {
 public:
  // `weight` > 0: how many cases are such a pair.
  void Add(double x, double y, double weight);
  // As if the other's pairs had been added here.
  void Merge(const CoMoments& other);

  double Count() const { return fCount; }
  // Whether one of the two has the same value in every case.
  bool HasConstant() const { return fSquaresX == 0 || fSquaresY == 0; }
  // Pearson's r in [-1, 1], or NaN: for a constant, and where sums left the range of a double.
  double Correlation() const;

 private:
  double fCount = 0;
  double fOriginX = 0;
  double fOriginY = 0;
  double fOffsetX = 0;
  double fOffsetY = 0;
  double fSquaresX = 0;
  double fSquaresY = 0;
  double fProducts = 0;
};

}  // namespace BayesComponent
