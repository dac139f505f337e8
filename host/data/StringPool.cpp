#include "host/data/StringPool.h"

namespace BayesHost {

double StringPool::Encode(std::string_view text) {
  text = text.substr(0, text.find_last_not_of(' ') + 1);
  const auto known = fCodes.find(text);
  if (known != fCodes.end()) return known->second;
  const auto code = static_cast<double>(fStrings.size());
  fStrings.emplace_back(text);
  fCodes.emplace(fStrings.back(), code);
  return code;
}

}  // namespace BayesHost
