#include "host/data/DataError.h"

#include <fmt/format.h>

namespace BayesHost {

namespace {
std::string Describe(const DataPlace& place) {
  std::string text = place.fFile;
  if (place.fLine > 0) text += fmt::format(", line {}", place.fLine);
  if (place.fColumn > 0) text += fmt::format(", column {}", place.fColumn);
  if (!place.fColumnName.empty()) text += fmt::format(" ({})", place.fColumnName);
  return text;
}
}  // namespace

DataError::DataError(const DataPlace& place, const std::string& text)
    : std::runtime_error(Describe(place) + ": " + text) {}

}  // namespace BayesHost
