#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace BayesHost {

// The folder for files that last no longer than the run: TMPDIR, else the system's. Throws std::system_error
// when it is none.
std::filesystem::path GetTempFolder();

// A file without a name in the temporary folder: the system frees it when it is closed, however the process
// ends. Failures throw std::system_error.
class TempFile {
 public:
  TempFile();
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  void Write(std::uint64_t offset, const void* data, std::size_t bytes);
  // All bytes must have been written.
  void Read(std::uint64_t offset, void* data, std::size_t bytes) const;

 private:
  int fDescriptor;
};

}  // namespace BayesHost
