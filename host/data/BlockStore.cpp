#include "host/data/BlockStore.h"

#include <sys/mman.h>

#include <algorithm>
#include <new>
#include <utility>

namespace BayesHost {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kLargeSlab = std::size_t{1} << 20;

double* MakeSlab(std::size_t bytes) {
  void* const slab = std::aligned_alloc(kPage, (bytes + kPage - 1) / kPage * kPage);
  if (slab == nullptr) throw std::bad_alloc();
  return static_cast<double*>(slab);
}

// Memory that is about to be filled. One call of the kernel for all its pages takes a third less time than a
// fault for each; a kernel that doesn't know this advice does nothing.
void Populate([[maybe_unused]] void* slab, [[maybe_unused]] std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
  madvise(slab, bytes, MADV_POPULATE_WRITE);
#endif
}

}  // namespace

BlockStore::BlockStore(MemoryBudget& budget, std::size_t blockSize)
    : fBudget(budget), fBlockSize(blockSize) {}

BlockStore::~BlockStore() {
  const std::size_t reserved = fvMemory.size() + (fOpenStays ? 1 : 0);
  fBudget.Release(reserved * fBlockSize * sizeof(double));
}

// Once a block is in the file all later ones go there, through the same room.
double* BlockStore::Open() {
  if (!fOpenStays && !IsSpilled()) fOpenStays = fBudget.Reserve(fBlockSize * sizeof(double));
  if (fpOpen == nullptr) fpOpen = TakeRoom();
  return fpOpen;
}

// The first block by itself: most stores need no more.
double* BlockStore::TakeRoom() {
  if (fFreeBlocks == 0) {
    const std::size_t bytes = fBlockSize * sizeof(double);
    const std::size_t most = fOpenStays ? std::max<std::size_t>(kLargeSlab / bytes, 1) : 1;
    fFreeBlocks = std::clamp<std::size_t>(fvMemory.size(), 1, most);
    fvSlabs.emplace_back(MakeSlab(fFreeBlocks * bytes));
    fpNext = fvSlabs.back().get();
    if (!fvMemory.empty()) Populate(fpNext, fFreeBlocks * bytes);
  }
  --fFreeBlocks;
  return std::exchange(fpNext, fpNext + fBlockSize);
}

void BlockStore::Close() {
  if (std::exchange(fOpenStays, false)) {
    fvMemory.push_back(std::exchange(fpOpen, nullptr));
    return;
  }
  const std::size_t bytes = fBlockSize * sizeof(double);
  if (!fpFile) fpFile = std::make_unique<TempFile>();
  fpFile->Write(std::uint64_t{fSpilled} * bytes, fpOpen, bytes);
  ++fSpilled;
}

const double* BlockStore::Read(std::size_t block, std::size_t from, std::size_t count, double* buffer) const {
  if (block < fvMemory.size()) return fvMemory[block] + from;
  const std::uint64_t offset = std::uint64_t{block - fvMemory.size()} * fBlockSize + from;
  fpFile->Read(offset * sizeof(double), buffer, count * sizeof(double));
  return buffer;
}

}  // namespace BayesHost
