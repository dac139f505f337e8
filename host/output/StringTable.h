// The texts behind the message keys, and how placeholders are filled.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/output/ShownText.h"
#include "platform/Visibility.h"

namespace BayesHost {

// What fills one place of a text: a text, or the texts of a list in their order (a list of pairs is first,
// second, first ...).
struct BAYES_PLATFORM Argument {
  std::string fText;
  std::vector<std::string> fvList;
  bool fIsList = false;

  Argument(std::string text) : fText(std::move(text)) {}  // NOLINT: a text is an argument
  Argument(const char* text) : fText(text) {}             // NOLINT
  Argument(std::vector<std::string> list) : fvList(std::move(list)), fIsList(true) {}  // NOLINT

  // A list reads as its texts with commas between.
  std::string GetText() const;
};
using Arguments = std::vector<Argument>;

// Fills `pattern`. ^1 to ^9 stand for the arguments. `[FIRST:NEXT:]N` stands for the list that argument N is:
// each item takes as many texts as the patterns have places; the first item fills FIRST, every later one
// NEXT, where %1 and ^1 both mean the item's first text, %2 and ^2 its second. An empty list leaves nothing;
// an argument that isn't there fills its place with nothing. A caret, a percent sign or a bracket of any
// other form stands for itself.
BAYES_PLATFORM std::string FillPlaceholders(std::string_view pattern, const Arguments& arguments);

class BAYES_PLATFORM StringTable {
 public:
  // From a JSON object of keys and texts; std::runtime_error when it isn't one.
  explicit StringTable(const std::string& json);

  // The table of share/strings/en.json, read at the first call.
  static const StringTable& English();

  bool Has(const std::string& key) const { return fTexts.count(key) != 0; }
  // The text of a key; a key without one is its own text.
  std::string Find(const std::string& key) const;
  std::string Fill(const std::string& key, const Arguments& arguments) const;

 private:
  std::unordered_map<std::string, std::string> fTexts;
};

// The English text of a key, filled.
BAYES_PLATFORM ShownText ShowKey(const std::string& key, const Arguments& arguments = {});

}  // namespace BayesHost
