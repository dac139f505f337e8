#pragma once

#include "platform/host/Data.h"

namespace BayesHost {

// The order of two values of one variable: numbers by size, the missing value first; strings by bytes.
inline bool IsLess(const OBS& a, const OBS& b) {
  return a.IsString() ? a.GetString() < b.GetString() : a.GetNumber() < b.GetNumber();
}

}  // namespace BayesHost
