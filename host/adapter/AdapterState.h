// What the adapter knows of the run, the current split and the current case: the state behind
// ACAInputAdapter, shared with the iterators that drive it.
#pragma once

#include <vector>

#include "host/adapter/CaseBlock.h"
#include "host/adapter/Categories.h"
#include "host/data/DataSet.h"
#include "platform/component/Common.h"
#include "platform/host/Adapter.h"

namespace BayesHost {

struct CaseCounts {
  double fValid = 0;
  double fWeightedValid = 0;
  double fDropped = 0;
  double fWeightedDropped = 0;
};

// Categories and ranges are learnt in pass 0 and stay; counts are those of the split's last reading. There
// may be a hundred thousand splits: nothing is kept here for a slot that needs nothing.
struct SplitData {
  std::vector<Categories> fvCategories;  // of the categorical slots, in their order
  std::vector<ValueRange> fvRanges;      // by slot
  CaseCounts fCounts;
};

}  // namespace BayesHost

struct ACAInputAdapter::State {
  State(ACAVarValidSpecs& varSpecs, BayesHost::DataSet* data) : fVarSpecs(varSpecs), fpData(data) {}

  ACAVarValidSpecs& fVarSpecs;
  BayesHost::DataSet* fpData;  // null: no data set is open
  bool fNamesSplits = false;

  int fPass = 0;
  std::vector<BayesHost::SplitData> fvSplits;
  int fSplit = -1;
  std::vector<const OBS*> fvSplitValues;
  bool fHasRecord = false;  // kept by the iterator: the current split has a record at hand

  // Sizes everything by the slots and the data's splits: once the data are loaded.
  void Prepare();
  BayesHost::SplitData& GetSplit() { return fvSplits[static_cast<std::size_t>(fSplit)]; }
  // Null for a slot that isn't categorical.
  BayesHost::Categories* FindCategories(int slot);
  void EnterSplit(int split);
  // Takes the cursor's run of `count` cases.
  void TakeRun(BayesHost::CaseCursor& cursor, std::size_t count) { fBlock.Take(cursor, count, fPass); }
  // Makes a case of the run the current one.
  BayesHost::CaseFate EnterCase(std::size_t place);
  double GetValue(int slot) { return fBlock.GetValue(static_cast<std::size_t>(slot), fPlace); }
  // Code of a categorical slot's value: -1 when it isn't known, the next code instead in pass 0, where a
  // category is learnt only when its case is accepted.
  double Encode(int slot, double value);
  // Whether a record is what the current case's values make without recoding, to the last bit.
  bool IsCase(const double* record);
  const std::vector<int>& GetNumericSlots() const { return fvNumeric; }
  const std::vector<int>& GetFreeSlots() const { return fvFree; }
  void Accept();
  void CountDropped();
  // The same for all cases of the run from this one on.
  void AcceptRun(std::size_t from);
  // A slot's values in the accepted ones of these cases.
  void CopyRun(int slot, std::vector<double>& values);

 private:
  void PrepareSlots();
  void CountValid(double cases);
  void Count(BayesHost::CaseFate fate);
  void Learn();
  void LearnRun();
  void LearnCategory(int slot, double value);

  std::vector<int> fvNumeric;  // slots, free ones among them
  std::vector<int> fvFree;
  std::vector<int> fvPlaceOfCategories;  // by slot
  int fWeightSlot = -1;
  BayesHost::CaseBlock fBlock;
  std::size_t fPlace = 0;    // of the current case
  std::size_t fRunFrom = 0;  // where the cases that were accepted at once begin
  double fWeight = 1;
};

// Called for every case.

inline BayesHost::CaseFate ACAInputAdapter::State::EnterCase(std::size_t place) {
  fPlace = place;
  fWeight = fWeightSlot < 0 ? 1 : GetValue(fWeightSlot);
  return fBlock.GetFate(place);
}

inline void ACAInputAdapter::State::CountDropped() {
  GetSplit().fCounts.fDropped += 1;
  GetSplit().fCounts.fWeightedDropped += fWeight;
}

// Of that many cases with the weight of the current one.
inline void ACAInputAdapter::State::CountValid(double cases) {
  GetSplit().fCounts.fValid += cases;
  GetSplit().fCounts.fWeightedValid += cases * fWeight;
}

inline void ACAInputAdapter::State::Accept() {
  CountValid(1);
  if (fPass == 0) Learn();
}
