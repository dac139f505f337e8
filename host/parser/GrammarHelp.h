// Help made from declared grammars alone.
#pragma once

#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/host/Grammar.h"

namespace BayesHost {

// The grammars seen so far, whatever session saw them. A module hands its own over when its entry point runs
// in describe mode.
class BAYES_PLATFORM GrammarHelp {
 public:
  // A grammar of the same command replaces the one before.
  static void Record(const CommandDescriptor& grammar);
  static std::vector<std::string> GetCommandNames();
  // Null when no grammar of that command was recorded; otherwise valid until the next Record.
  static const CommandDescriptor* Find(const std::string& commandName);
};

// For the terminal.
BAYES_PLATFORM std::string RenderHelpText(const CommandDescriptor& grammar);
// For the command reference.
BAYES_PLATFORM std::string RenderHelpMarkdown(const CommandDescriptor& grammar);

}  // namespace BayesHost
