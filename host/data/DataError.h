#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "platform/Visibility.h"

namespace BayesHost {

// Where in a data file something is wrong. Lines and columns count from 1; 0: not tied to one.
struct DataPlace {
  std::string fFile;
  std::uint64_t fLine = 0;
  int fColumn = 0;
  std::string fColumnName;
};

// A data file that can't be used as it is. The text names the place, says what was found and expected, and
// how to mend it.
class BAYES_PLATFORM DataError : public std::runtime_error {
 public:
  DataError(const DataPlace& place, const std::string& text);
};

}  // namespace BayesHost
