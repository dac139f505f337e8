#pragma once

#include <filesystem>
#include <string>

namespace BayesHost {

// Where a data file lies, and what the user calls it: messages and reports use the second.
struct DataFile {
  std::filesystem::path fPath;
  std::string fName;
};

}  // namespace BayesHost
