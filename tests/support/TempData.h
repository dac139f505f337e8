// A data file for one test, in a folder of its own; removed with the object.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/data/DataFile.h"

namespace BayesHost {

class TempData {
 public:
  explicit TempData(const std::string& text, const std::string& name = "test.csv") {
    std::string folder = (std::filesystem::temp_directory_path() / "bayes_test_XXXXXX").string();
    fFolder = mkdtemp(folder.data());
    fFile = {fFolder / name, name};
    std::ofstream(fFile.fPath, std::ios::binary) << text;
  }
  ~TempData() { std::filesystem::remove_all(fFolder); }
  TempData(const TempData&) = delete;
  TempData& operator=(const TempData&) = delete;

  const DataFile& GetFile() const { return fFile; }
  const std::filesystem::path& GetFolder() const { return fFolder; }

 private:
  std::filesystem::path fFolder;
  DataFile fFile;
};

}  // namespace BayesHost
