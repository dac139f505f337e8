#include "component/RegressionModel.h"

#include <algorithm>

namespace BayesComponent {

namespace {

Predictors PredictorsOf(const std::vector<int>& factors, const std::vector<int>& levels,
                        const std::vector<int>& covariates) {
  Predictors predictors{{}, covariates};
  for (std::size_t i = 0; i < factors.size(); ++i) predictors.fvFactors.push_back({factors[i], levels[i]});
  return predictors;
}

bool Contains(const std::vector<int>& slots, int slot) {
  return std::find(slots.begin(), slots.end(), slot) != slots.end();
}

}  // namespace

Predictors ModelPredictors(const BSNSettings& settings) {
  return PredictorsOf(settings.GetFactors(), settings.GetFactorSizes(), settings.GetCovariates());
}

Predictors FullModelPredictors(const BSNSettings& settings) {
  return PredictorsOf(settings.GetFullModFactors(), settings.GetFullModFactorSizes(),
                      settings.GetFullModCovariates());
}

Predictors Union(const Predictors& first, const Predictors& second) {
  Predictors both = first;
  const std::vector<int> known = SlotsOf(first);
  for (const RegressionFactor& factor : second.fvFactors) {
    if (!Contains(known, factor.fSlot)) both.fvFactors.push_back(factor);
  }
  for (const int covariate : second.fvCovariates) {
    if (!Contains(known, covariate)) both.fvCovariates.push_back(covariate);
  }
  return both;
}

std::vector<int> SlotsOf(const Predictors& predictors) {
  std::vector<int> slots;
  for (const RegressionFactor& factor : predictors.fvFactors) slots.push_back(factor.fSlot);
  slots.insert(slots.end(), predictors.fvCovariates.begin(), predictors.fvCovariates.end());
  return slots;
}

std::vector<MCRegrParameter> ParametersOf(const Predictors& predictors) {
  std::vector<MCRegrParameter> parameters{MCRegrParameter()};
  for (const RegressionFactor& factor : predictors.fvFactors) {
    for (int level = 0; level < factor.fLevels; ++level) {
      parameters.push_back(MCRegrParameter::OfLevel(factor.fSlot, level));
    }
  }
  for (const int covariate : predictors.fvCovariates) {
    parameters.push_back(MCRegrParameter::OfCovariate(covariate));
  }
  return parameters;
}

std::vector<int> LastLevels(const Predictors& predictors) {
  std::vector<int> positions;
  int position = 0;
  for (const RegressionFactor& factor : predictors.fvFactors) {
    positions.push_back(position += factor.fLevels);
  }
  return positions;
}

int CodeOf(const RegressionFactor& factor, const double* record) {
  const double code = record[factor.fSlot];
  return code >= 0 && code < factor.fLevels ? static_cast<int>(code) : -1;
}

bool IsComplete(const Predictors& predictors, const double* record) {
  const auto hasLevel = [record](const RegressionFactor& factor) { return CodeOf(factor, record) >= 0; };
  const auto hasValue = [record](int slot) { return IsGiven(record[slot]); };
  return std::all_of(predictors.fvFactors.begin(), predictors.fvFactors.end(), hasLevel) &&
         std::all_of(predictors.fvCovariates.begin(), predictors.fvCovariates.end(), hasValue);
}

double TermOf(const MCRegrParameter& parameter, const double* record) {
  if (parameter.GetNCovariates() > 0) return record[parameter.GetCovariates()[0]];
  if (parameter.IsIntercept()) return 1;
  return record[parameter.GetFactors()[0]] == parameter.GetCategories()[0] ? 1 : 0;
}

}  // namespace BayesComponent
