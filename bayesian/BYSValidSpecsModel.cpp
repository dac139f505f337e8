// Values of predictors that a command gave, as category codes of a split: where the response is predicted,
// which group means are drawn.
#include "bayesian/BYSAssert.h"
#include "bayesian/BYSMessage.h"
#include "bayesian/BYSProcAdapter.h"
#include "bayesian/BYSValidSpecs.h"

namespace {

constexpr const char* kSource = "BYSValidSpecs";

// Keys of the messages about a value that the data, or the current split, don't hold.
constexpr const char* kNoRegressor = "Regressor value ^1 not in data, variable ^2 ...";
constexpr const char* kNoRegressorSplit =
    "Regressor value ^1 not in data, variable ^2, split [%1 = %2:,^1 = ^2:]3 ...";
constexpr const char* kNoGroup = "Means group value ^1 not in data, variable ^2 ...";
constexpr const char* kNoGroupSplit =
    "Means group value ^1 not in data, variable ^2, split [%1 = %2:,^1 = ^2:]3 ...";

}  // namespace

void BYSValidSpecs::CompleteModelValues(Settings& compSettings, const BYSProcAdapter& adapter) const {
  if (fvBinInfoElems.empty()) return;
  if (fpCompSettings->GetModelType() == BSNConst::Regression) CompleteRegressors(compSettings, adapter);
  if (fpCompSettings->GetModelType() == BSNConst::Anova) CompleteMeansGroups(compSettings, adapter);
}

// A level that the split doesn't hold leaves its model without a point of its own.
void BYSValidSpecs::CompleteRegressors(Settings& compSettings, const BYSProcAdapter& adapter) const {
  std::vector<int> predictors = fpCompSettings->GetFactors();
  const std::vector<int>& covariates = fpCompSettings->GetCovariates();
  predictors.insert(predictors.end(), covariates.begin(), covariates.end());
  BYS::Assert(predictors.size() == fvBinInfoElems.size(), kSource, "nPred == nElems");

  std::vector<double> regressors;
  for (std::size_t i = 0; i < predictors.size(); ++i) {
    const BinInfoElem& binInfoElem = fvBinInfoElems[i];
    BYS::Assert(binInfoElem._obsValues.size() == 1, kSource, "binInfoElem._obsValues.size() == 1");
    const OBS* value = binInfoElem._obsValues.front();
    if (value == nullptr) continue;
    if (!binInfoElem._isString) {
      regressors.push_back(value->GetNumber());
      continue;
    }
    const int code = EncodeGivenValue(predictors[i], *value, adapter, kNoRegressor, kNoRegressorSplit);
    if (code < 0) return;
    regressors.push_back(code);
  }
  compSettings.SetRegressors(regressors);
}

// A level that the split doesn't hold is left out.
void BYSValidSpecs::CompleteMeansGroups(Settings& compSettings, const BYSProcAdapter& adapter) const {
  const std::vector<int>& compFactors = fpCompSettings->GetFactors();
  BYS::Assert(fvBinInfoElems.size() == 1, kSource, "fvBinInfoElems.size() == 1");
  BYS::Assert(compFactors.size() == 1, kSource, "compFactors.size() == 1");
  BYS::Assert(fpCompSettings->GetCovariates().empty(), kSource, "compCovars.empty()");
  const BinInfoElem& binInfoElem = fvBinInfoElems.front();
  BYS::Assert(!binInfoElem._obsValues.empty(), kSource, "binInfoElem._obsValues.size() > 0");

  std::vector<int> codes;
  for (const OBS* value : binInfoElem._obsValues) {
    if (value == nullptr) continue;
    const int code = binInfoElem._isString
                         ? EncodeGivenValue(compFactors.front(), *value, adapter, kNoGroup, kNoGroupSplit)
                         : static_cast<int>(value->GetNumber());
    if (code >= 0) codes.push_back(code);
  }
  if (codes.empty()) return;
  removeDuplicates(codes);
  compSettings.SetPlotFactorCats(codes);
}

// Negative, and the message of that key shown, when the split has no such category.
int BYSValidSpecs::EncodeGivenValue(int slot, const OBS& value, const BYSProcAdapter& adapter,
                                    const char* key, const char* splitKey) const {
  bool notFound = false;
  const int code = adapter.EncodeRecordCatValue(slot, value, notFound, false);
  if (!notFound && code >= 0) return code;
  const ZARQ_Variable& variable = fDataSource.GetVariable(GetZARQVarIndex(slot));
  const bool split = adapter.GetSplitFile();
  BYS::ShowMessage(split ? splitKey : key, {BpDataValue(value, variable), BpVariable(variable)}, split,
                   kBpErrorLevelWarning);
  return -1;
}
