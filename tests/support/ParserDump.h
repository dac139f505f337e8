// An accepted command as text of the same language: abbreviations written out, brackets where they belong.
#pragma once

#include <fmt/format.h>

#include <string>
#include <vector>

#include "host/parser/CommandState.h"

namespace BayesHost {

inline std::string DumpToken(const ZARQ_Token& token) {
  if (token.IsNumber()) return fmt::format("{}", token.GetNumber());
  if (token.GetKind() != ZARQ_Token::Kind::QuotedText) return token.GetText();
  std::string quoted = "'";
  for (const char c : token.GetText()) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

inline std::string DumpTokens(const std::vector<ZARQ_Token>& tokens) {
  std::string text;
  bool isMatrix = false;
  for (const ZARQ_Token& token : tokens) {
    isMatrix = isMatrix || token.GetOperatorCode() == ZARQ_Token::kRowSeparator;
    text += (text.empty() ? "" : " ") + DumpToken(token);
  }
  return isMatrix ? "{" + text + "}" : text;
}

inline std::string DumpParam(const ParamObj::State& param) {
  const std::string values = DumpTokens(param.fvTokens);
  if (param.fKeyword.empty()) return param.fName + (values.empty() ? "" : "=" + values);
  return param.fName + "=" + param.fKeyword + (values.empty() ? "" : "(" + values + ")");
}

inline std::string DumpCommand(const std::string& name, const std::vector<SubComObj>& accepted) {
  std::string text = name;
  for (const SubComObj& subcommand : accepted) {
    const SubComObj::State& state = subcommand.GetState();
    if (!state.fName.empty()) text += " /" + state.fName;
    if (state.fBody) text += " " + DumpTokens(state.fBody->GetState().fvTokens);
    for (const ParamObj& param : state.fvParams) text += " " + DumpParam(param.GetState());
  }
  return text + ".";
}

}  // namespace BayesHost
