// What the program can tell without running anything.
#pragma once

#include <ostream>
#include <string>

namespace BayesApp {

// The grammar of a command ("ONESAMPLE", "BAYES ONESAMPLE", a statement such as "DATA"), from its
// declaration; a list of all commands when the topic is empty. False: there is no such command (said on
// standard error).
bool ShowHelp(const std::string& topic, std::ostream& out);

// The grammars of all commands as one Markdown page, docs/commands.md.
void ShowReference(std::ostream& out);

// The variables of a data file. Throws BayesHost::DataError.
void DescribeData(const std::string& file, std::ostream& out);

}  // namespace BayesApp
