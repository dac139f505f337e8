// What a run shows as a whole: where it comes from, and the documents of its commands.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/output/CommandOutput.h"

namespace BayesHost {

struct DataOrigin {
  std::string fFile;  // as the user named it
  std::uint64_t fBytes = 0;
  std::uint64_t fCases = 0;
  std::uint64_t fVariables = 0;
  std::optional<std::string> fFingerprint;  // XXH3-128 of the file, when asked for
};

struct ReportHead {
  std::string fProgram = "bayes";
  std::string fVersion;
  std::optional<std::uint64_t> fSeed;
  std::optional<DataOrigin> fData;
};

struct Report {
  ReportHead fHead;
  std::vector<std::shared_ptr<const CommandOutput>> fvCommands;
};

}  // namespace BayesHost
