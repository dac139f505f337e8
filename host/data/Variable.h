// The dictionary entry of a variable, as the host keeps it behind ZARQ_Variable.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/host/Data.h"

struct ZARQ_Variable::State {
  enum class Level { Nominal = 1, Ordinal = 2, Scale = 3 };

  std::string fName;
  std::string fLabel;  // empty: none
  ZARQ_Format fFormat;
  ZARQ_Format fWriteFormat;
  bool fIsString = false;
  int fWidth = 8;  // bytes of a string variable's longest value, 8 for a numeric one
  Level fLevel = Level::Scale;
  std::vector<std::pair<OBS, std::string>> fvValueLabels;
  std::vector<OBS> fvUserMissing;
  // Of a text variable with numbers in it: the cell that made it one, and what to do about it.
  std::string fTextReason;
};

namespace BayesHost {

// Type code of a string variable's print format; 5 is the plain numeric one.
inline constexpr std::uint8_t kStringFormat = 1;

using VariableState = ZARQ_Variable::State;

}  // namespace BayesHost
