#include "host/parser/Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace BayesHost {
namespace {

struct LeadByte {
  unsigned char fMask;
  unsigned char fPattern;
  std::size_t fSize;
  char32_t fSmallest;  // smaller codes in that many bytes are overlong
};
constexpr LeadByte kLeadBytes[] = {
    {0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

struct CodeRange {
  char32_t fFirst;
  char32_t fLast;
};

// Beyond ASCII, neither letters nor their marks: signs, spaces, punctuation, arrows, symbols, private use.
constexpr CodeRange kNoLetters[] = {{0x80, 0xA9},     {0xAB, 0xB4},     {0xB6, 0xB9},     {0xBB, 0xBF},
                                    {0xD7, 0xD7},     {0xF7, 0xF7},     {0x2000, 0x206F}, {0x20A0, 0x20CF},
                                    {0x2190, 0x2BFF}, {0x3000, 0x3004}, {0x3008, 0x3020}, {0xD800, 0xF8FF},
                                    {0xFE10, 0xFE1F}, {0xFE30, 0xFE6F}, {0xFF01, 0xFF0F}, {0xFFE0, 0xFFFF}};

// Controls and spaces that show nothing.
constexpr CodeRange kInvisible[] = {{0x00, 0x20},     {0x7F, 0xA0},     {0xAD, 0xAD},     {0x2000, 0x200F},
                                    {0x2028, 0x202F}, {0x205F, 0x206F}, {0x3000, 0x3000}, {0xFEFF, 0xFEFF}};

template <std::size_t N>
bool IsIn(char32_t code, const CodeRange (&ranges)[N]) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [code](CodeRange range) { return range.fFirst <= code && code <= range.fLast; });
}

}  // namespace

bool Utf8Character::IsLetter() const {
  if (!fValid) return false;
  if (fCode < 0x80) return (fCode >= U'A' && fCode <= U'Z') || (fCode >= U'a' && fCode <= U'z');
  return !IsIn(fCode, kNoLetters);
}

Utf8Character ReadUtf8(std::string_view text, std::size_t position) {
  const auto byteAt = [&](std::size_t i) -> unsigned {
    return static_cast<unsigned char>(text[position + i]);
  };
  const Utf8Character invalid{byteAt(0), 1, false};
  const auto lead = std::find_if(std::begin(kLeadBytes), std::end(kLeadBytes), [&](const LeadByte& entry) {
    return (byteAt(0) & entry.fMask) == entry.fPattern;
  });
  if (lead == std::end(kLeadBytes) || position + lead->fSize > text.size()) return invalid;
  char32_t code = byteAt(0) & ~static_cast<unsigned>(lead->fMask);
  for (std::size_t i = 1; i < lead->fSize; ++i) {
    if ((byteAt(i) & 0xC0U) != 0x80U) return invalid;
    code = (code << 6U) | (byteAt(i) & 0x3FU);
  }
  const bool isCharacter = code >= lead->fSmallest && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  return isCharacter ? Utf8Character{code, lead->fSize, true} : invalid;
}

std::string ShowCharacter(std::string_view text, std::size_t position) {
  const Utf8Character character = ReadUtf8(text, position);
  const auto code = static_cast<unsigned>(character.fCode);
  if (!character.fValid) return fmt::format("0x{:02X}", code);
  const std::string_view shown = text.substr(position, character.fSize);
  if (IsIn(character.fCode, kInvisible)) return fmt::format("U+{:04X}", code);
  return code < 0x80 ? std::string(shown) : fmt::format("{} (U+{:04X})", shown, code);
}

}  // namespace BayesHost
