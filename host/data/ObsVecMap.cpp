#include <algorithm>

#include "platform/host/Data.h"

ObsVecMap::KeySpec ObsVecMap::MakeKeySpec(const std::vector<int>& factors,
                                          const ProcedureDataSource& dataSource, bool ascending) {
  KeySpec spec;
  for (int factor : factors) spec.fvIsString.push_back(dataSource.GetVariable(factor).IsString());
  spec.fAscending = ascending;
  return spec;
}

ObsVecMap::ObsVecMap(const KeySpec& keySpec) : fAscending(keySpec.fAscending) {
  for (bool isString : keySpec.fvIsString) {
    fvFactors.push_back({std::set<const OBS*, Less>(Less{isString}), {}});
  }
}

bool ObsVecMap::Contains(std::size_t factor, const OBS& value) const {
  return fvFactors[factor].fKnown.contains(&value);
}

void ObsVecMap::Insert(std::size_t factor, const OBS* value) {
  fvFactors[factor].fKnown.insert(value);
}

void ObsVecMap::Sort() {
  for (Factor& factor : fvFactors) {
    factor.fvSorted.assign(factor.fKnown.begin(), factor.fKnown.end());
    if (!fAscending) std::reverse(factor.fvSorted.begin(), factor.fvSorted.end());
  }
}

const std::vector<const OBS*>& ObsVecMap::GetValues(std::size_t factor) const {
  return fvFactors[factor].fvSorted;
}

bool ObsVecMap::Less::operator()(const OBS* a, const OBS* b) const {
  return fIsString ? a->GetString() < b->GetString() : a->GetNumber() < b->GetNumber();
}
