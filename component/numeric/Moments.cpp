#include "component/numeric/Moments.h"

#include <cmath>

namespace BayesComponent {

void TwofoldSum::Add(double value) {
  const double sum = fHigh + value;
  const double part = sum - fHigh;
  fLow += (fHigh - (sum - part)) + (value - part);
  fHigh = sum;
}

void TwofoldSum::AddProduct(double left, double right) {
  const double product = left * right;
  Add(product);
  fLow += std::fma(left, right, -product);
}

void TwofoldSum::Merge(const TwofoldSum& other) {
  Add(other.fHigh);
  fLow += other.fLow;
}

void Moments::Add(double value, double weight) {
  if (weight == 1) {
    fSum.Add(value);
  } else {
    fSum.AddProduct(weight, value);
  }
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
  fSum.Merge(other.fSum);
}

double Moments::MeanMinus(double constant) const {
  TwofoldSum distance = fSum;
  distance.AddProduct(-fCount, constant);
  return distance.Value() / fCount;
}

}  // namespace BayesComponent
