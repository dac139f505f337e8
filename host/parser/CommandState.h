// What stands behind the accepted command that the module reads.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/host/Parser.h"

struct ParamObj::State {
  std::string fName;          // as declared
  std::size_t fPosition = 0;  // of the name in the command text
  std::string fKeyword;       // the qualifier, as declared; empty for other kinds and a bare parameter
  // The value's tokens, keywords in their declared spelling; of a qualifier, those of its values. WITH and BY
  // stay in their lists.
  std::vector<ZARQ_Token> fvTokens;
};

struct SubComObj::State {
  std::string fName;
  std::size_t fPosition = 0;
  std::vector<ParamObj> fvParams;
  std::optional<ParamObj> fBody;  // of a subcommand without named parameters
};

struct CommandSpec::State {
  std::vector<SubComObj> fvSubComs;
};

namespace BayesHost {

// Null when the subcommand lacks the parameter.
inline const ParamObj* FindParam(const SubComObj::State& subcommand, const std::string& name) {
  for (const ParamObj& param : subcommand.fvParams)
    if (param.GetState().fName == name) return &param;
  return nullptr;
}

}  // namespace BayesHost
