// The numbers of a chart before they become part of its document.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/host/Charts.h"

struct VarDataProcessor::State {
  std::string fDataSource;
  // In the order added; columns may differ in length.
  std::vector<std::pair<std::string, std::vector<double>>> fvColumns;

  std::size_t CountRows() const;
};
