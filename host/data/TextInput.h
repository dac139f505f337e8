#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

namespace BayesHost {

// The bytes of a text file from its beginning; those of a gzip archive are unpacked on the way.
class TextInput {
 public:
  // A file that can't be opened gives no bytes.
  explicit TextInput(const std::filesystem::path& file);
  ~TextInput();
  TextInput(TextInput&&) noexcept;
  TextInput& operator=(TextInput&&) noexcept;

  bool IsOpen() const { return fpState != nullptr; }
  // Fills the buffer as far as the file reaches; the number of bytes read.
  std::size_t Read(char* buffer, std::size_t bytes);
  // True once an archive turned out to be cut short or damaged.
  bool IsDamaged() const { return fDamaged; }

  static bool IsArchive(const std::filesystem::path& file);

 private:
  struct State;
  std::unique_ptr<State> fpState;
  bool fDamaged = false;
};

}  // namespace BayesHost
