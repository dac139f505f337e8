#include <algorithm>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "host/adapter/RecordReader.h"
#include "host/data/BlockStore.h"
#include "host/session/Session.h"

using BayesHost::BlockStore;
using BayesHost::CaseBlock;
using BayesHost::CaseCursor;
using BayesHost::Session;

namespace {

constexpr int kBlockRecords = 2048;

// Records in order: either those of the kept cases of a stretch, made anew from the columns whenever they are
// read, or records that the blocks hold.
struct Stretch {
  bool fIsStored;
  std::uint64_t fBegin;  // of the cases' order, or of all stored records
  std::uint64_t fEnd;
};

}  // namespace

// Most records are the cases themselves, and copies of them would take as much memory as the
// columns. What was recoded is kept, row by row in blocks of equal size; the last one need not be full.
struct ACADataFileIter::Implementation {
  Implementation(ACAInputAdapter& adapter, int sizeHint);

  void AddSplit(ACAProcDataSourceIter& records);
  void Add(const ACAProcDataSourceIter::Implementation& records);
  void Keep(const double* record);
  void Extend(bool isStored, std::uint64_t position);
  void EndFilling();
  bool NextStretch();
  void OpenCases();
  const double* ReadCases(std::size_t& count);
  void EncodeRows(std::size_t count);
  const double* ReadStored(std::size_t& count);

  ACAInputAdapter& fAdapter;
  int fPass;
  std::size_t fRecordSize;
  std::size_t fBlockRecords;
  std::vector<Stretch> fvStretches;
  std::optional<BlockStore> fBlocks;
  std::uint64_t fStored = 0;
  std::vector<double> fvBuffer;  // for a block that is read from the file
  // Reading.
  CaseBlock fCases;
  std::vector<double> fvRows;
  std::optional<CaseCursor> fCursor;
  std::size_t fNextStretch = 0;
  std::uint64_t fAt = 0;   // in a stretch of stored records
  std::uint64_t fEnd = 0;  // of that stretch
};

ACADataFileIter::Implementation::Implementation(ACAInputAdapter& adapter, int sizeHint)
    : fAdapter(adapter),
      fPass(adapter.GetCurrentPass()),
      fRecordSize(static_cast<std::size_t>(adapter.GetRecordSize())),
      fBlockRecords(
          static_cast<std::size_t>(sizeHint > 0 ? std::min(sizeHint, kBlockRecords) : kBlockRecords)) {
  if (adapter.GetState().fpData == nullptr) return;
  const std::size_t size = std::max<std::size_t>(fBlockRecords * fRecordSize, 1);
  fBlocks.emplace(adapter.GetState().fpData->GetBudget(), size);
}

// Cases that are taken as they are make one stretch, and are only counted.
void ACADataFileIter::Implementation::AddSplit(ACAProcDataSourceIter& records) {
  const ACAProcDataSourceIter::Implementation& state = records.GetImplementation();
  const bool isStretch = fAdapter.TakesCasesAsTheyAre() && records.HasRecord();
  if (isStretch) fvStretches.push_back({false, state.GetPosition(), state.GetSplitEnd()});
  for (; records.HasRecord(); records.AdvanceRun()) {
    if (!isStretch) Add(state);
  }
}

// A stretch of cases begins where a run of them begins, so that stretches are long.
void ACADataFileIter::Implementation::Add(const ACAProcDataSourceIter::Implementation& records) {
  const double* record = records.fvRecord.data();
  const std::uint64_t position = records.GetPosition();
  const bool goesOn =
      !fvStretches.empty() && !fvStretches.back().fIsStored && fvStretches.back().fEnd == position;
  const bool isCase = (goesOn || records.BeginsRun()) && fAdapter.GetState().IsCase(record);
  if (!isCase) Keep(record);
  Extend(!isCase, isCase ? position : fStored++);
}

void ACADataFileIter::Implementation::Keep(const double* record) {
  const std::size_t place = fStored % fBlockRecords;
  std::copy_n(record, fRecordSize, fBlocks->Open() + place * fRecordSize);
  if (place + 1 == fBlockRecords) fBlocks->Close();
}

void ACADataFileIter::Implementation::Extend(bool isStored, std::uint64_t position) {
  const bool isNew =
      fvStretches.empty() || fvStretches.back().fIsStored != isStored || fvStretches.back().fEnd != position;
  if (isNew) fvStretches.push_back({isStored, position, position});
  ++fvStretches.back().fEnd;
}

