// Checks a whole command against its grammar.
#pragma once

#include <optional>
#include <vector>

#include "host/parser/Fault.h"
#include "host/parser/Lexer.h"
#include "platform/Visibility.h"
#include "platform/host/Grammar.h"
#include "platform/host/Parser.h"

namespace BayesHost {

// Fills `accepted` with the subcommands in the order of the text; nothing for a command that is its name
// alone. Returns the first fault instead, if there is one. `hasName`: the text starts with the command's
// name.
BAYES_PLATFORM std::optional<Fault> CheckCommand(const LexedText& text, bool hasName,
                                                 const CommandDescriptor& grammar,
                                                 std::vector<SubComObj>& accepted);

}  // namespace BayesHost
