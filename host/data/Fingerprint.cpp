#include "host/data/Fingerprint.h"

#include <fmt/format.h>
#include <xxhash.h>

#include <fstream>
#include <memory>
#include <vector>

#include "host/data/DataError.h"

namespace BayesHost {

namespace {
struct FreeState {
  void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};
}  // namespace

std::string FingerprintFile(const DataFile& file) {
  CheckFile(file);
  const std::unique_ptr<XXH3_state_t, FreeState> state(XXH3_createState());
  XXH3_128bits_reset(state.get());
  std::ifstream stream(file.fPath, std::ios::binary);
  std::vector<char> buffer(std::size_t{1} << 20);
  while (stream) {
    stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    XXH3_128bits_update(state.get(), buffer.data(), static_cast<std::size_t>(stream.gcount()));
  }
  if (stream.bad())
    throw DataError({file.fName, 0, 0, {}}, "The file can't be read to its end. Copy it anew.");
  const XXH128_hash_t hash = XXH3_128bits_digest(state.get());
  return fmt::format("{:016x}{:016x}", hash.high64, hash.low64);
}

}  // namespace BayesHost
