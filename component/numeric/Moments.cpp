#include "component/numeric/Moments.h"

namespace BayesComponent {

void Moments::Add(double value, double weight) {
  if (fCount == 0) fOrigin = value;
  const double delta = (value - fOrigin) - fOffset;
  fCount += weight;
  fOffset += delta * (weight / fCount);
  fSumOfSquares += weight * delta * ((value - fOrigin) - fOffset);
}

void Moments::Merge(const Moments& other) {
  if (other.fCount == 0) return;
  if (fCount == 0) {
    *this = other;
    return;
  }
  const double delta = (other.fOrigin - fOrigin) + (other.fOffset - fOffset);
  const double total = fCount + other.fCount;
  fSumOfSquares += other.fSumOfSquares + delta * delta * (fCount / total) * other.fCount;
  fOffset += delta * (other.fCount / total);
  fCount = total;
}

}  // namespace BayesComponent
