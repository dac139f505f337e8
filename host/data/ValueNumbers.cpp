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

int ValueNumbers::FindDense(double value) const {
  const bool inTable = value >= 0 && value < static_cast<double>(fvDense.size());
  const auto place = inTable ? static_cast<std::size_t>(value) : 0;
  return inTable && static_cast<double>(place) == value ? fvDense[place] : kUnknown;
}

int ValueNumbers::Find(double value) const {
  const int dense = FindDense(value);
  if (dense != kUnknown) return dense;
  const auto known = fOthers.find(value);
  return known == fOthers.end() ? kUnknown : known->second;
}

// A value that the table was too short for when it came first moves there when it comes again.
int ValueNumbers::Add(double value) {
  const int dense = FindDense(value);
  if (dense != kUnknown) return dense;
  const auto known = fOthers.find(value);
  const int number = known == fOthers.end() ? fCount++ : known->second;
  if (IsDense(value)) {
    const auto place = static_cast<std::size_t>(value);
    if (place >= fvDense.size()) fvDense.resize(place + 1, kUnknown);
    fvDense[place] = number;
    if (known != fOthers.end()) fOthers.erase(known);
  } else if (known == fOthers.end()) {
    fOthers.emplace(value, number);
  }
  return number;
}

}  // namespace BayesHost
