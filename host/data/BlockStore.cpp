#include "host/data/BlockStore.h"

#include <algorithm>

namespace BayesHost {

BlockStore::BlockStore(MemoryBudget& budget, std::size_t blockSize)
    : fBudget(budget), fBlockSize(blockSize) {}

BlockStore::~BlockStore() {
  fBudget.Release(fvMemory.size() * fBlockSize * sizeof(double));
}

void BlockStore::Append(const double* block) {
  const std::size_t bytes = fBlockSize * sizeof(double);
  if (!IsSpilled() && fBudget.Reserve(bytes)) {
    fvMemory.push_back(std::make_unique_for_overwrite<double[]>(fBlockSize));
    std::copy_n(block, fBlockSize, fvMemory.back().get());
    return;
  }
  if (!fpFile) fpFile = std::make_unique<TempFile>();
  fpFile->Write(std::uint64_t{fSpilled} * bytes, block, bytes);
  ++fSpilled;
}

const double* BlockStore::Read(std::size_t block, std::size_t from, std::size_t count, double* buffer) const {
  if (block < fvMemory.size()) return fvMemory[block].get() + from;
  const std::uint64_t offset = std::uint64_t{block - fvMemory.size()} * fBlockSize + from;
  fpFile->Read(offset * sizeof(double), buffer, count * sizeof(double));
  return buffer;
}

}  // namespace BayesHost
