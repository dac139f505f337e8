// A text as a reader shows it, together with what it was made of.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Visibility.h"

namespace BayesHost {

// A value of the data: a number or a string.
using DataValue = std::variant<double, std::string>;

struct BAYES_PLATFORM ShownText {
  std::string fText;
  // The key of the string table and the texts of its arguments; empty when the text stands for itself.
  std::string fKey;
  std::vector<std::string> fvArguments;
  // What the text stands for in the data, where it names just one variable or one value.
  std::string fVariable;
  std::optional<DataValue> fValue;
  // Tells two labels apart that look the same, and joins two that don't: made of key, variable or value.
  std::string fIdentity;

  static ShownText Plain(std::string text);
  bool operator==(const ShownText&) const = default;
};

// The texts with ", " between them.
std::string JoinTexts(const std::vector<std::string>& texts);

}  // namespace BayesHost
