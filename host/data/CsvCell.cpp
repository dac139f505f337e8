#include "host/data/CsvCell.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace BayesHost {

namespace {

bool EqualsIgnoringCase(std::string_view text, std::string_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                    [](unsigned char a, char b) { return std::tolower(a) == b; });
}

bool ParsesAsNumber(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return end == text.data() + text.size() && !text.empty() &&
         (error == std::errc() || error == std::errc::result_out_of_range);
}

bool IsNumber(std::string_view text, char decimal) {
  if (decimal == '.') return ParsesAsNumber(text);
  if (text.find('.') != std::string_view::npos) return false;
  std::string withPoint(text);
  std::replace(withPoint.begin(), withPoint.end(), decimal, '.');
  return ParsesAsNumber(withPoint);
}

// Bytes of the UTF-8 character that begins here, 0 when there is none: RFC 3629, table 3-7 of the Unicode
// standard.
std::size_t MeasureUtf8(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
  const unsigned first = byte(0);
  const unsigned second = byte(1);
  if (first < 0x80U) return 1;
  if (first >= 0xC2U && first <= 0xDFU) return follows(1) ? 2 : 0;
  if (first >= 0xE0U && first <= 0xEFU) {
    const bool overlong = first == 0xE0U && second < 0xA0U;
    const bool surrogate = first == 0xEDU && second > 0x9FU;
    return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
  }
  if (first < 0xF0U || first > 0xF4U) return 0;
  const bool outOfRange = (first == 0xF0U && second < 0x90U) || (first == 0xF4U && second > 0x8FU);
  return follows(1) && follows(2) && follows(3) && !outOfRange ? 4 : 0;
}

}  // namespace

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t bytes = MeasureUtf8(text);
    if (bytes == 0) return false;
    text.remove_prefix(bytes);
  }
  return true;
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

CellKind ClassifyCell(std::string_view cell, char decimal) {
  const std::string_view text = TrimBlanks(cell);
  if (std::find(kMissingWords.begin(), kMissingWords.end(), text) != kMissingWords.end())
    return CellKind::Missing;
  if (IsNumber(text, decimal)) return CellKind::Number;
  return EqualsIgnoringCase(text, "true") || EqualsIgnoringCase(text, "false") ? CellKind::Boolean
                                                                               : CellKind::Text;
}

bool IsTooLarge(std::string_view cell, char decimal) {
  std::string text(TrimBlanks(cell));
  const bool hasDigit = text.find_first_of("0123456789") != std::string::npos;
  if (!hasDigit || !IsNumber(text, decimal)) return false;
  std::replace(text.begin(), text.end(), decimal, '.');
  return std::isinf(std::strtod(text.c_str(), nullptr));
}

int CountDecimals(std::string_view number, char decimal) {
  const std::size_t point = number.find(decimal);
  if (point == std::string_view::npos) return 0;
  const std::string_view behind = number.substr(point + 1);
  const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
  return static_cast<int>(std::find_if_not(behind.begin(), behind.end(), isDigit) - behind.begin());
}

}  // namespace BayesHost
