// The slots of a record: the state behind ACAVarValidSpecs.
#pragma once

#include <vector>

#include "platform/host/Adapter.h"

namespace BayesHost {

struct RecordSlot {
  int fVariable = -1;  // dictionary index, negative for a free slot
  bool fCategorical = false;
  bool fMissingPasses = true;
  bool fMissingPassesInLastPass = true;
  bool fUserMissingIsMissing = true;

  bool IsFree() const { return fVariable < 0; }
};

}  // namespace BayesHost

struct ACAVarValidSpecs::State {
  std::vector<BayesHost::RecordSlot> fvSlots;
  std::vector<int> fvCategorical;  // slots, ascending
  int fWeightSlot = -1;
};
