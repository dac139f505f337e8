// Characters of UTF-8 text, as far as the lexer needs them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace BayesHost {

struct Utf8Character {
  char32_t fCode = 0;
  std::size_t fSize = 1;  // in bytes
  bool fValid = true;     // false: one byte that belongs to no character

  // A letter of any script, or a mark that belongs to one; digits of ASCII are none.
  bool IsLetter() const;
};

// The character at a place of the text, 0 <= position < text.size().
Utf8Character ReadUtf8(std::string_view text, std::size_t position);

// The character for a message, beyond ASCII with its code ("× (U+00D7)"); only the code when it shows
// nothing.
std::string ShowCharacter(std::string_view text, std::size_t position);

}  // namespace BayesHost
