// Where the files of share/ lie on this machine.
#pragma once

#include <filesystem>
#include <string>

#include "platform/Visibility.h"

namespace BayesHost {

// The folder that holds strings/, charts/ and html/. In this order: the folder that the environment variable
// BAYES_SHARE names; beside the library or program that this code is in, `../share/bayes` (installed),
// `../share` (unpacked) and `../../share` (a build folder inside the source tree). Throws std::runtime_error
// when none of them is one.
BAYES_PLATFORM std::filesystem::path GetSharePath();

// The text of a file under it; std::runtime_error when it can't be read.
BAYES_PLATFORM std::string ReadShareFile(const std::filesystem::path& relative);

}  // namespace BayesHost
