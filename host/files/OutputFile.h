#pragma once

#include <filesystem>
#include <fstream>

#include "platform/Visibility.h"

namespace BayesHost {

// A file that appears whole or not at all: it is written under a temporary name beside its place and renamed
// by Commit. Without a Commit nothing remains, and a file that stood there before is untouched. A target that
// is no regular file (a device, a pipe) is written directly.
class BAYES_PLATFORM OutputFile {
 public:
  // Throws std::system_error naming the target when its folder can't be written to.
  explicit OutputFile(const std::filesystem::path& target);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::ostream& Stream() { return fStream; }
  // Where to write for those who can't write to the stream: then nothing must go to the stream.
  const std::filesystem::path& GetPath() const { return fTemporary; }
  // Throws std::system_error naming the target when not everything could be written.
  void Commit();

 private:
  std::filesystem::path fTarget;
  std::filesystem::path fTemporary;  // the target itself when that is written directly; empty once committed
  std::ofstream fStream;
};

}  // namespace BayesHost
