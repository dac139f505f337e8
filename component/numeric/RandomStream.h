// The component's only source of random numbers: a 64-bit Mersenne twister, whose bits the C++ standard
// fixes, under Boost's distributions, whose output doesn't depend on the standard library at hand.
#pragma once

#include <cstdint>
#include <random>

namespace BayesComponent {

class RandomStream {
 public:
  explicit RandomStream(std::uint64_t seed) : fEngine(seed) {}

  // A draw from the standard normal distribution.
  double Normal();

 private:
  std::mt19937_64 fEngine;
};

}  // namespace BayesComponent
