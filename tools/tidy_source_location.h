// For tools/tidy only: clang 14 lacks the builtin behind the standard library's std::source_location.
#pragma once

#include <cstdint>

namespace std {
struct source_location {
  static constexpr source_location current() noexcept { return {}; }
  constexpr std::uint_least32_t line() const noexcept { return 0; }
  constexpr std::uint_least32_t column() const noexcept { return 0; }
  constexpr const char* file_name() const noexcept { return ""; }
  constexpr const char* function_name() const noexcept { return ""; }
};
}  // namespace std
