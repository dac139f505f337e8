#include "bayesian/BYSAssert.h"

#include <cstdio>
#include <cstdlib>

namespace BYS {

void Assert(bool condition, const char* source, const char* text, std::source_location where) {
  if (condition) return;
  std::fprintf(stderr, "%s:%u: %s: Assertion `%s' failed.\n", source, static_cast<unsigned>(where.line()),
               where.function_name(), text);
  std::abort();
}

}  // namespace BYS
