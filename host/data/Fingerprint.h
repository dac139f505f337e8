#pragma once

#include <string>

#include "host/data/DataFile.h"
#include "platform/Visibility.h"

namespace BayesHost {

// XXH3-128 of a file's bytes as 32 hexadecimal digits, what xxh128sum shows. Throws DataError when the file
// can't be read.
BAYES_PLATFORM std::string FingerprintFile(const DataFile& file);

}  // namespace BayesHost
