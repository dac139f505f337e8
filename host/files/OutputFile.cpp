#include "host/files/OutputFile.h"

#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>
#include <system_error>

namespace BayesHost {

namespace {

[[noreturn]] void ThrowLastError(const std::filesystem::path& target) {
  throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), target.string());
}

std::filesystem::path NameBeside(const std::filesystem::path& target) {
  static std::atomic<unsigned> count{0};
  const std::string suffix = "." + std::to_string(getpid()) + "." + std::to_string(++count) + ".tmp";
  return target.parent_path() / ("." + target.filename().string() + suffix);
}

bool IsSpecial(const std::filesystem::path& target) {
  return std::filesystem::exists(target) && !std::filesystem::is_regular_file(target);
}

}  // namespace

OutputFile::OutputFile(const std::filesystem::path& target)
    : fTarget(std::filesystem::weakly_canonical(target)),
      fTemporary(IsSpecial(fTarget) ? fTarget : NameBeside(fTarget)) {
  errno = 0;
  fStream.open(fTemporary, std::ios::binary | std::ios::trunc);
  if (!fStream) ThrowLastError(fTarget);
}

OutputFile::~OutputFile() {
  if (fTemporary.empty() || fTemporary == fTarget) return;
  fStream.close();
  std::error_code ignored;
  std::filesystem::remove(fTemporary, ignored);
}

// A write that failed before has left its reason in errno.
void OutputFile::Commit() {
  if (fStream) errno = 0;
  fStream.close();
  if (!fStream) ThrowLastError(fTarget);
  if (fTemporary != fTarget) std::filesystem::rename(fTemporary, fTarget);
  fTemporary.clear();
}

}  // namespace BayesHost
