// What is wrong with a command text, and where: the one form in which lexer, grammar check and variable lists
// speak to the user.
#pragma once

#include <cstddef>
#include <string>

#include "host/output/CommandOutput.h"
#include "host/output/StringTable.h"
#include "host/session/Session.h"
#include "platform/Visibility.h"

namespace BayesHost {

struct Diagnostic {
  std::string fKey;
  Arguments fvArguments;
  std::size_t fPosition = 0;  // byte offset in the command text
  Message::Level fLevel = Message::Level::Error;
};

// Thrown at the first fault of a command; never leaves the parser.
struct Rejection {
  Diagnostic fDiagnostic;
};

// The diagnostic in words, with its place in the command's file.
BAYES_PLATFORM Message MakeMessage(const Diagnostic& diagnostic, const CommandText& command);

// Adds it to the output of the session's current command.
void Report(const Diagnostic& diagnostic);

}  // namespace BayesHost
