#include "bayesian/BYSProcAdapter.h"

#include <algorithm>
#include <cmath>

#include "bayesian/BYSAssert.h"

namespace {

constexpr const char* kSource = "BYSProcAdapter";

// Category codes arrive as doubles.
int RoundToCode(double value) {
  return static_cast<int>(std::lround(value));
}

bool IsCategoryKind(int kind) {
  return kind == BYSValidSpecs::kFirst || kind == BYSValidSpecs::kLast || kind == BYSValidSpecs::kLevel;
}

bool Contains(const std::vector<int>& values, int value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

}  // namespace

BYSProcAdapter::BYSProcAdapter(BYSValidSpecs* specs, ProcedureDataSource& dataSource)
    : ACAInputAdapter(*specs->GetVarValidSpecsPtr(), dataSource),
      fSpecs(*specs),
      fDataSource(dataSource),
      fModelType(specs->GetCompSettingsPtr()->GetModelType()),
      fTestDistType(specs->GetCompSettingsPtr()->GetTestDistType()),
      fvBinSlots(specs->GetBinVarRec()),
      fGroupSlot(specs->GetCompSettingsPtr()->GetGroupVar()),
      fGroupSourceSlot(specs->GetGroupVarRec()),
      fWeightSlot(specs->GetCompSettingsPtr()->GetRegrWeightVar()),
      fvCovarSlots(specs->GetCompSettingsPtr()->GetCovariates()),
      fMissing(ZARQ_DataSource::GetMissingValue()) {
  if (fModelType == BSNConst::OneSample) {
    const bool binomial = fTestDistType == BSNConst::Binomial;
    const MCBSN_850::BSNSettings& stat = *specs->GetStatSettingsPtr();
    const MCBSN_850::BSNSettings& comp = *specs->GetCompSettingsPtr();
    fvTestVars = binomial ? stat.GetFactors() : stat.GetCovariates();
    fvTestSlots = binomial ? comp.GetFactors() : comp.GetCovariates();
  }
  if (fModelType == BSNConst::LogLinear) {
    fvTableSlots = specs->GetCompSettingsPtr()->GetFactors();
    fTableKeys = ObsVecMap::MakeKeySpec(specs->GetStatSettingsPtr()->GetFactors(), dataSource,
                                        specs->GetCategAscend());
  }
  ResizeSplitData();
  BYS::Assert(!fvAllSplitProcData.empty(), kSource, "fvAllSplitProcData.size() > 0");
}

BYSProcAdapter::~BYSProcAdapter() = default;

BYSProcAdapter::SplitProcData BYSProcAdapter::MakeSplitData() const {
  SplitProcData data;
  data.fvSuccessCats.resize(fvBinSlots.size());
  data.fvGivenCats.resize(fvBinSlots.size());
  data.fvCutPoints.assign(fvBinSlots.size(), fMissing);
  data.fvBadValues.assign(fvTestSlots.size(), false);
  data.fGroupCutPoint = fMissing;
  data.fvCovarSums.assign(fvCovarSlots.size(), 0.0);
  data.fvCovarMeans.assign(fvCovarSlots.size(), 0.0);
  if (fModelType == BSNConst::LogLinear) data.fpObsVecMap = std::make_unique<ObsVecMap>(fTableKeys);
  return data;
}

// Existing splits keep what they learned.
void BYSProcAdapter::ResizeSplitData() {
  while (fvAllSplitProcData.size() <= fSplitCount) fvAllSplitProcData.push_back(MakeSplitData());
}

void BYSProcAdapter::PrepareNewPass() {
  fSplitCount = 0;
  ResizeSplitData();
  BYS::Assert(!fvAllSplitProcData.empty(), kSource, "fvAllSplitProcData.size() > 0");
  fpSplitProcData = &fvAllSplitProcData.front();
}

void BYSProcAdapter::PrepareNewSplit() {
  ResizeSplitData();
  BYS::Assert(fSplitCount < fvAllSplitProcData.size(), kSource, "fSplitCount < fvAllSplitProcData.size()");
  fpSplitProcData = &fvAllSplitProcData[fSplitCount];
  ++fSplitCount;
}

bool BYSProcAdapter::CompletePass() {
  ResizeSplitData();
  fpSplitProcData = nullptr;
  if (GetCurrentPass() > 0 || fModelType != BSNConst::LogLinear) return true;
  for (const SplitProcData& split : fvAllSplitProcData) {
    BYS::Assert(split.fpObsVecMap != nullptr, kSource, "pObsVecMap != 0");
    split.fpObsVecMap->Sort();
  }
  return true;
}

bool BYSProcAdapter::PreprocessCase() {
  return true;
}

bool BYSProcAdapter::PreprocessRecord(double* record) {
  switch (fModelType) {
    case BSNConst::OneSample:
      if (fTestDistType == BSNConst::Binomial && GetCurrentPass() > 0) RecodeBinomial(record);
      if (fTestDistType == BSNConst::Poisson) ScreenCounts(record);
      break;
    case BSNConst::Independent:
      if (GetCurrentPass() > 0 && !RecodeGroup(record)) return false;
      break;
    case BSNConst::Regression:
      if (GetCurrentPass() == 1) SumCovariates(record);
      break;
    default:
      break;
  }
  return HasUsableWeight(record);
}

// Beside the weight check, what PreprocessRecord does in pass 0 nobody sees; afterwards it depends on the
// analysis. Whatever is not named here goes case by case.
bool BYSProcAdapter::TakesCasesAsTheyAre() const {
  if (fWeightSlot >= 0) return false;
  if (GetCurrentPass() == 0) return true;
  switch (fModelType) {
    case BSNConst::OneSample:
      return fTestDistType == BSNConst::Normal;
    case BSNConst::Independent:
      return fGroupSourceSlot < 0;
    case BSNConst::Related:
    case BSNConst::Correlation:
    case BSNConst::Regression:
    case BSNConst::Anova:
    case BSNConst::LogLinear:
      return true;
    default:
      return false;
  }
}

void BYSProcAdapter::PreprocessRun() {
  if (fModelType != BSNConst::Regression || GetCurrentPass() != 1) return;
  for (std::size_t i = 0; i < fvCovarSlots.size(); ++i) {
    GetRunValues(fvCovarSlots[i], fvRun);
    for (const double value : fvRun) SumCovariate(i, value);
  }
}

// Also cases that the weight check rejects afterwards are summed.
void BYSProcAdapter::SumCovariates(const double* record) {
  for (std::size_t i = 0; i < fvCovarSlots.size(); ++i) SumCovariate(i, record[fvCovarSlots[i]]);
}

void BYSProcAdapter::SumCovariate(std::size_t covariate, double value) {
  if (value != fMissing) fpSplitProcData->fvCovarSums[covariate] += value;
}

// 1 for a success, 0 for a failure; a missing value leaves the free slot missing. -1 is a category that pass
// 0 didn't see.
void BYSProcAdapter::RecodeBinomial(double* record) const {
  for (std::size_t i = 0; i < fvBinSlots.size(); ++i) {
    const double value = record[fvBinSlots[i]];
    const BinInfoElem& elem = fSpecs.GetBinInfoElems()[i];
    double& target = record[fvTestSlots[i]];
    if (IsCategoryKind(elem._kind)) {
      if (value == fMissing || value == -1.0) continue;
      const int code = RoundToCode(value);
      target = code >= 0 && Contains(fpSplitProcData->fvSuccessCats[i], code) ? 1.0 : 0.0;
    } else if (elem.IsRange()) {
      const double cutPoint = fpSplitProcData->fvCutPoints[i];
      if (cutPoint == fMissing || value == fMissing) continue;
      target = cutPoint > value ? 0.0 : 1.0;
    }
  }
}

// A count is a whole number, 0 included; anything else becomes missing.
void BYSProcAdapter::ScreenCounts(double* record) {
  const bool note = GetCurrentPass() == 1;
  for (std::size_t i = 0; i < fvTestSlots.size(); ++i) {
    double& value = record[fvTestSlots[i]];
    if (value != fMissing) {
      const bool isWhole = std::floor(value) == value;
      if (note) {
        fpSplitProcData->fZeroOrNegative |= value <= 0;
        fpSplitProcData->fNegative |= value < 0;
        fpSplitProcData->fNonInteger |= value > 0 && !isWhole;
      }
      if (value >= 0 && isWhole) continue;
    }
    value = fMissing;
    if (note) fpSplitProcData->fvBadValues[i] = true;
  }
}

// 0 for the first group, 1 for the second; a case of neither group is rejected.
bool BYSProcAdapter::RecodeGroup(double* record) const {
  const BinInfoElem& elem = fSpecs.GetGroupInfoElem();
  if (fGroupSourceSlot < 0) return true;
  const double value = record[fGroupSourceSlot];
  double& target = record[fGroupSlot];
  if (elem.IsRange()) {
    const double cutPoint = fpSplitProcData->fGroupCutPoint;
    if (cutPoint != fMissing && value != fMissing) target = value >= cutPoint ? 1.0 : 0.0;
    return true;
  }
  const std::vector<int>& groups = fpSplitProcData->fvGroupCats;
  if (elem._kind != BYSValidSpecs::kLevel || value == fMissing || groups.size() != 2) return true;
  const int code = RoundToCode(value);
  if (code < 0 || !Contains(groups, code)) return false;
  target = code == groups[0] ? 0.0 : 1.0;
  return true;
}

bool BYSProcAdapter::HasUsableWeight(const double* record) {
  if (fWeightSlot < 0) return true;
  const double weight = record[fWeightSlot];
  if (weight != fMissing && weight > 0) return true;
  if (GetCurrentPass() == 1) fpSplitProcData->fBadWeight = true;
  return false;
}

void BYSProcAdapter::GetBadValueFlags(bool& zeroOrNegative, bool& nonInteger, bool& negative,
                                      bool& badWeight) const {
  BYS::Assert(fpSplitProcData != nullptr, kSource, "fpSplitProcData != 0");
  zeroOrNegative = fpSplitProcData->fZeroOrNegative;
  nonInteger = fpSplitProcData->fNonInteger;
  negative = fpSplitProcData->fNegative;
  badWeight = fpSplitProcData->fBadWeight;
}

const std::vector<double>& BYSProcAdapter::GetCovarMeans() const {
  BYS::Assert(fpSplitProcData != nullptr, kSource, "fpSplitProcData != 0");
  return fpSplitProcData->fvCovarMeans;
}
