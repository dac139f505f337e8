// What a split's data settle: success categories, cut points, groups; and how codes turn back into values.
#include <algorithm>

#include "bayesian/BYSAssert.h"
#include "bayesian/BYSMessage.h"
#include "bayesian/BYSProcAdapter.h"
#include "platform/host/Output.h"

namespace {

constexpr const char* kSource = "BYSProcAdapter";

}  // namespace

bool BYSProcAdapter::CompleteSplit() {
  if (GetCurrentPass() == 0) {
    OrderCategories();
    CollectFactorValues();
    if (fModelType == BSNConst::OneSample && fTestDistType == BSNConst::Binomial) CompleteBinomial();
    return fGroupSourceSlot < 0 || CompleteGroup();
  }
  if (GetCurrentPass() == 1) {
    if (fModelType == BSNConst::OneSample && fTestDistType == BSNConst::Poisson) CompleteCounts();
    if (fModelType == BSNConst::Regression) CompleteCovariates();
  }
  return true;
}

void BYSProcAdapter::OrderCategories() {
  for (int slot : fSpecs.GetVarValidSpecsPtr()->GetRecCatVars()) {
    ReorderRecordCats(slot, fSpecs.GetCategAscend());
  }
}

// Every value that occurs has its place in the table.
void BYSProcAdapter::CollectFactorValues() {
  for (std::size_t factor = 0; factor < fvTableSlots.size(); ++factor) {
    ObsVecMap* pObsVecMap = fpSplitProcData->fpObsVecMap.get();
    BYS::Assert(pObsVecMap != nullptr, kSource, "pObsVecMap != 0");
    for (int code = 0; code < GetRecordCatVarSize(fvTableSlots[factor]); ++code) {
      const OBS* pKeyOBS = DecodeRecordCatValue(fvTableSlots[factor], code);
      BYS::Assert(pKeyOBS != nullptr, kSource, "pKeyOBS != 0");
      if (!pObsVecMap->Contains(factor, *pKeyOBS)) pObsVecMap->Insert(factor, pKeyOBS);
    }
  }
}

void BYSProcAdapter::CompleteBinomial() {
  for (std::size_t i = 0; i < fvBinSlots.size(); ++i) {
    std::vector<int>& success = fpSplitProcData->fvSuccessCats[i];
    const BinInfoElem& elem = fSpecs.GetBinInfoElems()[i];
    const int size = GetRecordCatVarSize(fvBinSlots[i]);
    success.clear();
    fpSplitProcData->fvGivenCats[i].clear();
    switch (elem._kind) {
      case BYSValidSpecs::kFirst:
        if (size > 0) success = {0};
        break;
      case BYSValidSpecs::kLast:
        if (size > 0) success = {size - 1};
        break;
      case BYSValidSpecs::kMidpoint:
        fpSplitProcData->fvCutPoints[i] = MidPoint(fvBinSlots[i]);
        break;
      case BYSValidSpecs::kCutpoint:
        if (!elem._numValues.empty()) fpSplitProcData->fvCutPoints[i] = elem._numValues.front();
        break;
      case BYSValidSpecs::kLevel:
        EncodeSuccess(i);
        break;
      default:
        break;
    }
  }
}

// Given values that the split doesn't hold are worth a warning: they narrow what counts as success.
void BYSProcAdapter::EncodeSuccess(std::size_t test) {
  std::vector<int>& given = fpSplitProcData->fvGivenCats[test];
  std::vector<int>& success = fpSplitProcData->fvSuccessCats[test];
  for (const OBS* value : fSpecs.GetBinInfoElems()[test]._obsValues) {
    given.push_back(EncodeValue(fvBinSlots[test], *value));
  }
  std::copy_if(given.begin(), given.end(), std::back_inserter(success), [](int code) { return code >= 0; });
  if (success.size() < given.size()) {
    WarnAboutVariable("Variable ^1 has unobserved ...",
                      "Variable ^1 has unobserved, split [%1 = %2:,^1 = ^2:]2 ...", fvTestVars[test]);
  }
  BYSValidSpecs::removeDuplicates(success);
}

bool BYSProcAdapter::CompleteGroup() {
  std::vector<int>& groups = fpSplitProcData->fvGroupCats;
  const BinInfoElem& elem = fSpecs.GetGroupInfoElem();
  groups.clear();
  if (elem._kind == BYSValidSpecs::kMidpoint) {
    fpSplitProcData->fGroupCutPoint = MidPoint(fGroupSourceSlot);
  } else if (elem._kind == BYSValidSpecs::kCutpoint && !elem._numValues.empty()) {
    fpSplitProcData->fGroupCutPoint = elem._numValues.front();
  } else if (elem._kind == BYSValidSpecs::kLevel) {
    bool allFound = true;
    for (const OBS* value : elem._obsValues) {
      const int code = EncodeValue(fGroupSourceSlot, *value);
      if (code >= 0) {
        groups.push_back(code);
      } else {
        ReportGroupValue(*value);
        allFound = false;
      }
    }
    BYSValidSpecs::removeDuplicates(groups);
    return allFound;
  }
  return true;
}

void BYSProcAdapter::CompleteCounts() {
  for (std::size_t i = 0; i < fvTestVars.size(); ++i) {
    if (!fpSplitProcData->fvBadValues[i]) continue;
    WarnAboutVariable("Variable ^1 has non-integer or negative ...",
                      "Variable ^1 has non-integer or negative, split [%1 = %2:,^1 = ^2:]2 ...",
                      fvTestVars[i]);
  }
}

void BYSProcAdapter::CompleteCovariates() {
  const double count = GetSplitCaseCount();
  for (std::size_t i = 0; i < fvCovarSlots.size() && count > 0; ++i) {
    fpSplitProcData->fvCovarMeans[i] = fpSplitProcData->fvCovarSums[i] / count;
  }
}

