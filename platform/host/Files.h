// Files beside the active data set.
#pragma once

#include <string>

#include "platform/Visibility.h"

// A name, with this prefix, for a temporary file that the host removes when the run ends. False when no such
// file can be made.
BAYES_PLATFORM bool FormTempName(const std::string& prefix, std::string& name);
