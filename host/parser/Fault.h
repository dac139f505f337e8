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

struct Fault {
  std::string fKey;
  Arguments fvArguments;
  std::size_t fPosition = 0;  // byte offset in the command text
  Message::Level fLevel = Message::Level::Error;
};

// Thrown at the first fault of a command; never leaves the parser.
struct Rejection {
  Fault fFault;
};
[[noreturn]] void Reject(const char* key, Arguments arguments, std::size_t position);

// The fault in words, with its place in the command's file.
BAYES_PLATFORM Message MakeMessage(const Fault& fault, const CommandText& command);

// Adds it to the output of the session's current command.
void ShowFault(const Fault& fault);

}  // namespace BayesHost
