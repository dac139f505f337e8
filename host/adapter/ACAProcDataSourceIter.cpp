#include <exception>
#include <memory>
#include <system_error>

#include "host/adapter/RecordLayout.h"
#include "host/adapter/RecordReader.h"
#include "host/adapter/SplitNames.h"
#include "host/session/Session.h"

using BayesHost::CaseFate;
using BayesHost::DataSet;
using BayesHost::kScoringPass;
using BayesHost::Session;

std::vector<int> BayesHost::ListVariables(const ACAVarValidSpecs::State& layout) {
  std::vector<int> variables;
  for (const RecordSlot& slot : layout.fvSlots) {
    if (!slot.IsFree()) variables.push_back(slot.fVariable);
  }
  return variables;
}

ACAProcDataSourceIter::Implementation::Implementation(ACAInputAdapter& adapter, bool readAhead)
    : fAdapter(adapter), fSession(Session::Current()) {
  ACAInputAdapter::State& state = GetAdapterState();
  if (state.fpData == nullptr) fState = kNoCase;
  if (state.fpData == nullptr || !Load()) return;
  state.Prepare();
  fHasCategories = !state.fVarSpecs.GetRecCatVars().empty();
  fHasFreeSlots = !state.GetFreeSlots().empty();
  fvRecord.resize(static_cast<std::size_t>(fAdapter.GetRecordSize()));
  fRecord.fValues = fvRecord.data();
  fUsable = state.fpData->CountCases() > 0;
  if (!fUsable) fState = kNoCase;
  if (!fUsable) return;
  BeginPass(0);
  if (readAhead) LookAhead();
}

ACAProcDataSourceIter::Implementation::~Implementation() {
  if (GetAdapterState().fNamesSplits) BayesHost::ForgetSplit();
}

// A file that can't be read ends the procedure; what is wrong with it is shown when the run has come to its
// end.
bool ACAProcDataSourceIter::Implementation::Load() {
  DataSet& data = *GetAdapterState().fpData;
  const std::vector<int> variables = BayesHost::ListVariables(GetAdapterState().fVarSpecs.GetState());
  try {
    data.Require(variables);
    if (!data.Load()) return false;
    fCursor.emplace(data.MakeCursor(variables));
    return true;
  } catch (const std::exception& error) {
    fSession.StoreError(error.what());
    return false;
  }
}

void ACAProcDataSourceIter::Implementation::LookAhead() {
  BeginSplit(0);
  fSplitBegun = true;
  if (!fAdapter.GetSplitFile() && fState == kNoValidCase) fUsable = false;
}

void ACAProcDataSourceIter::Implementation::BeginPass(int pass) {
  GetAdapterState().fPass = pass;
  GetAdapterState().fSplit = -1;
  GetAdapterState().fHasRecord = false;
  fState = kReady;
  fSplitBegun = false;
  fAdapter.PrepareNewPass();
}

void ACAProcDataSourceIter::Implementation::BeginSplit(int split) {
  ACAInputAdapter::State& state = GetAdapterState();
  const BayesHost::SplitIndex::Group& group = state.fpData->GetGroups()[static_cast<std::size_t>(split)];
  state.EnterSplit(split);
  if (state.fNamesSplits) BayesHost::NameSplit(*state.fpData, group);
  fCursor->SetRange(group.fBegin, group.fEnd);
  fSplitEnd = group.fEnd;
  fRunCases = fNextOfRun = 0;
  fState = kReady;
  fSplitEmpty = true;
  fAdapter.PrepareNewSplit();
  Advance();
}

bool ACAProcDataSourceIter::Implementation::NewSplit() {
  if (!fUsable) return false;
  const bool begun = fSplitBegun;
  fSplitBegun = false;
  if (begun) return true;
  const int next = GetAdapterState().fSplit + 1;
  if (next >= static_cast<int>(GetAdapterState().fvSplits.size())) {
    if (GetAdapterState().fNamesSplits) BayesHost::ForgetSplit();
    FinishSaving();
    return false;
  }
  BeginSplit(next);
  return true;
}

