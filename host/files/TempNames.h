#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace BayesHost {

// The temporary files that were handed out by name; removes them when it ends.
class TempNames {
 public:
  TempNames() = default;
  ~TempNames();
  TempNames(const TempNames&) = delete;
  TempNames& operator=(const TempNames&) = delete;

  // A new, empty file in the temporary folder whose name begins with the prefix; empty when none can be made.
  std::string Make(const std::string& prefix);

 private:
  std::vector<std::filesystem::path> fvNames;
};

}  // namespace BayesHost
