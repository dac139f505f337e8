// What a cell of a text table says.
#pragma once

#include <array>
#include <string_view>

namespace BayesHost {

enum class CellKind { Missing, Number, Boolean, Text };

// The cells that mean "no value"; blanks around them don't count.
inline constexpr std::array<std::string_view, 4> kMissingWords = {"", "NA", "NaN", "."};

bool IsUtf8(std::string_view text);

std::string_view TrimBlanks(std::string_view text);

// `decimal` is '.' or ','. A number may have blanks around it. It may be a word for infinity or for what is
// no number: such a value becomes missing when the data are read. true and false in any case are Boolean.
CellKind ClassifyCell(std::string_view cell, char decimal);

// A number whose digits say more than the largest double.
bool IsTooLarge(std::string_view cell, char decimal);

// Digits behind the decimal sign of a number.
int CountDecimals(std::string_view number, char decimal);

}  // namespace BayesHost
