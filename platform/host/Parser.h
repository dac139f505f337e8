// The host's parser: checks a command against its declared grammar and gives typed access to what was
// accepted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/host/Grammar.h"
#include "platform/host/Tokens.h"

// One accepted parameter. Keywords are stored in the declared spelling. Readers of a value return false, and
// leave the argument alone, when the parameter stands without such a value. Of a qualifier parameter they see
// the qualifier's values only, never its keyword.
class BAYES_PLATFORM ParamObj {
 public:
  struct State;
  explicit ParamObj(std::shared_ptr<const State> state);

  const std::string& getName() const;
  bool getNumberValue(double& value) const;
  bool getIntegerValue(long& value) const;
  // True when the value is this keyword, in upper or lower case.
  bool isStringValueCase(const std::string& keyword) const;
  // All value tokens in order, row separators included; parentheses, braces and commas are gone.
  const std::vector<ZARQ_Token>& getTokenList() const;
  // The numbers among the value tokens; false when there are none.
  bool getNumberList(std::vector<double>& numbers) const;
  // The qualifier's keyword and the tokens of its values (empty when it stands bare).
  bool getStringAndQual(std::string& keyword, std::vector<ZARQ_Token>& values) const;
  // Several keywords, in upper case, in the order given.
  bool getUpStringList(std::vector<std::string>& keywords) const;
  // A file name as it was given. The flags are reserved; pass true.
  bool getFilePath(std::string& path, bool, bool) const;
  // The variable names of a list with or without WITH (variable pairs).
  bool getVarList(std::vector<ZARQ_Token>& names) const;
  // The variable names around BY (table).
  bool getCrossVarList(std::vector<ZARQ_Token>& names) const;

  const State& GetState() const { return *fpState; }

 private:
  std::shared_ptr<const State> fpState;
};

// One accepted subcommand.
class BAYES_PLATFORM SubComObj {
 public:
  struct State;
  explicit SubComObj(std::shared_ptr<const State> state);

  const std::string& getName() const;
  // Null when the parameter is absent. Lives as long as the command specification. From here on, messages
  // that name this parameter point at it.
  const ParamObj* getParamObj(const std::string& name) const;
  // The unnamed body; null when the subcommand has none.
  const ParamObj* getExportParamObj() const;

  const State& GetState() const { return *fpState; }

 private:
  std::shared_ptr<const State> fpState;
};

// The accepted command: filled by UniversalParser, read by the module.
class BAYES_PLATFORM CommandSpec {
 public:
  CommandSpec();
  ~CommandSpec();
  CommandSpec(const CommandSpec&) = delete;
  CommandSpec& operator=(const CommandSpec&) = delete;

  int getSubComListSize() const;
  // The first subcommand of that name, "" for the unnamed one; null when absent.
  const SubComObj* getSubComObj(const std::string& name) const;
  // All subcommands of that name in command order; returns their number.
  int getSubComObj(const std::string& name, std::vector<const SubComObj*>& subcommands) const;

  struct State;
  State& GetState() { return *fpState; }

 private:
  std::unique_ptr<State> fpState;
};

class BAYES_PLATFORM UniversalParser {
 public:
  // All three must outlive the parser.
  UniversalParser(ZARQ_TokenSequence& tokens, CommandSpec& spec, const CommandDescriptor& grammar);

  // 0: the text fits the grammar and the specification is filled. Otherwise the text was rejected (and the
  // user told where, why and what was expected), or the run only asked for the grammar.
  int getCommandSpecifications();

 private:
  ZARQ_TokenSequence& fTokens;
  CommandSpec& fSpec;
  const CommandDescriptor& fGrammar;
};
