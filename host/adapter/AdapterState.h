// What the adapter knows of the run, the current split and the current case: the state behind
// ACAInputAdapter, shared with the iterators that drive it.
#pragma once

#include <vector>

#include "host/adapter/Categories.h"
#include "host/data/DataSet.h"
#include "platform/component/Common.h"
#include "platform/host/Adapter.h"

namespace BayesHost {

struct ValueRange {
  double fMin = MCCommon_850::MCMV::Missing();
  double fMax = MCCommon_850::MCMV::Missing();
  void Add(double value);
};

struct CaseCounts {
  double fValid = 0;
  double fWeightedValid = 0;
  double fDropped = 0;
  double fWeightedDropped = 0;
};

// Categories and ranges are learnt in pass 0 and stay; counts are those of the split's last reading.
struct SplitData {
  std::vector<Categories> fvCategories;  // by slot; empty for numeric and free slots
  std::vector<ValueRange> fvRanges;      // by slot
  CaseCounts fCounts;
};

// The pass in which cases take values.
inline constexpr int kScoringPass = 2;

enum class CaseFate { Uncounted, Dropped, Kept };

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

  // The current case by slot: numbers, and for categorical slots the numbers that Categories knows. What the
  // slot's rules call missing is the missing value.
  std::vector<double> fvCase;
  double fWeight = 1;
  std::vector<std::vector<double>> fvUserMissing;  // by slot

  // Sizes everything by the slots and the data's splits: once the data are loaded.
  void Prepare();
  BayesHost::SplitData& GetSplit() { return fvSplits[static_cast<std::size_t>(fSplit)]; }
  void EnterSplit(int split);
  // Takes a case from the columns (one value for each slot that has a variable, in slot order): weight, then
  // the missing rules.
  BayesHost::CaseFate TakeCase(const double* values);
  void Accept();
  void CountDropped();

 private:
  bool TakeWeight(double weight);
  bool IsMissing(std::size_t slot, double value) const;
  void Learn(BayesHost::SplitData& split);
};
