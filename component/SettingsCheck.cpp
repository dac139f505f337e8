// Whether a settings record describes an analysis.
#include <algorithm>
#include <cmath>

#include "component/SettingsView.h"
#include "platform/component/Settings.h"

namespace MCBSN_850 {

using BayesComponent::IsGiven;

namespace {

bool ArePositiveWhereGiven(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return !IsGiven(value) || value > 0; });
}

bool HasOneSampleVariables(const BSNSettings& settings) {
  return !BayesComponent::TestSlots(settings).empty();
}

bool HasPairs(const BSNSettings& settings) {
  return !settings.GetCovariates().empty() &&
         settings.GetCovariates().size() == settings.Get2ndRelatedList().size();
}

bool HasGroups(const BSNSettings& settings) {
  const std::size_t nVariances = settings.GetDataVarVals().size();
  return !settings.GetCovariates().empty() && settings.GetGroupVar() >= 0 &&
         (nVariances == 0 || nVariances == 2);
}

bool HasCorrelationVariables(const BSNSettings& settings) {
  const double b = settings.GetRegrComPar();
  return settings.GetCovariates().size() >= 2 && std::abs(settings.GetNullValue()) < 1 &&
         (!IsGiven(b) || (b > 0 && b < 1)) && IsGiven(settings.GetCorrCValue());
}

// One value for each predictor, or none at all.
bool ArePredictorsAligned(const BSNSettings& settings) {
  const std::size_t nPredictors = settings.GetFactors().size() + settings.GetCovariates().size();
  return settings.GetRegressors().empty() || settings.GetRegressors().size() == nPredictors;
}

bool HasDesign(const BSNSettings& settings) {
  return settings.GetDependentVar() >= 0 &&
         !(settings.GetFactors().empty() && settings.GetCovariates().empty()) &&
         settings.GetFactors().size() == settings.GetFactorSizes().size() &&
         settings.GetFullModFactors().size() == settings.GetFullModFactorSizes().size() &&
         ArePredictorsAligned(settings);
}

bool HasOneWayDesign(const BSNSettings& settings) {
  return HasDesign(settings) && settings.GetFactors().size() == 1 && settings.GetCovariates().empty();
}

// No shapes, one for all cells, or one for each.
bool AreShapesAligned(const BSNSettings& settings) {
  const std::vector<int>& sizes = settings.GetFactorSizes();
  const std::size_t nShapes = settings.GetLogLinShapes().size();
  if (nShapes < 2 || sizes.size() != 2) return nShapes < 2;
  return nShapes == static_cast<std::size_t>(sizes[0]) * static_cast<std::size_t>(sizes[1]);
}

bool HasTable(const BSNSettings& settings) {
  const std::vector<int>& sizes = settings.GetFactorSizes();
  const std::vector<double>& shapes = settings.GetLogLinShapes();
  const std::vector<double>& lambdas = settings.GetLambdas();
  const auto isPositive = [](double value) { return value > 0; };
  return settings.GetFactors().size() == sizes.size() &&
         std::all_of(sizes.begin(), sizes.end(), [](int size) { return size >= 0; }) &&
         AreShapesAligned(settings) && ArePositiveWhereGiven({settings.GetPriorScale()}) &&
         std::all_of(shapes.begin(), shapes.end(), isPositive) &&
         std::all_of(lambdas.begin(), lambdas.end(), isPositive);
}

struct Requirement {
  BSNConst::ModelTypes fModel;
  bool (*fIsMet)(const BSNSettings&);
};

constexpr Requirement kVariables[] = {
    {BSNConst::OneSample, HasOneSampleVariables},
    {BSNConst::Related, HasPairs},
    {BSNConst::Independent, HasGroups},
    {BSNConst::Correlation, HasCorrelationVariables},
    {BSNConst::Regression, HasDesign},
    {BSNConst::Anova, HasOneWayDesign},
    {BSNConst::LogLinear, HasTable},
};

bool AreVariablesValid(const BSNSettings& settings) {
  return std::any_of(std::begin(kVariables), std::end(kVariables),
                     [&settings](const Requirement& requirement) {
                       return requirement.fModel == settings.GetModelType() && requirement.fIsMet(settings);
                     });
}

// One entry for each test, or none at all.
bool AreTestListsAligned(const BSNSettings& settings) {
  if (settings.GetModelType() != BSNConst::OneSample && settings.GetModelType() != BSNConst::Related)
    return true;
  const std::size_t nTests = BayesComponent::TestSlots(settings).size();
  const auto lists = {&settings.GetNullValues(),  &settings.GetDataVarVals(), &settings.GetAlterGValues(),
                      &settings.GetNullPrior1s(), &settings.GetNullPrior2s(), &settings.GetAlterPrior1s(),
                      &settings.GetAlterPrior2s()};
  return std::all_of(lists.begin(), lists.end(), [nTests](const std::vector<double>* list) {
    return list->empty() || list->size() == nTests;
  });
}

bool AreNumbersInRange(const BSNSettings& settings) {
  return settings.GetCILevel() >= 0 && settings.GetCILevel() < 100 && settings.GetKappaValue() > 0 &&
         ArePositiveWhereGiven({settings.GetTolValue()}) &&
         ArePositiveWhereGiven(settings.GetDataVarVals()) &&
         ArePositiveWhereGiven(settings.GetAlterGValues());
}

}  // namespace

bool BSNSettings::IsValidSettings() const {
  return AreVariablesValid(*this) && AreTestListsAligned(*this) && AreNumbersInRange(*this);
}

}  // namespace MCBSN_850
