#include "host/data/DataFile.h"

#include <unistd.h>

#include "host/data/DataError.h"

namespace BayesHost {

void CheckFile(const DataFile& file) {
  const auto refuse = [&](const char* text) { throw DataError({file.fName, 0, 0, {}}, text); };
  std::error_code error;
  const auto status = std::filesystem::status(file.fPath, error);
  if (!std::filesystem::exists(status)) refuse("There is no such file. Check the name and the folder.");
  if (std::filesystem::is_directory(status)) refuse("This is a folder. Name the data file in it.");
  if (!std::filesystem::is_regular_file(status)) refuse("This is not a regular file. Save the data to one.");
  if (access(file.fPath.c_str(), R_OK) != 0) refuse("The file can't be opened. Check that you may read it.");
}

}  // namespace BayesHost
