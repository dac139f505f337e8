#include "component/numeric/Moments.h"

#include <Eigen/Core>
#include <cmath>
#include <utility>

namespace BayesComponent {

namespace {

// Sums side by side: each addition by itself would wait for the one before.
using Lanes = Eigen::Array<double, 8, 1>;
constexpr std::size_t kLanes = Lanes::SizeAtCompileTime;

template <class Number>
void AddTwofold(const Number& value, Number& high, Number& low) {
  const Number sum = high + value;
  const Number part = sum - high;
  low += (high - (sum - part)) + (value - part);
  high = sum;
}

}  // namespace

void TwofoldSum::Add(double value) {
  AddTwofold(value, fHigh, fLow);
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

void Moments::Add(const double* values, std::size_t count) {
  const std::size_t whole = count - count % kLanes;
  if (whole > 0) Merge(OfLanes(values, whole, fCount == 0 ? values[0] : fOrigin));
  for (std::size_t i = whole; i < count; ++i) Add(values[i], 1);
}

// `count`: a multiple of the lanes.
Moments Moments::OfLanes(const double* values, std::size_t count, double origin) {
  Lanes high = Lanes::Zero();
  Lanes low = Lanes::Zero();
  Lanes offsets = Lanes::Zero();
  for (std::size_t i = 0; i < count; i += kLanes) {
    const Lanes value = Lanes::Map(values + i);
    AddTwofold(value, high, low);
    offsets += value - origin;
  }
  Moments moments;
  moments.fCount = static_cast<double>(count);
  moments.fOrigin = origin;
  moments.fOffset = offsets.sum() / moments.fCount;
  Lanes squares = Lanes::Zero();
  for (std::size_t i = 0; i < count; i += kLanes) {
    squares += (Lanes::Map(values + i) - origin - moments.fOffset).square();
  }
  moments.fSumOfSquares = squares.sum();
  for (int lane = 0; lane < Lanes::SizeAtCompileTime; ++lane) {
    moments.fSum.Merge({high[lane], low[lane]});
  }
  return moments;
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

void MomentCollector::EndBlock() {
  fMoments.Add(fBlock.data(), std::exchange(fFill, 0));
}

}  // namespace BayesComponent
