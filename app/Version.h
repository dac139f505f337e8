#pragma once

namespace BayesApp {

// Also the project's version in CMakeLists.txt, which defines it.
inline constexpr const char* kVersion = BAYES_VERSION;

}  // namespace BayesApp
