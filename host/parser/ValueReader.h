// Reads one parameter's value as its kind demands.
#pragma once

#include <string>
#include <vector>

#include "host/parser/TokenCursor.h"
#include "platform/host/Grammar.h"

namespace BayesHost {

// Where a value stands, for messages and for the end of lists.
struct ValueContext {
  std::string fParam;                   // the parameter, or parameter and qualifier
  std::string fSubCom;                  // the subcommand, the command for a body without a name
  std::vector<std::string> fvSiblings;  // parameters of the same subcommand
};

// A value as ParamObj::State keeps it.
struct Value {
  std::string fKeyword;
  std::vector<ZARQ_Token> fvTokens;
};

// The value behind `PARAM=`, bracketed or not. Throws a Rejection.
Value ReadValue(TokenCursor& cursor, const ParamDescriptor& param, const ValueContext& context);

}  // namespace BayesHost
