#include <algorithm>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "host/adapter/AdapterState.h"
#include "host/data/BlockStore.h"
#include "host/session/Session.h"

using BayesHost::BlockStore;
using BayesHost::Session;

namespace {

constexpr int kBlockRecords = 2048;

}  // namespace

// The records stand row by row in blocks of equal size; the last one need not be full.
struct ACADataFileIter::Implementation {
  Implementation(ACAInputAdapter& adapter, int sizeHint)
      : fAdapter(adapter),
        fRecordSize(static_cast<std::size_t>(adapter.GetRecordSize())),
        fBlockRecords(
            static_cast<std::size_t>(sizeHint > 0 ? std::min(sizeHint, kBlockRecords) : kBlockRecords)) {
    Open();
  }

  void Open();
  void Append(const double* record);
  void Flush();

  ACAInputAdapter& fAdapter;
  std::size_t fRecordSize;
  std::size_t fBlockRecords;
  std::optional<BlockStore> fBlocks;
  std::vector<double> fvBlock;  // the block being filled, later the one being read
  std::size_t fInBlock = 0;
  std::size_t fRecords = 0;
  std::size_t fNextBlock = 0;
};

void ACADataFileIter::Implementation::Open() {
  fvBlock.resize(std::max<std::size_t>(fBlockRecords * fRecordSize, 1));
  if (fAdapter.GetState().fpData != nullptr)
    fBlocks.emplace(fAdapter.GetState().fpData->GetBudget(), fvBlock.size());
}

void ACADataFileIter::Implementation::Append(const double* record) {
  std::copy_n(record, fRecordSize, fvBlock.data() + fInBlock * fRecordSize);
  ++fRecords;
  if (++fInBlock == fBlockRecords) Flush();
}

void ACADataFileIter::Implementation::Flush() {
  if (fInBlock > 0) fBlocks->Append(fvBlock.data());
  fInBlock = 0;
}

ACADataFileIter::ACADataFileIter(ACAInputAdapter& adapter, const std::vector<int>& sortVars, int sizeHint)
    : fpImplementation(std::make_unique<Implementation>(adapter, sizeHint)) {
  if (!sortVars.empty()) throw std::invalid_argument("records are kept in the order of the cases only");
}

ACADataFileIter::~ACADataFileIter() = default;

ACAProcDataSourceIter::State ACADataFileIter::GetState() const {
  const bool hasRecord = fpImplementation->fAdapter.GetState().fHasRecord || fpImplementation->fRecords > 0;
  return hasRecord ? ACAProcDataSourceIter::kReady : ACAProcDataSourceIter::kNoValidCase;
}

bool ACADataFileIter::FillDataFile(ACAProcDataSourceIter& records) {
  Session& session = Session::Current();
  try {
    for (; records.HasRecord(); records.Advance()) fpImplementation->Append(records.Current()->fValues);
    fpImplementation->Flush();
  } catch (const std::system_error& error) {
    session.StoreError(error.what());
    return false;
  }
  return !session.IsInterrupted();
}

void ACADataFileIter::CloseDataFile() {
  fpImplementation->fBlocks.reset();
  fpImplementation->fRecords = 0;
}

int ACADataFileIter::GetRecordSize() const {
  return static_cast<int>(fpImplementation->fRecordSize);
}

void ACADataFileIter::Restart() {
  fpImplementation->fNextBlock = 0;
}

const double* ACADataFileIter::NextBlock(std::size_t& count) {
  Implementation& file = *fpImplementation;
  const std::size_t done = file.fNextBlock * file.fBlockRecords;
  count = done < file.fRecords ? std::min(file.fBlockRecords, file.fRecords - done) : 0;
  if (count == 0) return nullptr;
  return file.fBlocks->Read(file.fNextBlock++, 0, count * file.fRecordSize, file.fvBlock.data());
}
