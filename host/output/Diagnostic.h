// A message beside the place in the file that it speaks of.
#pragma once

#include <string>

#include "host/output/CommandOutput.h"
#include "platform/Visibility.h"

namespace BayesHost {

struct BAYES_PLATFORM Diagnostic {
  std::string fFile;  // empty: the command line
  int fLine = 0;      // 1-based; 0: unknown
  int fColumn = 0;    // 1-based, in characters; 0: unknown
  Message::Level fLevel = Message::Level::Error;
  std::string fText;
  std::string fSourceLine;

  // A command's message; without a place of its own it gets the command's line.
  static Diagnostic Of(const Message& message, const std::string& file, int commandLine);

  // The line, and below it a caret under the column (1-based).
  static std::string PointAt(const std::string& line, int column);

  // "file:line:column: error: text", then the source line and a caret under its place, each line ended. What
  // is unknown is left out. With `colour`, ANSI colour sequences.
  std::string Format(bool colour) const;
};

}  // namespace BayesHost
