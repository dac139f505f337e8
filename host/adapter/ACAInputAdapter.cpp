#include <algorithm>
#include <limits>

#include "host/adapter/AdapterState.h"
#include "host/session/Session.h"

using BayesHost::Categories;

namespace {

constexpr double kMissing = MCCommon_850::MCMV::Missing();

std::size_t Index(int i) {
  return static_cast<std::size_t>(i);
}

}  // namespace

ACAInputAdapter::ACAInputAdapter(ACAVarValidSpecs& varSpecs, ProcedureDataSource&)
    : fpState(std::make_unique<State>(varSpecs, BayesHost::Session::Current().GetData())) {}
ACAInputAdapter::~ACAInputAdapter() = default;

int ACAInputAdapter::GetRecordSize() const {
  return fpState->fVarSpecs.GetNRecordVars();
}

void ACAInputAdapter::EncodeCatVars(double* record) {
  for (const int slot : fpState->fVarSpecs.GetRecCatVars()) {
    record[slot] = fpState->Encode(slot, fpState->GetValue(slot));
  }
}

void ACAInputAdapter::GetContVars(double* record) {
  for (const int slot : fpState->GetNumericSlots()) record[slot] = fpState->GetValue(slot);
}

// No record of this host holds matrix specifications.
void ACAInputAdapter::RecodeMatrixSpecs(double*) {}

bool ACAInputAdapter::HandleBadMatrixSpec(int, const std::vector<int>*) {
  return false;
}

void ACAInputAdapter::FillFreeVars(double* record) {
  for (const int slot : fpState->GetFreeSlots()) record[slot] = kMissing;
}

bool ACAInputAdapter::PreprocessCase() {
  return true;
}
bool ACAInputAdapter::PreprocessRecord(double*) {
  return true;
}
bool ACAInputAdapter::TakesCasesAsTheyAre() const {
  return false;
}
void ACAInputAdapter::PreprocessRun() {}
void ACAInputAdapter::PrepareNewPass() {}
void ACAInputAdapter::PrepareNewSplit() {}

bool ACAInputAdapter::GetSplitFile() const {
  return fpState->fpData != nullptr && !fpState->fpData->GetSplit().empty();
}

void ACAInputAdapter::SetSplitFile(BpProcedure* proc, bool, bool, bool) {
  fpState->fNamesSplits = proc != nullptr && GetSplitFile();
}

const std::vector<const OBS*>& ACAInputAdapter::GetSplitValues() const {
  return fpState->fvSplitValues;
}

int ACAInputAdapter::GetCurrentPass() const {
  return fpState->fPass;
}

int ACAInputAdapter::GetRecordCatVarSize(int slot) const {
  const Categories* const categories = fpState->FindCategories(slot);
  return categories == nullptr ? 0 : categories->Count();
}

void ACAInputAdapter::ReorderRecordCats(int slot, bool ascending) {
  if (Categories* const categories = fpState->FindCategories(slot)) categories->Sort(ascending);
}

int ACAInputAdapter::EncodeRecordCatValue(int slot, const OBS& value, bool& notFound, bool) const {
  const int variable = fpState->fVarSpecs.GetZARQVarIndex(slot);
  const double number = variable < 0 ? kMissing : fpState->fpData->Encode(variable, value);
  const Categories* const categories = fpState->FindCategories(slot);
  const int code = number == kMissing || categories == nullptr ? -1 : categories->Find(number);
  notFound = code < 0;
  return code;
}

const OBS* ACAInputAdapter::DecodeRecordCatValue(int slot, int code) const {
  const Categories* const categories = fpState->FindCategories(slot);
  return categories == nullptr ? nullptr : categories->Decode(code);
}

double ACAInputAdapter::GetRecordVarMin(int slot) const {
  const BayesHost::ValueRange& range = fpState->GetSplit().fvRanges[Index(slot)];
  return range.fSmallest > range.fLargest ? kMissing : range.fSmallest;
}
double ACAInputAdapter::GetRecordVarMax(int slot) const {
  return fpState->GetSplit().fvRanges[Index(slot)].fLargest;
}

void ACAInputAdapter::GetRunValues(int slot, std::vector<double>& values) const {
  fpState->CopyRun(slot, values);
}

int ACAInputAdapter::GetWeightAdjType() const {
  return 1;
}

double ACAInputAdapter::GetSplitCaseCount() const {
  return GetValidCount();
}

int ACAInputAdapter::GetSplitSize() const {
  constexpr double kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(GetValidCount(), kMost));
}

double ACAInputAdapter::GetValidCount() const {
  return fpState->GetSplit().fCounts.fValid;
}
double ACAInputAdapter::GetWeightedValidCount() const {
  return fpState->GetSplit().fCounts.fWeightedValid;
}
double ACAInputAdapter::GetDroppedCount() const {
  return fpState->GetSplit().fCounts.fDropped;
}
double ACAInputAdapter::GetWeightedDroppedCount() const {
  return fpState->GetSplit().fCounts.fWeightedDropped;
}
