// The prior of a normal variance, in the one form that all its names come to.
#pragma once

#include <optional>

#include "component/SettingsView.h"

namespace BayesComponent {

// Density proportional to (sigma^2)^-(fDF/2 + 1) exp(-fSum/(2 sigma^2)): inverse gamma (fDF/2, fSum/2), or a
// noninformative power of sigma when fSum is 0. A sum of squares and its degrees of freedom add to it.
struct VariancePrior {
  double fDF;
  double fSum;
  bool IsInformative() const { return fSum > 0; }
};

// p(sigma^2) ~ 1.
constexpr VariancePrior kDiffuseVariance{-2, 0};

// As the settings describe it; a parameter that wasn't given is 1 (inverse chi-square, chi-square) or 1/2
// (inverse gamma, gamma). Nothing for a distribution that is no prior of a variance, or a parameter <= 0.
std::optional<VariancePrior> VariancePriorOf(const BSNSettings& settings);

}  // namespace BayesComponent
