#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/data/CaseCursor.h"
#include "host/data/DataFile.h"
#include "host/data/Engine.h"
#include "host/data/OpenTable.h"
#include "host/data/SplitIndex.h"
#include "host/data/StringPool.h"
#include "host/data/TableSource.h"
#include "platform/Visibility.h"
#include "platform/host/Data.h"

namespace BayesHost {

// A data file: its variables, the columns read so far, the split and weight variables in force. Opening reads
// the dictionary only; columns are read, together and once, when a command first needs them.
//
// A loaded value is a double: a number, or the code of a string in its column's pool; the missing value for
// both.
class BAYES_PLATFORM DataSet {
 public:
  using StopQuery = std::function<bool()>;
  struct Limits {
    std::size_t fMemoryBytes = std::size_t{1} << 30;
    int fThreads = 1;
    bool fIsToBeRead = false;  // cases will be read: with several threads the engine opens ahead
    StopQuery fStop = {};      // whether the user wants to stop; asked on any thread
    bool IsStopped() const { return fStop && fStop(); }
  };

  // Throws DataError.
  DataSet(DataFile file, const Limits& limits, const DataOptions& options = {});
  ~DataSet();
  DataSet(const DataSet&) = delete;
  DataSet& operator=(const DataSet&) = delete;

  const DataFile& GetFile() const { return fFile; }
  const std::string& GetFileName() const { return fFile.fName; }
  std::uint64_t GetFileBytes() const { return fFileBytes; }
  int CountVariables() const { return static_cast<int>(fVariables.size()); }
  int CountFileVariables() const { return static_cast<int>(fFileVariables); }
  const ZARQ_Variable& GetVariable(int index) const { return fVariables[static_cast<std::size_t>(index)]; }
  // Index of the variable with this name, or else of the only one whose name differs in case alone; -1 for
  // none.
  int FindVariable(std::string_view name) const;

  // Adds a numeric variable without a name, missing in every case until GiveValues.
  ZARQ_Variable& MakeVariable();
  // The made variables that have no values yet.
  std::vector<int> ListUnfilled() const;
  // Values of made variables, a case to a row, in the order of the splits in force. Throws std::system_error.
  void GiveValues(const std::vector<int>& variables, std::unique_ptr<ColumnStore> store);

  // The split variables in force, outermost first; empty turns split files off.
  void SetSplit(std::vector<int> variables);
  const std::vector<int>& GetSplit() const { return fvSplit; }
  // The frequency weight, -1 turns weighting off. Throws DataError when the variable is a string.
  void SetWeight(int variable);
  int GetWeight() const { return fWeight; }

  // Names columns that the next Load must read.
  void Require(const std::vector<int>& variables);
  // Names columns that later commands will want: the next Load that reads the file at all reads them along,
  // so that a text file is parsed once, unless they are damaged.
  void Expect(const std::vector<int>& variables);
  // Reads what is required and the split and weight variables, as far as not read before. False when the user
  // wants to stop: nothing was added then. Throws DataError.
  bool Load();
  // Reads a column if none has been read.
  std::uint64_t CountCases();

  // The rest is for loaded columns.
  // The splits in force, in order; without split variables one that holds all cases.
  const std::vector<SplitIndex::Group>& GetGroups();
  // Cases in the order of the splits; SetRange chooses a split's.
  CaseCursor MakeCursor(const std::vector<int>& variables);
  // Cases in the order of the file, whatever the splits.
  CaseCursor MakeFileCursor(const std::vector<int>& variables) const {
    return CaseCursor(FindPlaces(variables));
  }
  const StringPool& GetStrings(int variable) const { return fvPools[static_cast<std::size_t>(variable)]; }
  // The value that a number of this variable's column stands for.
  OBS Decode(int variable, double value) const;
  // The number that stands for a value in this variable's column; the missing value when the column has no
  // such string, or the value is of the other kind.
  double Encode(int variable, const OBS& value) const;

  // What all stores of the run's data draw on.
  MemoryBudget& GetBudget() { return fBudget; }

 private:
  void FillWithMissing(const std::vector<int>& variables);
  std::vector<int> ListUnread(std::vector<int> wanted) const;
  bool LoadColumns(const std::vector<int>& variables);
  bool ReadColumns(const std::vector<int>& variables, ColumnStore& store);
  bool TakeRows(const Engine::Stream& stream, const std::vector<int>& variables, ColumnStore& store);
  void EncodeStrings(const std::string_view* texts, std::size_t count, StringPool& pool, double* codes);
  void Adopt(const std::vector<int>& variables, std::unique_ptr<ColumnStore> store);
  std::vector<ColumnPlace> FindPlaces(const std::vector<int>& variables) const;
  void SortColumns(const std::vector<int>& variables);
  int CountSortThreads() const;
  std::unique_ptr<ColumnStore> Rearrange(const ColumnPlace& column, std::span<const std::uint32_t> places);

  DataFile fFile;
  std::uint64_t fFileBytes = 0;
  Limits fLimits;
  MemoryBudget fBudget;
  Engine fEngine;
  std::unique_ptr<TableSource> fpSource;
  std::deque<ZARQ_Variable> fVariables;  // those of the file, then those made; each stays in place
  std::size_t fFileVariables;
  std::vector<int> fvSplit;
  int fWeight = -1;
  std::vector<int> fvRequired;
  std::vector<int> fvExpected;
  std::vector<std::unique_ptr<ColumnStore>> fvStores;
  std::vector<ColumnPlace> fvPlaces;                    // of each variable
  std::vector<StringPool> fvPools;                      // of each variable, empty for numeric ones
  std::unique_ptr<SplitIndex> fpIndex;                  // made when first asked for
  std::map<int, std::unique_ptr<ColumnStore>> fSorted;  // columns in the order of the splits in force
  std::size_t fSortBlocks;                              // of a column that sorting holds in memory at a time
  std::uint64_t fCases = 0;
};

}  // namespace BayesHost
