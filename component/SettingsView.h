// What several analyses read out of the settings in the same way.
#pragma once

#include <cstddef>
#include <vector>

#include "component/numeric/GaussLobatto.h"
#include "platform/component/Settings.h"

namespace BayesComponent {

using MCBSN_850::BSNSettings;

// The missing value: what was not given, and what can't be computed.
constexpr double kMissing = MCCommon_850::MCMV::Missing();

constexpr bool IsGiven(double value) {
  return value != kMissing;
}

constexpr double GivenOr(double value, double otherwise) {
  return IsGiven(value) ? value : otherwise;
}

// Entry i of a list that may be shorter; missing beyond its end.
double EntryOf(const std::vector<double>& values, std::size_t i);

// Record slots of the test variables, first variables of the pairs included.
const std::vector<int>& TestSlots(const BSNSettings& settings);

bool WantsBayesFactor(const BSNSettings& settings);
bool WantsPosterior(const BSNSettings& settings);

// Within the settings' limits, or within 1e-6 and 2,000 refinements where none are given.
GaussLobatto QuadratureOf(const BSNSettings& settings);

// Draws for a Monte Carlo integral: the settings' number, else 10,000. Draws from a posterior likewise.
int SamplesOf(const BSNSettings& settings);
long PosteriorSamplesOf(const BSNSettings& settings);

}  // namespace BayesComponent
