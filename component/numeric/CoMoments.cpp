#include "component/numeric/CoMoments.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace BayesComponent {

void CoMoments::Add(double x, double y, double weight) {
  if (fCount == 0) {
    fX.fOrigin = x;
    fY.fOrigin = y;
  }
  const double deltaX = (x - fX.fOrigin) - fX.fOffset;
  const double deltaY = (y - fY.fOrigin) - fY.fOffset;
  fCount += weight;
  const double share = weight / fCount;
  fX.fOffset += deltaX * share;
  fY.fOffset += deltaY * share;
  const double restY = (y - fY.fOrigin) - fY.fOffset;
  fX.fSquares += weight * deltaX * ((x - fX.fOrigin) - fX.fOffset);
  fY.fSquares += weight * deltaY * restY;
  fProducts += weight * deltaX * restY;
}

void CoMoments::Merge(const CoMoments& other) {
  if (other.fCount == 0) return;
  if (fCount == 0) {
    *this = other;
    return;
  }
  const double deltaX = (other.fX.fOrigin - fX.fOrigin) + (other.fX.fOffset - fX.fOffset);
  const double deltaY = (other.fY.fOrigin - fY.fOrigin) + (other.fY.fOffset - fY.fOffset);
  const double share = other.fCount / (fCount + other.fCount);
  const double between = fCount * share;
  fX.fSquares += other.fX.fSquares + deltaX * deltaX * between;
  fY.fSquares += other.fY.fSquares + deltaY * deltaY * between;
  fProducts += other.fProducts + deltaX * deltaY * between;
  fX.fOffset += deltaX * share;
  fY.fOffset += deltaY * share;
  fCount += other.fCount;
}

double CoMoments::Correlation() const {
  const double scale = std::sqrt(fX.fSquares) * std::sqrt(fY.fSquares);
  const double r = fProducts / scale;
  if (!std::isfinite(scale) || std::isnan(r)) return std::numeric_limits<double>::quiet_NaN();
  return std::clamp(r, -1.0, 1.0);
}

}  // namespace BayesComponent
