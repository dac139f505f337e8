#pragma once

#include <filesystem>
#include <string>

namespace BayesHost {

// Where a data file lies, and what the user calls it: messages and reports use the second.
struct DataFile {
  std::filesystem::path fPath;
  std::string fName;
};

// Throws DataError when there is no such file, or it is a folder or a device, or may not be read.
void CheckFile(const DataFile& file);

}  // namespace BayesHost
