#include "host/files/TempFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace BayesHost {

namespace {

[[noreturn]] void ThrowLastError(const char* text) {
  throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), text);
}

// Moves all bytes, however many the system takes at a time. `move` is pread or pwrite.
template <typename Move, typename Byte>
void MoveAll(Move move, int descriptor, Byte* data, std::size_t bytes, std::uint64_t offset,
             const char* text) {
  while (bytes > 0) {
    errno = 0;
    const ssize_t done = move(descriptor, data, bytes, static_cast<off_t>(offset));
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) ThrowLastError(text);
    data += done;
    offset += static_cast<std::uint64_t>(done);
    bytes -= static_cast<std::size_t>(done);
  }
}

constexpr const char* kNotMade =
    "A temporary file can't be made: set TMPDIR to a folder that can be written to, or raise --memory";
constexpr const char* kNotWritten =
    "A temporary file can't be written: set TMPDIR to a folder with more space, or raise --memory";

}  // namespace

std::filesystem::path GetTempFolder() {
  std::error_code error;
  std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) throw std::system_error(error, "The temporary folder can't be used: set TMPDIR to one that can");
  return folder;
}

TempFile::TempFile() {
  std::string name = (GetTempFolder() / "bayes_XXXXXX").string();
  fDescriptor = mkstemp(name.data());
  if (fDescriptor < 0) ThrowLastError(kNotMade);
  unlink(name.c_str());
}

TempFile::~TempFile() {
  close(fDescriptor);
}

void TempFile::Write(std::uint64_t offset, const void* data, std::size_t bytes) {
  MoveAll(pwrite, fDescriptor, static_cast<const char*>(data), bytes, offset, kNotWritten);
}

void TempFile::Read(std::uint64_t offset, void* data, std::size_t bytes) const {
  MoveAll(pread, fDescriptor, static_cast<char*>(data), bytes, offset, "a temporary file can't be read");
}

}  // namespace BayesHost
