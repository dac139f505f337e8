#include "host/output/TextWidth.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace BayesHost {
namespace {

struct WidthRange {
  std::uint32_t fFirst;
  std::uint32_t fLast;
  int fWidth;
};

// Unicode Standard Annex 11 (East Asian Width), by blocks: combining marks and joiners 0, wide blocks 2, the
// rest 1. In ascending order.
constexpr std::array<WidthRange, 13> kRanges{{{0x0300, 0x036F, 0},
                                              {0x1100, 0x115F, 2},
                                              {0x200B, 0x200F, 0},
                                              {0x20D0, 0x20FF, 0},
                                              {0x2E80, 0xA4CF, 2},
                                              {0xAC00, 0xD7A3, 2},
                                              {0xF900, 0xFAFF, 2},
                                              {0xFE00, 0xFE0F, 0},
                                              {0xFE30, 0xFE6F, 2},
                                              {0xFF00, 0xFF60, 2},
                                              {0xFFE0, 0xFFE6, 2},
                                              {0x1F300, 0x1FAFF, 2},
                                              {0x20000, 0x3FFFD, 2}}};

int WidthOf(std::uint32_t character) {
  for (const WidthRange& range : kRanges)
    if (character <= range.fLast) return character >= range.fFirst ? range.fWidth : 1;
  return 1;
}

bool IsAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

// Or the beginning of one.
bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == '\x7F' || c == '\xC2';
}

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::uint32_t LeadBits(unsigned char lead) {
  if (lead < 0xC0) return lead;
  if (lead < 0xE0) return lead & 0x1FU;
  return lead < 0xF0 ? lead & 0x0FU : lead & 0x07U;
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t begin = text.find_first_not_of(" \n\t"); begin != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(" \n\t", begin), text.size());
    words.push_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(" \n\t", end);
  }
  return words;
}

}  // namespace

int DisplayWidth(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), IsAscii)) return static_cast<int>(text.size());
  int width = 0;
  for (std::size_t i = 0; i < text.size();) {
    std::uint32_t character = LeadBits(static_cast<unsigned char>(text[i++]));
    for (; i < text.size() && IsContinuation(text[i]); ++i)
      character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    width += WidthOf(character);
  }
  return width;
}

// C0, delete, and C1 as UTF-8 writes it: C2 80 to C2 9F.
std::string PlainText(std::string_view text) {
  if (std::none_of(text.begin(), text.end(), IsControl)) return std::string(text);
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    const bool isLong = c == 0xC2 && next >= 0x80 && next < 0xA0;
    const bool isControl = isLong || c == 0x7F || (c < 0x20 && c != '\t' && c != '\n');
    plain += isControl ? '?' : text[i];
    if (isLong) ++i;
  }
  return plain;
}

std::vector<std::string> WrapText(std::string_view text, int width) {
  std::vector<std::string> lines(1);
  int used = 0;
  for (const std::string_view word : Words(text)) {
    const int needed = DisplayWidth(word);
    if (!lines.back().empty() && used + 1 + needed > width) lines.emplace_back();
    used = lines.back().empty() ? needed : used + 1 + needed;
    if (!lines.back().empty()) lines.back() += ' ';
    lines.back() += word;
  }
  return lines;
}

int LongestWord(std::string_view text) {
  int longest = 0;
  for (const std::string_view word : Words(text)) longest = std::max(longest, DisplayWidth(word));
  return longest;
}

void AppendPadded(std::string& line, std::string_view text, int width, Align align) {
  const int missing = std::max(0, width - DisplayWidth(text));
  const int before = align == Align::Left ? 0 : align == Align::Right ? missing : missing / 2;
  line.append(static_cast<std::size_t>(before), ' ');
  line += text;
  line.append(static_cast<std::size_t>(missing - before), ' ');
}

std::string PadText(std::string_view text, int width, Align align) {
  std::string padded;
  AppendPadded(padded, text, width, align);
  return padded;
}

}  // namespace BayesHost