double BYSProcAdapter::MidPoint(int slot) const {
  const double minimum = GetRecordVarMin(slot);
  const double maximum = GetRecordVarMax(slot);
  return minimum == fMissing || maximum == fMissing ? fMissing : (minimum + maximum) * 0.5;
}

int BYSProcAdapter::EncodeValue(int slot, const OBS& value) const {
  bool notFound = false;
  return EncodeRecordCatValue(slot, value, notFound, false);
}

void BYSProcAdapter::WarnAboutVariable(const char* key, const char* splitKey, int index) const {
  const BpVariable variable(fDataSource.GetVariable(index));
  BYS::ShowMessage(GetSplitFile() ? splitKey : key, {variable}, GetSplitFile(), kBpErrorLevelWarning);
}

void BYSProcAdapter::ReportGroupValue(const OBS& value) const {
  const ZARQ_Variable& variable = fDataSource.GetVariable(fSpecs.GetStatSettingsPtr()->GetGroupVar());
  const BpDataValue valueText(value, variable);
  const BpVariable variableText(variable);
  if (GetSplitFile()) {
    BYS::ShowMessage("Group value ^1 not in data, variable ^2, split [%1 = %2:,^1 = ^2:]3 ...",
                     {valueText, variableText}, true, kBpErrorLevelWarning);
  } else {
    BYS::ShowMessage("Group value ^1 not in data, variable ^2 ...", {valueText, variableText}, false,
                     kBpErrorLevelError);
  }
}

// Position among the test variables, their number when the slot is none of theirs.
std::size_t BYSProcAdapter::FindTest(int componentVar) const {
  return static_cast<std::size_t>(std::find(fvTestSlots.begin(), fvTestSlots.end(), componentVar) -
                                  fvTestSlots.begin());
}

bool BYSProcAdapter::HasBinValues(int componentVar) const {
  const bool isGroup = componentVar >= 0 && componentVar == fGroupSlot;
  const std::size_t test = isGroup ? 0 : FindTest(componentVar);
  const BinInfoElem& elem = isGroup ? fSpecs.GetGroupInfoElem() : fSpecs.GetBinInfoElems()[test];
  const int slot = isGroup ? fGroupSourceSlot : fvBinSlots[test];
  return elem.IsRange() ? GetRecordVarMin(slot) != fMissing : GetRecordCatVarSize(slot) > 0;
}

bool BYSProcAdapter::HasObservedSuccess(int componentVar) const {
  const std::size_t test = FindTest(componentVar);
  return fSpecs.GetBinInfoElems()[test].IsRange() || !fpSplitProcData->fvSuccessCats[test].empty();
}

bool BYSProcAdapter::DecodeBinRecValue(int componentVar, int encValue, bool& isString,
                                       std::vector<const OBS*>& obs, std::vector<double>& values,
                                       std::vector<std::string>& strValues) const {
  BYS::Assert(encValue == 0 || encValue == 1, kSource, "encValue == 0 || encValue == 1");
  BYS::Assert(fpSplitProcData != nullptr, kSource, "fpSplitProcData != 0");
  obs.clear();
  values.clear();
  strValues.clear();
  const bool isGroup = componentVar >= 0 && componentVar == fGroupSlot;
  const std::size_t test = FindTest(componentVar);
  if (!isGroup && (test == fvTestSlots.size() || fTestDistType != BSNConst::Binomial)) return false;

  const BinInfoElem& elem = isGroup ? fSpecs.GetGroupInfoElem() : fSpecs.GetBinInfoElems()[test];
  const int slot = isGroup ? fGroupSourceSlot : fvBinSlots[test];
  isString = elem._isString;
  if (elem.IsRange()) {
    DecodeRange(slot, isGroup ? fpSplitProcData->fGroupCutPoint : fpSplitProcData->fvCutPoints[test],
                encValue, values);
  } else if (elem._kind == BYSValidSpecs::kLevel && (isGroup || encValue == 1)) {
    for (std::size_t localInd = 0; localInd < elem._obsValues.size(); ++localInd) {
      BYS::Assert(localInd < elem._strValues.size(), kSource, "localInd < pBinInfoElem->_strValues.size()");
      if (isGroup && localInd != static_cast<std::size_t>(encValue)) continue;
      obs.push_back(elem._obsValues[localInd]);
      values.push_back(elem._numValues[localInd]);
      strValues.push_back(elem._strValues[localInd]);
    }
  } else if (!isGroup) {
    DecodeCategories(slot, fpSplitProcData->fvSuccessCats[test], encValue, obs);
  }
  return true;
}

const OBS& BYSProcAdapter::GetFactorValue(std::size_t factor, int code) const {
  BYS::Assert(fpSplitProcData != nullptr, kSource, "fpSplitProcData != 0");
  return *fpSplitProcData->fpObsVecMap->GetValues(factor)[static_cast<std::size_t>(code)];
}

void BYSProcAdapter::DecodeRange(int slot, double cutPoint, int encValue, std::vector<double>& values) const {
  values = encValue == 1 ? std::vector<double>{cutPoint, GetRecordVarMax(slot)}
                         : std::vector<double>{GetRecordVarMin(slot), cutPoint};
}

// Code 1: the success categories; code 0: all others.
void BYSProcAdapter::DecodeCategories(int slot, const std::vector<int>& cats, int encValue,
                                      std::vector<const OBS*>& obs) const {
  for (int code = 0; code < GetRecordCatVarSize(slot); ++code) {
    const bool success = std::find(cats.begin(), cats.end(), code) != cats.end();
    if (success == (encValue == 1)) obs.push_back(DecodeRecordCatValue(slot, code));
  }
}
