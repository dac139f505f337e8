// The terms of a linear model: its predictors, its parameters, and what a case has in front of each.
#pragma once

#include <vector>

#include "component/SettingsView.h"
#include "platform/component/Math.h"

namespace BayesComponent {

using MCMath_850::MCRegrParameter;

struct RegressionFactor {
  int fSlot;
  int fLevels;
};

struct Predictors {
  std::vector<RegressionFactor> fvFactors;
  std::vector<int> fvCovariates;
};

Predictors ModelPredictors(const BSNSettings& settings);
Predictors FullModelPredictors(const BSNSettings& settings);
// The predictors of both, each once.
Predictors Union(const Predictors& first, const Predictors& second);
// Record slots, factors first.
std::vector<int> SlotsOf(const Predictors& predictors);

// The intercept, the levels of the factors in code order, the covariates.
std::vector<MCRegrParameter> ParametersOf(const Predictors& predictors);
// Positions of the parameters that stand for the last level of a factor: redundant by convention.
std::vector<int> LastLevels(const Predictors& predictors);

// The category code of a factor in a record; -1 for a missing or unknown category.
int CodeOf(const RegressionFactor& factor, const double* record);
// Whether the record has a value of every predictor.
bool IsComplete(const Predictors& predictors, const double* record);
// The number in front of a parameter: 1 for the intercept, 0 or 1 for a level, a covariate's value.
double TermOf(const MCRegrParameter& parameter, const double* record);

}  // namespace BayesComponent
