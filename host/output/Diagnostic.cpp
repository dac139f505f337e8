#include "host/output/Diagnostic.h"

#include <fmt/format.h>

#include "host/output/TextWidth.h"

namespace BayesHost {
namespace {

// Blanks as wide as the characters before `column`; tabs stay tabs, so that the caret stands right under any
// tab width.
std::string BlanksBefore(const std::string& line, int column) {
  std::string blanks;
  std::string_view rest = line;
  for (int character = 1; character < column; ++character) {
    std::size_t length = rest.empty() ? 0 : 1;
    while (length < rest.size() && (static_cast<unsigned char>(rest[length]) & 0xC0U) == 0x80U) ++length;
    if (rest.starts_with('\t'))
      blanks += '\t';
    else
      blanks.append(length == 0 ? 1 : static_cast<std::size_t>(DisplayWidth(rest.substr(0, length))), ' ');
    rest.remove_prefix(length);
  }
  return blanks;
}

}  // namespace

Diagnostic Diagnostic::Of(const Message& message, const std::string& file, int commandLine) {
  const bool placed = message.fLine > 0;
  return {file,
          placed ? message.fLine : commandLine,
          placed ? message.fColumn : 0,
          message.fLevel,
          message.fText.fText,
          message.fSourceLine};
}

std::string Diagnostic::PointAt(const std::string& line, int column) {
  return line + '\n' + BlanksBefore(line, column) + '^';
}

std::string Diagnostic::Format(bool colour) const {
  const bool isError = fLevel == Message::Level::Error;
  std::string place = fFile;
  for (const int number : {fLine, fColumn})
    if (number > 0) place += (place.empty() ? "" : ":") + std::to_string(number);
  const std::string_view level = isError ? "error: " : "warning: ";
  std::string shown = place.empty() ? "" : place + ": ";
  shown += colour ? fmt::format("\x1b[{}m{}\x1b[0m", isError ? "1;31" : "1;33", level) : std::string(level);
  shown += PlainText(fText) + '\n';
  if (fSourceLine.empty() || fColumn <= 0) return shown;
  return shown + PointAt(PlainText(fSourceLine), fColumn) + '\n';
}

}  // namespace BayesHost
