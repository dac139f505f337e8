#include "host/data/BlockStore.h"

#include <sys/mman.h>

#include <algorithm>
#include <new>
#include <utility>

namespace BayesHost {

namespace {

constexpr std::size_t kPage = Slab::kPageDoubles * sizeof(double);
constexpr std::size_t kLargeSlab = std::size_t{1} << 20;

}  // namespace

Slab::Slab(std::size_t doubles) {
  const std::size_t pages = (doubles + kPageDoubles - 1) / kPageDoubles;
  fpDoubles.reset(static_cast<double*>(std::aligned_alloc(kPage, pages * kPage)));
  if (fpDoubles == nullptr) throw std::bad_alloc();
}

// One call of the kernel for all pages takes a third less time than a fault for each; a kernel that doesn't
// know this advice does nothing.
void Slab::Populate([[maybe_unused]] std::size_t begin, [[maybe_unused]] std::size_t end) const {
#ifdef MADV_POPULATE_WRITE
  if (begin < end) madvise(Get() + begin, (end - begin) * sizeof(double), MADV_POPULATE_WRITE);
#endif
}

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
    fvSlabs.emplace_back(fFreeBlocks * fBlockSize);
    fpNext = fvSlabs.back().Get();
    if (!fvMemory.empty()) fvSlabs.back().Populate(0, fFreeBlocks * fBlockSize);
  }
  --fFreeBlocks;
  return std::exchange(fpNext, fpNext + fBlockSize);
}

void BlockStore::Close() {
  if (std::exchange(fOpenStays, false)) {
    fvMemory.push_back(std::exchange(fpOpen, nullptr));
    return;
  }
  Spill(fpOpen, 1);
}

void BlockStore::Add(Slab slab, std::size_t blocks) {
  const bool stays = !IsSpilled() && fBudget.Reserve(blocks * fBlockSize * sizeof(double));
  if (!stays) return Spill(slab.Get(), blocks);
  for (std::size_t i = 0; i < blocks; ++i) fvMemory.push_back(slab.Get() + i * fBlockSize);
  fvSlabs.push_back(std::move(slab));
}

void BlockStore::Spill(const double* doubles, std::size_t blocks) {
  const std::size_t bytes = fBlockSize * sizeof(double);
  if (!fpFile) fpFile = std::make_unique<TempFile>();
  fpFile->Write(std::uint64_t{fSpilled} * bytes, doubles, blocks * bytes);
  fSpilled += blocks;
}

const double* BlockStore::Read(std::size_t block, std::size_t from, std::size_t count, double* buffer) const {
  if (block < fvMemory.size()) return fvMemory[block] + from;
  const std::uint64_t offset = std::uint64_t{block - fvMemory.size()} * fBlockSize + from;
  fpFile->Read(offset * sizeof(double), buffer, count * sizeof(double));
  return buffer;
}

}  // namespace BayesHost
