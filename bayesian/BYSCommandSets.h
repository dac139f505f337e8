// Sets of commands, for tables whose rows hold for some of them.
#pragma once

#include "platform/component/Settings.h"

namespace BYSCommandSets {

constexpr unsigned Bit(BSNConst::ModelTypes type) {
  return 1U << static_cast<unsigned>(type);
}
constexpr unsigned kOne = Bit(BSNConst::OneSample);
constexpr unsigned kRel = Bit(BSNConst::Related);
constexpr unsigned kInd = Bit(BSNConst::Independent);
constexpr unsigned kCor = Bit(BSNConst::Correlation);
constexpr unsigned kReg = Bit(BSNConst::Regression);
constexpr unsigned kAnv = Bit(BSNConst::Anova);
constexpr unsigned kLog = Bit(BSNConst::LogLinear);
constexpr unsigned kTests = kOne | kRel | kInd;
constexpr unsigned kModels = kReg | kAnv;
constexpr unsigned kAll = kTests | kCor | kModels | kLog;

}  // namespace BYSCommandSets
