#include "host/output/StringTable.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <utility>

#include "host/output/SharePath.h"

namespace BayesHost {
namespace {

// The place that a sign and a digit at `at` name, 1 to 9; 0 when they name none.
int PlaceAt(std::string_view text, std::size_t at, std::string_view signs) {
  if (at + 1 >= text.size() || signs.find(text[at]) == std::string_view::npos) return 0;
  const char digit = text[at + 1];
  return digit >= '1' && digit <= '9' ? digit - '0' : 0;
}

struct ListPattern {
  std::string_view fFirst;
  std::string_view fNext;
  std::size_t fArgument;  // 0-based
  std::size_t fLength;    // of the whole form
};

// `[FIRST:NEXT:]N` at the start of `text`; FIRST has no colon, and neither part has brackets.
std::optional<ListPattern> ReadListPattern(std::string_view text) {
  if (text.empty() || text[0] != '[') return std::nullopt;
  const std::size_t middle = text.find_first_of(":[]", 1);
  if (middle == std::string_view::npos || text[middle] != ':') return std::nullopt;
  const std::size_t end = text.find(":]", middle + 1);
  const std::size_t digit = end + 2;
  if (end == std::string_view::npos || text.find_first_of("[]", middle) != end + 1) return std::nullopt;
  if (digit >= text.size() || text[digit] < '1' || text[digit] > '9') return std::nullopt;
  return ListPattern{text.substr(1, middle - 1), text.substr(middle + 1, end - middle - 1),
                     static_cast<std::size_t>(text[digit] - '1'), digit + 1};
}

std::size_t CountPlaces(std::string_view pattern) {
  int places = 0;
  for (std::size_t i = 0; i < pattern.size(); ++i) places = std::max(places, PlaceAt(pattern, i, "^%"));
  return static_cast<std::size_t>(places);
}

std::string FillItem(std::string_view pattern, const std::string* item, std::size_t count) {
  std::string filled;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const int place = PlaceAt(pattern, i, "^%");
    if (place == 0) {
      filled += pattern[i];
      continue;
    }
    if (static_cast<std::size_t>(place) <= count) filled += item[place - 1];
    ++i;
  }
  return filled;
}

std::string FillList(const ListPattern& pattern, const Arguments& arguments) {
  if (pattern.fArgument >= arguments.size()) return {};
  const Argument& argument = arguments[pattern.fArgument];
  const std::vector<std::string> single{argument.fText};
  const std::vector<std::string>& texts = argument.fIsList ? argument.fvList : single;
  const auto size = std::max<std::size_t>({CountPlaces(pattern.fFirst), CountPlaces(pattern.fNext), 1});
  std::string filled;
  for (std::size_t i = 0; i < texts.size(); i += size)
    filled += FillItem(i == 0 ? pattern.fFirst : pattern.fNext, &texts[i], std::min(size, texts.size() - i));
  return filled;
}

}  // namespace

std::string Argument::GetText() const {
  return fIsList ? JoinTexts(fvList) : fText;
}

std::string FillPlaceholders(std::string_view pattern, const Arguments& arguments) {
  std::string filled;
  for (std::size_t i = 0; i < pattern.size();) {
    if (const auto list = ReadListPattern(pattern.substr(i))) {
      filled += FillList(*list, arguments);
      i += list->fLength;
    } else if (const int place = PlaceAt(pattern, i, "^")) {
      if (static_cast<std::size_t>(place) <= arguments.size())
        filled += arguments[static_cast<std::size_t>(place) - 1].GetText();
      i += 2;
    } else {
      const std::size_t next = std::min(pattern.find_first_of("[^", i + 1), pattern.size());
      filled += pattern.substr(i, next - i);
      i = next;
    }
  }
  return filled;
}

StringTable::StringTable(const std::string& json) {
  const auto parsed = nlohmann::json::parse(json, nullptr, false);
  if (!parsed.is_object()) throw std::runtime_error("A string table is a JSON object of keys and texts.");
  for (const auto& [key, text] : parsed.items()) {
    if (!text.is_string()) throw std::runtime_error("The text of '" + key + "' is not a string.");
    fTexts.emplace(key, text.get<std::string>());
  }
}

const StringTable& StringTable::English() {
  static const StringTable table(ReadShareFile("strings/en.json"));
  return table;
}

std::string StringTable::Find(const std::string& key) const {
  const auto found = fTexts.find(key);
  return found == fTexts.end() ? key : found->second;
}

std::string StringTable::Fill(const std::string& key, const Arguments& arguments) const {
  return FillPlaceholders(Find(key), arguments);
}

ShownText ShowKey(const std::string& key, const Arguments& arguments) {
  ShownText shown;
  shown.fText = StringTable::English().Fill(key, arguments);
  shown.fKey = key;
  shown.fIdentity = "key:" + key;
  for (const Argument& argument : arguments) {
    shown.fvArguments.push_back(argument.GetText());
    shown.fIdentity += '\x1f' + argument.GetText();
  }
  return shown;
}

}  // namespace BayesHost
