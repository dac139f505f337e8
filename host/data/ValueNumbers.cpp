#include "host/data/ValueNumbers.h"

#include <cmath>

namespace BayesHost {

namespace {
constexpr int kUnknown = -1;
// The table stays in proportion to the values seen.
constexpr int kLeastDense = 64;
constexpr int kDensePerValue = 8;
}  // namespace

bool ValueNumbers::IsDense(double value) const {
  return value >= 0 && value < kLeastDense + kDensePerValue * static_cast<double>(fCount) &&
         std::trunc(value) == value;
}

int ValueNumbers::Find(double value) const {
  const bool inTable = value >= 0 && value < static_cast<double>(fvDense.size());
  const auto place = inTable ? static_cast<std::size_t>(value) : 0;
  if (inTable && static_cast<double>(place) == value && fvDense[place] != kUnknown) return fvDense[place];
  const auto known = fOthers.find(value);
  return known == fOthers.end() ? kUnknown : known->second;
}

int ValueNumbers::Add(double value) {
  const int known = Find(value);
  if (known != kUnknown) return known;
  if (IsDense(value)) {
    const auto place = static_cast<std::size_t>(value);
    if (place >= fvDense.size()) fvDense.resize(place + 1, kUnknown);
    fvDense[place] = fCount;
  } else {
    fOthers.emplace(value, fCount);
  }
  return fCount++;
}

}  // namespace BayesHost
