#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "host/output/StringTable.h"

namespace {

using BayesHost::Arguments;
using BayesHost::FillPlaceholders;
using BayesHost::StringTable;
using List = std::vector<std::string>;

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

struct Case {
  const char* fPattern;
  Arguments fvArguments;
  const char* fFilled;
};

const Case kCases[] = {
    {"no places", {}, "no places"},
    {"^1 needs ^2", {"a", "b"}, "a needs b"},
    {"^2 before ^1, ^2 again", {"a", "b"}, "b before a, b again"},
    {"Method: ^1", {}, "Method: "},
    {"^1% Credible Interval", {"95"}, "95% Credible Interval"},
    {"50%1 and 3^x and ^0", {"a"}, "50%1 and 3^x and ^0"},
    {"ends with ^", {"a"}, "ends with ^"},
    {"^1 stays", {"^2", "b"}, "^2 stays"},
    {"all: ^1", {List{"a", "b"}}, "all: a, b"},
    // lists of single texts
    {"= [%1:, ^1:]1", {List{"x"}}, "= x"},
    {"= [%1:, ^1:]1", {List{"x", "y", "z"}}, "= x, y, z"},
    {"Model: [%1:, ^1:]1", {List{}}, "Model: "},
    {"Design: [%1: + ^1:]1", {List{"Intercept", "a"}}, "Design: Intercept + a"},
    {"= [%1:, ^1:]1", {"x"}, "= x"},
    {"No ^1.[ Did you mean %1?: Or ^1?:]2", {"a", List{}}, "No a."},
    {"No ^1.[ Did you mean %1?: Or ^1?:]2", {"a", List{"b", "c"}}, "No a. Did you mean b? Or c?"},
    {"No ^1.[ Did you mean %1?: Or ^1?:]2", {"a"}, "No a."},
    // lists of pairs
    {"[%1 = %2:, ^1 = ^2:]1", {List{"a", "1"}}, "a = 1"},
    {"Split [%1 = %2:, ^1 = ^2:]1: text", {List{"a", "1", "b", "2"}}, "Split a = 1, b = 2: text"},
    {"Split [%1=%2:,^1=^2:]3: ^1 has ^2", {"x", "y", List{"a", "1", "b", "2"}}, "Split a=1,b=2: x has y"},
    {"[%1 = %2:, ^1 = ^2:]1", {List{"a", "1", "b"}}, "a = 1, b = "},
    // brackets that are no lists
    {"[^1]", {"a"}, "[a]"},
    {"[%1:, ^1:]", {List{"a"}}, "[%1:, a:]"},
    {"[a:b] [%1:;^1:]1", {List{"x", "y"}}, "[a:b] x;y"},
};

TEST(Strings, FillsPlacesAndLists) {
  for (const Case& row : kCases)
    EXPECT_EQ(FillPlaceholders(row.fPattern, row.fvArguments), row.fFilled) << row.fPattern;
}

TEST(Strings, KeyWithoutTextIsItsOwnText) {
  const StringTable table(R"({"Std. Error...": "Standard error", "^1 has ^2 ...": "^2 belongs to ^1"})");
  EXPECT_EQ(table.Fill("Std. Error...", {}), "Standard error");
  EXPECT_EQ(table.Fill("^1 has ^2 ...", {"a", "b"}), "b belongs to a");
  EXPECT_EQ(table.Fill("^1 = ^2", {"a", "b"}), "a = b");
  EXPECT_FALSE(table.Has("^1 = ^2"));
}

TEST(Strings, RefusesWhatIsNoTable) {
  for (const char* json : {"", "[]", "{\"a\": 1}", "{\"a\": "})
    EXPECT_THROW(StringTable table{json}, std::runtime_error) << json;
}

// Numbers of the places in a key or text: ^N outside lists, and the N of lists.
std::set<char> PlacesOf(const std::string& text) {
  std::set<char> places;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    const std::size_t end = text[i] == '[' ? text.find(":]", i) : std::string::npos;
    if (end != std::string::npos) i = end + 1;
    if ((text[i] == '^' || end != std::string::npos) && std::isdigit(text[i + 1]) != 0)
      places.insert(text[i + 1]);
  }
  return places;
}

TEST(Strings, TextsUseOnlyPlacesThatTheirKeysHave) {
  const auto table = nlohmann::json::parse(ReadFile(SHARE_DIR "/strings/en.json"));
  for (const auto& [key, text] : table.items()) {
    // A host key's lists come after the places that its name shows.
    if (key.starts_with("Host ")) continue;
    EXPECT_THAT(PlacesOf(key), testing::IsSupersetOf(PlacesOf(text.get<std::string>()))) << key;
  }
}

// String literals that end like a key, adjacent ones joined, lines of comment left out.
std::set<std::string> KeysIn(const std::string& source) {
  std::set<std::string> keys;
  std::string literal;
  std::istringstream lines(source);
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, line.find_first_not_of(' '));
    if (line.starts_with("//") || line.starts_with("#")) continue;
    bool isInside = false;
    for (const char c : line) {
      if (c == '"') isInside = !isInside;
      if (c == '"' || (!isInside && c == ' ')) continue;
      if (isInside) {
        literal += c;
      } else {
        const bool isKey = literal.ends_with("...") && (std::isalnum(literal[0]) != 0 || literal[0] == '^');
        if (isKey) keys.insert(literal);
        literal.clear();
      }
    }
  }
  return keys;
}

TEST(Strings, SearchForKeysJoinsLiteralsAndSkipsComments) {
  EXPECT_THAT(
      KeysIn("f(\"a ...\", x);\n// \"b ...\"\ng(\"c \"\n  \"d ...\");\nh(\"...\", \"e\", \", ...\");\n"),
      testing::ElementsAre("a ...", "c d ..."));
}

TEST(Strings, EveryKeyInTheSourcesHasAText) {
  const StringTable& table = StringTable::English();
  const std::filesystem::path root = std::filesystem::path(SHARE_DIR).parent_path();
  std::size_t count = 0;
  for (const char* room : {"bayesian", "host"}) {
    if (!std::filesystem::exists(root / room)) continue;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / room)) {
      if (!entry.is_regular_file()) continue;
      for (const std::string& key : KeysIn(ReadFile(entry.path()))) {
        ++count;
        EXPECT_TRUE(table.Has(key)) << entry.path() << ": " << key;
      }
    }
  }
  EXPECT_GT(count, 60U) << "the search for keys in the sources finds too few";
}

}  // namespace
