#include "host/output/SharePath.h"

#include <dlfcn.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace BayesHost {
namespace {

namespace fs = std::filesystem;

bool IsShare(const fs::path& folder) {
  std::error_code ignored;
  return fs::is_regular_file(folder / "strings" / "en.json", ignored);
}

// The folders of the library that holds this code and of the running program.
std::vector<fs::path> BinaryFolders() {
  std::vector<fs::path> folders;
  std::error_code failed;
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&GetSharePath), &info) != 0 && info.dli_fname != nullptr) {
    const fs::path library = fs::canonical(info.dli_fname, failed);
    if (!failed) folders.push_back(library.parent_path());
  }
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  if (!failed) folders.push_back(program.parent_path());
  return folders;
}

fs::path FindBesideBinaries() {
  for (const fs::path& folder : BinaryFolders())
    for (const char* relative : {"../share/bayes", "../share", "../../share"})
      if (IsShare(folder / relative)) return (folder / relative).lexically_normal();
  throw std::runtime_error("The folder share/ is missing beside the program. Set BAYES_SHARE to its path.");
}

}  // namespace

fs::path GetSharePath() {
  if (const char* named = std::getenv("BAYES_SHARE")) {
    if (IsShare(named)) return named;
    throw std::runtime_error(std::string("BAYES_SHARE names a folder without strings/en.json: ") + named);
  }
  static const fs::path beside = FindBesideBinaries();
  return beside;
}

std::string ReadShareFile(const fs::path& relative) {
  const fs::path path = GetSharePath() / relative;
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (!file || !(text << file.rdbuf())) throw std::runtime_error("Can't read " + path.string());
  return text.str();
}

}  // namespace BayesHost
