#include "host/data/BlockStore.h"

#include <sys/mman.h>

#include <algorithm>
#include <new>
#include <utility>

namespace BayesHost {

namespace {

constexpr std::size_t kHugePage = std::size_t{1} << 21;
constexpr std::size_t kLargeSlab = 4 * kHugePage;

// Filling memory that is mapped by pages of 4 KB takes longer than reading the values from most files: a
// large slab asks for huge ones. Where there are none the advice does nothing.
double* MakeSlab(std::size_t bytes) {
  const bool isLarge = bytes >= kHugePage;
  const std::size_t whole = (bytes + kHugePage - 1) / kHugePage * kHugePage;
  void* const slab = isLarge ? std::aligned_alloc(kHugePage, whole) : std::malloc(bytes);
  if (slab == nullptr) throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
  if (isLarge) madvise(slab, whole, MADV_HUGEPAGE);
#endif
  return static_cast<double*>(slab);
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

double* BlockStore::TakeRoom() {
  if (fFreeBlocks == 0) {
    const std::size_t bytes = fBlockSize * sizeof(double);
    const std::size_t most = fOpenStays ? std::max<std::size_t>(kLargeSlab / bytes, 1) : 1;
    fFreeBlocks = std::clamp<std::size_t>(fvMemory.size(), 1, most);
    fvSlabs.emplace_back(MakeSlab(fFreeBlocks * bytes));
    fpNext = fvSlabs.back().get();
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
