// What lies behind a BpCellText.
#pragma once

#include <optional>

#include "host/output/PivotTable.h"
#include "host/output/StringTable.h"
#include "platform/host/Output.h"

// For a composite under construction, the key and the arguments so far; what it shows is made by Finish.
struct BpCellText::State {
  BayesHost::ShownText fShown;
  std::optional<double> fNumber;

  bool fIsTranslatable = false;
  bool fIsFinished = true;
  bool fIsListOpen = false;
  BayesHost::Arguments fvArguments;
  std::vector<BayesHost::ShownText> fvParts;  // in the order of Add
};

namespace BayesHost {

// std::logic_error for a composite that isn't finished.
const ShownText& GetShown(const BpCellText& text);

}  // namespace BayesHost
