#include "component/numeric/CoMoments.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace BayesComponent {

void CoMoments::Add(double x, double y, double weight) {
  if (fCount == 0) {
    fOriginX = x;
    fOriginY = y;
  }
  const double deltaX = (x - fOriginX) - fOffsetX;
  const double deltaY = (y - fOriginY) - fOffsetY;
  fCount += weight;
  const double share = weight / fCount;
  fOffsetX += deltaX * share;
  fOffsetY += deltaY * share;
  const double restY = (y - fOriginY) - fOffsetY;
  fSquaresX += weight * deltaX * ((x - fOriginX) - fOffsetX);
  fSquaresY += weight * deltaY * restY;
  fProducts += weight * deltaX * restY;
}

void CoMoments::Merge(const CoMoments& other) {
  if (other.fCount == 0) return;
  if (fCount == 0) {
    *this = other;
    return;
  }
  const double deltaX = (other.fOriginX - fOriginX) + (other.fOffsetX - fOffsetX);
  const double deltaY = (other.fOriginY - fOriginY) + (other.fOffsetY - fOffsetY);
  const double share = other.fCount / (fCount + other.fCount);
  const double between = fCount * share;
  fSquaresX += other.fSquaresX + deltaX * deltaX * between;
  fSquaresY += other.fSquaresY + deltaY * deltaY * between;
  fProducts += other.fProducts + deltaX * deltaY * between;
  fOffsetX += deltaX * share;
  fOffsetY += deltaY * share;
  fCount += other.fCount;
}

double CoMoments::Correlation() const {
  const double scale = std::sqrt(fSquaresX) * std::sqrt(fSquaresY);
  const double r = fProducts / scale;
  if (!std::isfinite(scale) || std::isnan(r)) return std::numeric_limits<double>::quiet_NaN();
  return std::clamp(r, -1.0, 1.0);
}

}  // namespace BayesComponent
