#include "app/Help.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>

#include "app/Module.h"
#include "app/Statements.h"
#include "host/data/DataSet.h"
#include "host/output/CommandOutput.h"
#include "host/output/SharePath.h"
#include "host/parser/GrammarHelp.h"
#include "host/session/Session.h"

namespace BayesApp {

namespace {

// Lets the module hand over the grammar of each of its commands, and adds those of the program's own
// statements.
void RecordGrammars() {
  BayesHost::RunOptions options;
  options.fParserMode = BayesHost::ParserMode::Describe;
  BayesHost::Session session(options);
  const BayesHost::Session::Use use(session);
  const Module module;
  for (const std::string& command : GetBayesCommands()) {
    BayesHost::CommandText text;
    text.fSource = command + ".";
    text.fEnd = text.fSource.size();
    session.BeginCommand(text, std::make_shared<BayesHost::CommandOutput>(command, text.fSource, 1));
    module.Find(command)(nullptr);
  }
  for (const CommandDescriptor& grammar : MakeStatementGrammars()) BayesHost::GrammarHelp::Record(grammar);
}

// Command files to start from, for the commands that have some: share/help/onesample.bay for BAYES ONESAMPLE.
void ShowExamples(const std::string& command, std::ostream& out) {
  std::string word = command.substr(command.rfind(' ') + 1);
  std::transform(word.begin(), word.end(), word.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const std::filesystem::path file = std::filesystem::path("help") / (word + ".bay");
  if (!std::filesystem::exists(BayesHost::GetSharePath() / file)) return;
  out << "\nExamples\n\n" << BayesHost::ReadShareFile(file);
}

std::string UpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

}  // namespace

void ShowReference(std::ostream& out) {
  RecordGrammars();
  out << "# Commands\n\nMade by `bayes help --markdown` from the grammars that the program checks commands "
         "against.\n";
  for (const std::string& name : BayesHost::GrammarHelp::GetCommandNames()) {
    out << '\n' << BayesHost::RenderHelpMarkdown(*BayesHost::GrammarHelp::Find(name));
  }
}

bool ShowHelp(const std::string& topic, std::ostream& out) {
  RecordGrammars();
  const std::vector<std::string> names = BayesHost::GrammarHelp::GetCommandNames();
  if (topic.empty()) {
    fmt::print(out, "Commands (bayes help COMMAND shows one):\n");
    for (const std::string& name : names) {
      fmt::print(out, "  {:<20}{}\n", name, BayesHost::GrammarHelp::Find(name)->GetProcTitle());
    }
    return true;
  }
  const std::string wanted = UpperCase(topic);
  const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
    return name == wanted || name == "BAYES " + wanted;
  });
  if (found == names.end()) {
    std::cerr << fmt::format("bayes: there is no command {}. The commands are {}.\n", topic,
                             fmt::join(names, ", "));
    return false;
  }
  out << BayesHost::RenderHelpText(*BayesHost::GrammarHelp::Find(*found));
  ShowExamples(*found, out);
  return true;
}

void DescribeData(const std::string& file, std::ostream& out) {
  BayesHost::DataSet data({file, file}, {});
  fmt::print(out, "{}: {} variables, {} cases\n", file, data.CountVariables(), data.CountCases());
  for (int i = 0; i < data.CountVariables(); ++i) {
    const ZARQ_Variable& variable = data.GetVariable(i);
    fmt::print(out, "  {:<24}{:<10}{}\n", variable.GetName(), variable.IsString() ? "text" : "numeric",
               variable.GetPreferredLabel() == variable.GetName() ? "" : variable.GetPreferredLabel());
  }
}

}  // namespace BayesApp
