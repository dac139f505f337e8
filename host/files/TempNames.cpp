#include "host/files/TempNames.h"

#include <unistd.h>

#include <cstdlib>

#include "platform/host/Files.h"

namespace BayesHost {

TempNames::~TempNames() {
  std::error_code ignored;
  for (const auto& name : fvNames) std::filesystem::remove(name, ignored);
}

std::string TempNames::Make(const std::string& prefix) {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / (prefix + "XXXXXX")).string();
  const int descriptor = error ? -1 : mkstemp(name.data());
  if (descriptor < 0) return {};
  close(descriptor);
  fvNames.emplace_back(name);
  return name;
}

}  // namespace BayesHost

bool FormTempName(const std::string& prefix, std::string& name) {
  static BayesHost::TempNames names;
  name = names.Make(prefix);
  return !name.empty();
}
