// Help made from declared grammars alone.
#pragma once

#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/host/Grammar.h"

namespace BayesHost {

// The grammars seen so far, whatever session saw them: a module hands its own over when its entry points run
// in describe mode.
class BAYES_PLATFORM GrammarHelp {
 public:
  // Replaces an earlier grammar of the same command.
  static void Record(const CommandDescriptor& grammar);
  static std::vector<std::string> GetCommandNames();
  // Null when no grammar of that command was recorded. Lives on; Record may change it.
  static const CommandDescriptor* Find(const std::string& commandName);
};

// For the terminal.
BAYES_PLATFORM std::string RenderHelpText(const CommandDescriptor& grammar);
// A section of the command reference.
BAYES_PLATFORM std::string RenderHelpMarkdown(const CommandDescriptor& grammar);

}  // namespace BayesHost
