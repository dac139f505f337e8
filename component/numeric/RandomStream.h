// The component's only source of random numbers: a 64-bit Mersenne twister, whose bits the C++ standard
// fixes, under distributions whose output doesn't depend on the standard library at hand.
#pragma once

#include <cstdint>
#include <optional>
#include <random>

namespace BayesComponent {

class RandomStream {
 public:
  explicit RandomStream(std::uint64_t seed) : fSeed(seed) {}
  // One of many streams under one seed: tasks that run in any order draw from streams of their own.
  RandomStream(std::uint64_t seed, std::uint64_t task);

  // A draw from the uniform distribution, strictly between 0 and 1.
  double Uniform();
  // A draw from the standard normal distribution.
  double Normal();
  // The same, given that it falls between `lower` and `upper` > `lower`; either may be infinite.
  double NormalBetween(double lower, double upper);
  // The natural logarithm of a draw from the gamma distribution with this shape > 0 and rate 1, finite
  // however small the shape.
  double LogGamma(double shape);

 private:
  std::mt19937_64& Engine() { return fEngine ? *fEngine : fEngine.emplace(fSeed); }

  std::uint64_t fSeed;
  // Made for the first draw: it takes as long as some hundred draws, and most analyses draw nothing.
  std::optional<std::mt19937_64> fEngine;
};

}  // namespace BayesComponent
