#include "component/numeric/RandomStream.h"

#include <boost/random/normal_distribution.hpp>
#include <cmath>
#include <numbers>

namespace BayesComponent {

namespace {

// The finaliser of G. L. Steele, D. Lea & C. H. Flood (2014), Fast splittable pseudorandom number generators,
// OOPSLA 2014: neighbouring numbers become unrelated seeds.
std::uint64_t Mix(std::uint64_t bits) {
  bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9;
  bits = (bits ^ (bits >> 27)) * 0x94d049bb133111eb;
  return bits ^ (bits >> 31);
}

}  // namespace

RandomStream::RandomStream(std::uint64_t seed, std::uint64_t task) : fSeed(Mix(Mix(seed) + task + 1)) {}

double RandomStream::Uniform() {
  constexpr double kStep = 0x1p-53;
  return (static_cast<double>(Engine()() >> 11) + 0.5) * kStep;
}

double RandomStream::Normal() {
  return boost::random::normal_distribution<double>()(Engine());
}

// C. P. Robert (1995), Simulation of truncated normal variables, Stat. Comput. 5:121-125, sections 2.1 and
// 2.2: of three proposals the one that is accepted often.
double RandomStream::NormalBetween(double lower, double upper) {
  if (upper < 0) return -NormalBetween(-upper, -lower);
  const double width = upper - lower;
  const double start = std::max(lower, 0.0);
  const double rate = (start + std::sqrt(start * start + 4)) / 2;
  double x;
  if (lower <= 0 && width > std::sqrt(2 * std::numbers::pi)) {
    do x = Normal();
    while (x < lower || x > upper);
  } else if (lower <= 0 || width < 1 / rate) {
    do x = lower + Uniform() * width;
    while (Uniform() > std::exp((start - x) * (start + x) / 2));
  } else {
    do x = lower - std::log(Uniform()) / rate;
    while (x > upper || Uniform() > std::exp(-(x - rate) * (x - rate) / 2));
  }
  return x;
}

// G. Marsaglia & W. W. Tsang (2000), A simple method for generating gamma variables, ACM Trans. Math. Softw.
// 26:363-372; their note on shapes below 1 in its logarithm.
double RandomStream::LogGamma(double shape) {
  if (shape < 1) return LogGamma(shape + 1) + std::log(Uniform()) / shape;
  const double d = shape - 1.0 / 3;
  const double c = 1 / std::sqrt(9 * d);
  for (;;) {
    const double x = Normal();
    const double root = 1 + c * x;
    if (root <= 0) continue;
    const double lnV = 3 * std::log1p(c * x);
    if (std::log(Uniform()) < 0.5 * x * x + d * (lnV - std::expm1(lnV))) return std::log(d) + lnV;
  }
}

}  // namespace BayesComponent
