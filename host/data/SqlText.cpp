#include "host/data/SqlText.h"

#include <algorithm>

namespace BayesHost {

namespace {

std::string Enclose(std::string_view text, char quote) {
  std::string quoted(1, quote);
  for (const char c : text) quoted.append(c == quote ? 2 : 1, c);
  return quoted + quote;
}

// "Binder Error: Referenced column ..." loses its first two words.
std::string_view DropKind(std::string_view text) {
  constexpr std::string_view kEnd = " Error: ";
  const std::size_t end = text.find(kEnd);
  return end < 30 ? text.substr(end + kEnd.size()) : text;
}

}  // namespace

std::string FullName(const std::filesystem::path& file) {
  return std::filesystem::absolute(file).lexically_normal().string();
}

std::string QuoteText(std::string_view text) {
  return Enclose(text, '\'');
}

std::string QuoteName(std::string_view name) {
  return Enclose(name, '"');
}

std::string QuoteFile(const std::filesystem::path& file) {
  return QuoteText(FullName(file));
}

// Between brackets a character of a pattern stands for itself.
std::string QuoteSource(const std::filesystem::path& file) {
  constexpr std::string_view kPatternCharacters = "*?[";
  std::string pattern;
  for (const char c : FullName(file)) {
    const bool isPlain = kPatternCharacters.find(c) == std::string_view::npos;
    pattern += isPlain ? std::string(1, c) : std::string{'[', c, ']'};
  }
  return QuoteText(pattern);
}

std::string MakeReadable(const std::string& engineText) {
  std::string_view text = DropKind(engineText);
  text = text.substr(0, text.find("\n\n"));
  text = text.substr(0, text.find("\nLINE "));
  text = text.substr(0, text.find_last_not_of(" \n") + 1);
  std::string line(text);
  std::replace(line.begin(), line.end(), '\n', ' ');
  if (line.empty() || std::string_view(".!?").find(line.back()) == std::string_view::npos) line += '.';
  return line;
}

}  // namespace BayesHost
