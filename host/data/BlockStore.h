#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "host/files/TempFile.h"

namespace BayesHost {

// The bytes that the data of a run may hold in memory, shared by all that store data.
class MemoryBudget {
 public:
  explicit MemoryBudget(std::size_t bytes) : fFree(bytes) {}
  bool Reserve(std::size_t bytes) {
    if (bytes > fFree) return false;
    fFree -= bytes;
    return true;
  }
  void Release(std::size_t bytes) { fFree += bytes; }

 private:
  std::size_t fFree;
};

// Memory for doubles by whole pages, not filled yet.
class Slab {
 public:
  // Throws std::bad_alloc.
  explicit Slab(std::size_t doubles);

  double* Get() const { return fpDoubles.get(); }
  // Readies the pages that doubles [begin, end) lie in: sooner done than by a fault for each of them. Both
  // must be multiples of kPageDoubles, or the slab's end.
  void Populate(std::size_t begin, std::size_t end) const;

  static constexpr std::size_t kPageDoubles = 512;

 private:
  struct Free {
    void operator()(double* doubles) const { std::free(doubles); }
  };
  std::unique_ptr<double, Free> fpDoubles;
};

// A growing list of equal blocks of doubles: the first ones in memory while the budget lasts, all later ones
// in a temporary file. Memory is taken by slabs of blocks, ever larger ones while they are small.
class BlockStore {
 public:
  // The budget must outlive the store.
  BlockStore(MemoryBudget& budget, std::size_t blockSize);
  ~BlockStore();
  BlockStore(const BlockStore&) = delete;
  BlockStore& operator=(const BlockStore&) = delete;

  std::size_t GetBlockSize() const { return fBlockSize; }
  std::size_t CountBlocks() const { return fvMemory.size() + fSpilled; }
  bool IsSpilled() const { return fSpilled > 0; }

  // Room for the next block, GetBlockSize() doubles, to be filled before Close adds it to the list. Asked for
  // again before Close, it is the same room.
  double* Open();
  void Close();
  // Adds the first `blocks` blocks of a slab, all filled: they stay where they are if the budget has room for
  // all of them. No block may be open.
  void Add(Slab slab, std::size_t blocks);
  // `count` doubles of a block from position `from` on: the store's own memory, or `buffer` (room for `count`
  // doubles), filled from the file.
  const double* Read(std::size_t block, std::size_t from, std::size_t count, double* buffer) const;

 private:
  double* TakeRoom();
  void Spill(const double* doubles, std::size_t blocks);

  MemoryBudget& fBudget;
  std::size_t fBlockSize;
  std::vector<Slab> fvSlabs;
  double* fpNext = nullptr;  // in the last slab
  std::size_t fFreeBlocks = 0;
  std::vector<double*> fvMemory;  // blocks
  double* fpOpen = nullptr;
  bool fOpenStays = false;  // in memory; else it goes to the file
  std::unique_ptr<TempFile> fpFile;
  std::size_t fSpilled = 0;
};

}  // namespace BayesHost
