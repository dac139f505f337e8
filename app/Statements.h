// A command file as statements.
#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "host/parser/Fault.h"
#include "platform/host/Grammar.h"
#include "platform/host/Tokens.h"

namespace BayesApp {

// DATA FILE='f' [DICTIONARY='d'] [SQL='query']. What isn't given is empty.
struct DataStatement {
  std::string fFile;
  std::string fDictionary;
  std::string fSql;
};

// SPLIT FILE BY a b. An empty list: OFF.
struct SplitStatement {
  std::vector<ZARQ_Token> fvNames;
};

// WEIGHT BY w. An empty list: OFF.
struct WeightStatement {
  std::vector<ZARQ_Token> fvNames;
};

// SAVE DATA OUTFILE='f'.
struct SaveStatement {
  std::string fFile;
};

// One of the module's commands; its text is checked by the module's own grammar.
struct BayesStatement {
  std::string fName;  // in full, "BAYES ONESAMPLE"
};

// Places inside a statement are relative to its beginning.
struct Statement {
  std::size_t fBegin = 0;
  std::size_t fEnd = 0;  // one past its period, or past the text where the last one has none
  std::variant<BayesStatement, DataStatement, SplitStatement, WeightStatement, SaveStatement,
               BayesHost::Fault>
      fContent;
};

// All statements of a text in order. One that is not well formed is a fault, and the others are found all the
// same: a command that starts a line while the one before lacks its period starts a statement of its own.
std::vector<Statement> SplitStatements(const std::string& source);

// The grammars of the statements that the program reads by itself.
std::vector<CommandDescriptor> MakeStatementGrammars();

// The module's commands, in full.
const std::vector<std::string>& GetBayesCommands();

}  // namespace BayesApp
