// Text in the columns of a terminal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace BayesHost {

// Columns that UTF-8 text takes on a terminal: two for wide East Asian characters and pictographs, none for
// combining marks. A byte that isn't UTF-8 takes one.
int DisplayWidth(std::string_view text);

// The text with "?" for control characters other than tabs and line ends: labels and names come from data
// files, and a terminal obeys what it is sent.
std::string PlainText(std::string_view text);

// Lines of at most `width` columns, broken at blanks; a longer word stands alone, uncut. At least one line.
std::vector<std::string> WrapText(std::string_view text, int width);

int LongestWord(std::string_view text);

enum class Align { Left, Right, Centre };
std::string PadText(std::string_view text, int width, Align align);
// The same behind what the line has already.
void AppendPadded(std::string& line, std::string_view text, int width, Align align);

}  // namespace BayesHost
