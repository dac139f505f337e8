#include "host/data/TextInput.h"

#include <zlib.h>

#include <fstream>

namespace BayesHost {

struct TextInput::State {
  explicit State(gzFile file) : fpFile(file) {}
  ~State() { gzclose_r(fpFile); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  gzFile fpFile;
};

TextInput::TextInput(const std::filesystem::path& file) {
  constexpr unsigned kBufferBytes = 1U << 17U;
  if (gzFile opened = gzopen(file.c_str(), "rb")) {
    gzbuffer(opened, kBufferBytes);
    fpState = std::make_unique<State>(opened);
  }
}

TextInput::~TextInput() = default;
TextInput::TextInput(TextInput&&) noexcept = default;
TextInput& TextInput::operator=(TextInput&&) noexcept = default;

// A single read of the library returns less than is asked for at the end of the file only.
std::size_t TextInput::Read(char* buffer, std::size_t bytes) {
  if (!IsOpen()) return 0;
  const int got = gzread(fpState->fpFile, buffer, static_cast<unsigned>(bytes));
  int status = Z_OK;
  gzerror(fpState->fpFile, &status);
  fDamaged |= got < 0 || status == Z_BUF_ERROR || status == Z_DATA_ERROR;
  return got < 0 ? 0 : static_cast<std::size_t>(got);
}

bool TextInput::IsArchive(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return stream.get() == 0x1F && stream.get() == 0x8B;
}

}  // namespace BayesHost
