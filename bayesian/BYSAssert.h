// Assertions of the module. A broken one is a programming error, in every build: it ends the process with the
// source's name, the line, the function and the condition.
#pragma once

#include <source_location>

namespace BYS {

// `condition` false ends the process; `text` is the condition as it is reported.
void Assert(bool condition, const char* source, const char* text,
            std::source_location where = std::source_location::current());

}  // namespace BYS
