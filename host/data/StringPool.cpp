#include "host/data/StringPool.h"

namespace BayesHost {

namespace {
std::string_view TrimEnd(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}
}  // namespace

double StringPool::Find(std::string_view text) const {
  const auto known = fCodes.find(TrimEnd(text));
  return known == fCodes.end() ? -1 : known->second;
}

double StringPool::Encode(std::string_view text) {
  text = TrimEnd(text);
  const auto known = fCodes.find(text);
  if (known != fCodes.end()) return known->second;
  const auto code = static_cast<double>(fStrings.size());
  fStrings.emplace_back(text);
  fCodes.emplace(fStrings.back(), code);
  return code;
}

}  // namespace BayesHost