void ACADataFileIter::Implementation::EndFilling() {
  if (fStored % fBlockRecords > 0) fBlocks->Close();
  if (fBlocks && fBlocks->IsSpilled()) fvBuffer.resize(fBlocks->GetBlockSize());
}

bool ACADataFileIter::Implementation::NextStretch() {
  if (fNextStretch == fvStretches.size()) return false;
  const Stretch& stretch = fvStretches[fNextStretch++];
  if (stretch.fIsStored) {
    fAt = stretch.fBegin;
    fEnd = stretch.fEnd;
    return true;
  }
  if (!fCursor) OpenCases();
  fCursor->SetRange(stretch.fBegin, stretch.fEnd);
  return true;
}

void ACADataFileIter::Implementation::OpenCases() {
  const ACAVarValidSpecs::State& layout = fAdapter.GetState().fVarSpecs.GetState();
  BayesHost::DataSet& data = *fAdapter.GetState().fpData;
  std::uint64_t longest = 0;
  for (const Stretch& stretch : fvStretches) longest = std::max(longest, stretch.fEnd - stretch.fBegin);
  const std::uint64_t cases = std::min<std::uint64_t>(longest, BayesHost::ColumnStore::kBlockRows);
  fCases = CaseBlock(layout, data, cases);
  fvRows.resize(cases * fRecordSize);
  fCursor.emplace(data.MakeCursor(BayesHost::ListVariables(layout)));
}

const double* ACADataFileIter::Implementation::ReadCases(std::size_t& count) {
  count = 0;
  while (fCursor && count == 0) {
    const std::size_t cases = fCursor->NextRun();
    if (cases == 0) return nullptr;
    fCases.Take(*fCursor, cases, fPass);
    count = fCases.CopyKept(fvRows.data());
  }
  EncodeRows(count);
  return count > 0 ? fvRows.data() : nullptr;
}

void ACADataFileIter::Implementation::EncodeRows(std::size_t count) {
  ACAInputAdapter::State& state = fAdapter.GetState();
  for (const int slot : state.fVarSpecs.GetRecCatVars()) {
    double* value = fvRows.data() + slot;
    for (std::size_t i = 0; i < count; ++i, value += fRecordSize) *value = state.Encode(slot, *value);
  }
}

const double* ACADataFileIter::Implementation::ReadStored(std::size_t& count) {
  const std::size_t from = fAt % fBlockRecords;
  count = std::min<std::uint64_t>(fBlockRecords - from, fEnd - fAt);
  if (count == 0) return nullptr;
  const std::size_t block = fAt / fBlockRecords;
  fAt += count;
  return fBlocks->Read(block, from * fRecordSize, count * fRecordSize, fvBuffer.data());
}

ACADataFileIter::ACADataFileIter(ACAInputAdapter& adapter, const std::vector<int>& sortVars, int sizeHint)
    : fpImplementation(std::make_unique<Implementation>(adapter, sizeHint)) {
  if (!sortVars.empty()) throw std::invalid_argument("records are kept in the order of the cases only");
}

ACADataFileIter::~ACADataFileIter() = default;

ACAProcDataSourceIter::State ACADataFileIter::GetState() const {
  const bool hasRecord =
      fpImplementation->fAdapter.GetState().fHasRecord || !fpImplementation->fvStretches.empty();
  return hasRecord ? ACAProcDataSourceIter::kReady : ACAProcDataSourceIter::kNoValidCase;
}

bool ACADataFileIter::FillDataFile(ACAProcDataSourceIter& records) {
  Session& session = Session::Current();
  try {
    fpImplementation->AddSplit(records);
    fpImplementation->EndFilling();
  } catch (const std::system_error& error) {
    session.StoreError(error.what());
    return false;
  }
  return !session.IsInterrupted();
}

void ACADataFileIter::CloseDataFile() {
  fpImplementation->fBlocks.reset();
  fpImplementation->fvStretches.clear();
}

int ACADataFileIter::GetRecordSize() const {
  return static_cast<int>(fpImplementation->fRecordSize);
}

void ACADataFileIter::Restart() {
  fpImplementation->fNextStretch = 0;
  fpImplementation->fAt = fpImplementation->fEnd = 0;
  if (fpImplementation->fCursor) fpImplementation->fCursor->SetRange(0, 0);
}

const double* ACADataFileIter::NextBlock(std::size_t& count) {
  Implementation& file = *fpImplementation;
  do {
    if (const double* stored = file.ReadStored(count)) return stored;
    if (const double* cases = file.ReadCases(count)) return cases;
  } while (file.NextStretch());
  return nullptr;
}
