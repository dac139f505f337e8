// The layout of JSON documents, beside a plain recursion that first makes each line whole.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <sstream>
#include <string>

#include "host/output/JsonWriter.h"

namespace BayesHost {
namespace {

using Json = nlohmann::ordered_json;

void Lay(const Json& json, std::size_t indent, std::string& text) {
  const std::string line = json.dump();
  if (!json.is_structured() || (indent > 0 && indent + line.size() <= 160)) {
    text += line;
    return;
  }
  text += json.is_object() ? '{' : '[';
  const char* separator = "\n";
  for (const auto& [key, value] : json.items()) {
    text += separator + std::string(indent + 1, ' ');
    if (json.is_object()) text += Json(key).dump() + ':';
    Lay(value, indent + 1, text);
    separator = ",\n";
  }
  text += '\n' + std::string(indent, ' ') + (json.is_object() ? '}' : ']');
}

void Write(const Json& json, JsonWriter& writer) {
  if (json.is_string()) return writer.Value(json.get<std::string>());
  if (json.is_number()) return writer.Value(json.get<int>());
  if (json.is_boolean()) return writer.Value(json.get<bool>());
  if (json.is_null()) return writer.Null();
  json.is_object() ? writer.BeginObject() : writer.BeginArray();
  for (const auto& [key, value] : json.items()) {
    if (json.is_object()) writer.Key(key);
    Write(value, writer);
  }
  writer.End();
}

// Of sizes about the length of a line, so that both forms of each kind occur, and the last that fits.
class Trees {
 public:
  Json Make(int depth) {
    const int kind = depth == 0 ? 0 : Draw(3);
    if (kind == 0) return MakeScalar();
    Json json = kind == 1 ? Json::object() : Json::array();
    const int members = Draw(6);
    for (int i = 0; i < members; ++i) {
      if (kind == 1)
        json[std::string(static_cast<std::size_t>(1 + Draw(12)), static_cast<char>('a' + i))] =
            Make(depth - 1);
      else
        json.push_back(Make(depth - 1));
    }
    return json;
  }

 private:
  Json MakeScalar() {
    switch (Draw(5)) {
      case 0:
        return Draw(100000) - 50000;
      case 1:
        return Draw(2) == 0;
      case 2:
        return nullptr;
      default:
        return std::string(static_cast<std::size_t>(Draw(50)), 'x') + (Draw(4) == 0 ? "\"\n\u00e4" : "");
    }
  }
  int Draw(int below) { return static_cast<int>(fRandom() % static_cast<unsigned>(below)); }

  std::mt19937 fRandom{3};
};

TEST(JsonWriter, PutsOnALineWhateverFits) {
  Trees trees;
  int longest = 0;
  for (int i = 0; i < 3000; ++i) {
    const Json json = Json{{"tree", trees.Make(4)}};
    std::string expected;
    Lay(json, 0, expected);
    std::ostringstream out;
    JsonWriter writer(out);
    Write(json, writer);
    ASSERT_EQ(out.str(), expected) << "tree " << i;
    std::istringstream lines(expected);
    for (std::string line; std::getline(lines, line);)
      longest = std::max(longest, static_cast<int>(line.size()));
  }
  EXPECT_GT(longest, 160) << "no tree came near the end of a line";
}

TEST(JsonWriter, KeepsNumbersToTheLastDigit) {
  for (const double number :
       {0.1, 1.0, -0.0, 1e22, 5e-324, 1.7976931348623157e308, -2.5, 1e-5, 123456789.0}) {
    std::ostringstream out;
    JsonWriter writer(out);
    writer.BeginObject();
    writer.Member("n", number);
    writer.End();
    const Json read = Json::parse(out.str())["n"];
    EXPECT_TRUE(read.is_number_float()) << out.str();
    EXPECT_EQ(read.get<double>(), number);
  }
}

TEST(JsonWriter, ReplacesWhatIsNoUtf8) {
  std::ostringstream out;
  JsonWriter writer(out);
  writer.BeginObject();
  writer.Member("a\xFF", "\xC3");
  writer.End();
  EXPECT_EQ(Json::parse(out.str()), Json({{"a\xEF\xBF\xBD", "\xEF\xBF\xBD"}}));
}

}  // namespace
}  // namespace BayesHost