// To the next case that becomes a record. An interrupt ends the split early.
void ACAProcDataSourceIter::Implementation::Advance() {
  ACAInputAdapter::State& state = GetAdapterState();
  state.fHasRecord = false;
  while (fNextOfRun < fRunCases || TakeRun()) {
    const CaseFate fate = state.EnterCase(fNextOfRun++);
    if (fate == CaseFate::Uncounted || !fAdapter.PreprocessCase()) continue;
    if (fate == CaseFate::Dropped) state.CountDropped();
    if (fate == CaseFate::Dropped || !MakeRecord()) continue;
    state.Accept();
    state.fHasRecord = true;
    fSplitEmpty = false;
    if (fSaves) SaveInto(GetPosition());
    return;
  }
  if (fSplitEmpty) fState = kNoValidCase;
}

void ACAProcDataSourceIter::Implementation::AdvanceRun() {
  if (fAdapter.TakesCasesAsTheyAre()) {
    GetAdapterState().AcceptRun(fNextOfRun);
    fAdapter.PreprocessRun();
    fNextOfRun = fRunCases;
  }
  Advance();
}

bool ACAProcDataSourceIter::Implementation::TakeRun() {
  fNextOfRun = 0;
  fRunBegin = fCursor->GetPosition();
  fRunCases = fSession.IsInterrupted() ? 0 : fCursor->NextRun();
  if (fRunCases > 0) GetAdapterState().TakeRun(*fCursor, fRunCases);
  return fRunCases > 0;
}

// A step that has no slots to work on is left out; no record of this host holds matrix specifications.
bool ACAProcDataSourceIter::Implementation::MakeRecord() {
  double* record = fvRecord.data();
  if (fHasCategories) fAdapter.EncodeCatVars(record);
  fAdapter.GetContVars(record);
  if (fHasFreeSlots) fAdapter.FillFreeVars(record);
  return fAdapter.PreprocessRecord(record);
}

void ACAProcDataSourceIter::Implementation::BeginScoring() {
  if (fUsable) GetAdapterState().fPass = kScoringPass;
  fpSaved = std::make_unique<BayesHost::SavedColumns>(*GetAdapterState().fpData);
  fSaves = fUsable;
}

// To the record's case, which stands at this position of the order.
void ACAProcDataSourceIter::Implementation::SaveInto(std::uint64_t position) {
  try {
    fpSaved->BeginCase(position);
  } catch (const std::system_error& error) {
    fSaves = false;
    fSession.StoreError(error.what());
  }
}

// What was interrupted, or ran into an error, gives no values at all.
void ACAProcDataSourceIter::Implementation::FinishSaving() {
  if (!fSaves || fSession.IsFatal()) return;
  fSaves = false;
  try {
    fpSaved->Finish();
  } catch (const std::system_error& error) {
    fSession.StoreError(error.what());
  }
}

ACAProcDataSourceIter::ACAProcDataSourceIter(ACAInputAdapter& adapter, bool readAhead)
    : fpImplementation(std::make_unique<Implementation>(adapter, readAhead)) {}
ACAProcDataSourceIter::~ACAProcDataSourceIter() = default;

bool ACAProcDataSourceIter::NewSplit() {
  return fpImplementation->NewSplit();
}

ACAProcDataSourceIter::State ACAProcDataSourceIter::GetState() const {
  // A split that was only looked into is not the current one.
  const bool ahead = fpImplementation->fSplitBegun && fpImplementation->fAdapter.GetSplitFile();
  return ahead ? kReady : fpImplementation->fState;
}

bool ACAProcDataSourceIter::HasRecord() const {
  return fpImplementation->GetAdapterState().fHasRecord;
}

void ACAProcDataSourceIter::Advance() {
  if (HasRecord()) fpImplementation->Advance();
}

void ACAProcDataSourceIter::AdvanceRun() {
  if (HasRecord()) fpImplementation->AdvanceRun();
}

void ACAProcDataSourceIter::Restart() {
  if (fpImplementation->fUsable) fpImplementation->BeginPass(1);
}

void ACAProcDataSourceIter::NewPass(bool) {
  if (fpImplementation->fUsable) fpImplementation->BeginPass(fpImplementation->GetAdapterState().fPass + 1);
}

void ACAProcDataSourceIter::SetLastPass() {
  if (fpImplementation->GetAdapterState().fpData != nullptr) fpImplementation->BeginScoring();
}

ZARQ_InputCaseIterator* ACAProcDataSourceIter::GetProcDS() {
  return fpImplementation->fpSaved.get();
}

const MCCommon_850::Record* ACAProcDataSourceIter::Current() const {
  return HasRecord() ? &fpImplementation->fRecord : nullptr;
}
