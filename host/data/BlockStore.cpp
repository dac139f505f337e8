#include "host/data/BlockStore.h"

#include <utility>

namespace BayesHost {

BlockStore::BlockStore(MemoryBudget& budget, std::size_t blockSize)
    : fBudget(budget), fBlockSize(blockSize) {}

BlockStore::~BlockStore() {
  const std::size_t reserved = fvMemory.size() + (fOpenStays ? 1 : 0);
  fBudget.Release(reserved * fBlockSize * sizeof(double));
}

// Once a block is in the file all later ones go there, through the same room.
double* BlockStore::Open() {
  if (!fOpenStays && !IsSpilled()) fOpenStays = fBudget.Reserve(fBlockSize * sizeof(double));
  if (!fpOpen) fpOpen = std::make_unique_for_overwrite<double[]>(fBlockSize);
  return fpOpen.get();
}

void BlockStore::Close() {
  if (std::exchange(fOpenStays, false)) {
    fvMemory.push_back(std::move(fpOpen));
    return;
  }
  const std::size_t bytes = fBlockSize * sizeof(double);
  if (!fpFile) fpFile = std::make_unique<TempFile>();
  fpFile->Write(std::uint64_t{fSpilled} * bytes, fpOpen.get(), bytes);
  ++fSpilled;
}

const double* BlockStore::Read(std::size_t block, std::size_t from, std::size_t count, double* buffer) const {
  if (block < fvMemory.size()) return fvMemory[block].get() + from;
  const std::uint64_t offset = std::uint64_t{block - fvMemory.size()} * fBlockSize + from;
  fpFile->Read(offset * sizeof(double), buffer, count * sizeof(double));
  return buffer;
}

}  // namespace BayesHost
