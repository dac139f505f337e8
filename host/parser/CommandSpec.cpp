#include <algorithm>
#include <utility>

#include "host/parser/CommandState.h"
#include "host/parser/Keywords.h"
#include "host/parser/ParserRun.h"

using BayesHost::IsSameWord;

namespace {

// The first number among the tokens; null when there is none.
const ZARQ_Token* FindNumber(const std::vector<ZARQ_Token>& tokens) {
  const auto found =
      std::find_if(tokens.begin(), tokens.end(), [](const ZARQ_Token& token) { return token.IsNumber(); });
  return found == tokens.end() ? nullptr : &*found;
}

// The tokens of a list of names without the word that joins its parts.
bool GetNames(const std::vector<ZARQ_Token>& tokens, const char* joint, std::vector<ZARQ_Token>& names) {
  std::vector<ZARQ_Token> found;
  std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(found), [joint](const ZARQ_Token& token) {
    return token.GetKind() != ZARQ_Token::Kind::Identifier || !IsSameWord(token.GetText(), joint);
  });
  if (found.empty()) return false;
  names = std::move(found);
  return true;
}

void NoteReading(const std::shared_ptr<const SubComObj::State>& subcommand) {
  BayesHost::ParserRun& run = BayesHost::GetParserRun();
  run.fpLastRead = run.fRead[subcommand->fName] = subcommand;
}

}  // namespace

ParamObj::ParamObj(std::shared_ptr<const State> state) : fpState(std::move(state)) {}

const std::string& ParamObj::getName() const {
  return fpState->fName;
}

bool ParamObj::getNumberValue(double& value) const {
  const ZARQ_Token* const number = FindNumber(fpState->fvTokens);
  if (number != nullptr) value = number->GetNumber();
  return number != nullptr;
}

bool ParamObj::getIntegerValue(long& value) const {
  const ZARQ_Token* const number = FindNumber(fpState->fvTokens);
  if (number != nullptr) value = static_cast<long>(number->GetNumber());
  return number != nullptr;
}

bool ParamObj::isStringValueCase(const std::string& keyword) const {
  if (fpState->fvTokens.empty()) return false;
  const ZARQ_Token& token = fpState->fvTokens.front();
  return token.GetKind() == ZARQ_Token::Kind::Identifier && IsSameWord(token.GetText(), keyword);
}

const std::vector<ZARQ_Token>& ParamObj::getTokenList() const {
  return fpState->fvTokens;
}

bool ParamObj::getNumberList(std::vector<double>& numbers) const {
  if (FindNumber(fpState->fvTokens) == nullptr) return false;
  numbers.clear();
  for (const ZARQ_Token& token : fpState->fvTokens)
    if (token.IsNumber()) numbers.push_back(token.GetNumber());
  return true;
}

bool ParamObj::getStringAndQual(std::string& keyword, std::vector<ZARQ_Token>& values) const {
  if (fpState->fKeyword.empty()) return false;
  keyword = fpState->fKeyword;
  values = fpState->fvTokens;
  return true;
}

bool ParamObj::getUpStringList(std::vector<std::string>& keywords) const {
  if (fpState->fvTokens.empty()) return false;
  keywords.clear();
  for (const ZARQ_Token& token : fpState->fvTokens) keywords.push_back(BayesHost::ToUpper(token.GetText()));
  return true;
}

bool ParamObj::getFilePath(std::string& path, bool, bool) const {
  if (fpState->fvTokens.empty()) return false;
  path = fpState->fvTokens.front().GetText();
  return true;
}

bool ParamObj::getVarList(std::vector<ZARQ_Token>& names) const {
  return GetNames(fpState->fvTokens, "WITH", names);
}

bool ParamObj::getCrossVarList(std::vector<ZARQ_Token>& names) const {
  return GetNames(fpState->fvTokens, "BY", names);
}

SubComObj::SubComObj(std::shared_ptr<const State> state) : fpState(std::move(state)) {}

const std::string& SubComObj::getName() const {
  return fpState->fName;
}

const ParamObj* SubComObj::getParamObj(const std::string& name) const {
  NoteReading(fpState);
  return BayesHost::FindParam(*fpState, name);
}

const ParamObj* SubComObj::getExportParamObj() const {
  NoteReading(fpState);
  return fpState->fBody ? &*fpState->fBody : nullptr;
}

CommandSpec::CommandSpec() : fpState(std::make_unique<State>()) {}
CommandSpec::~CommandSpec() = default;

int CommandSpec::getSubComListSize() const {
  return static_cast<int>(fpState->fvSubComs.size());
}

const SubComObj* CommandSpec::getSubComObj(const std::string& name) const {
  std::vector<const SubComObj*> found;
  return getSubComObj(name, found) == 0 ? nullptr : found.front();
}

int CommandSpec::getSubComObj(const std::string& name, std::vector<const SubComObj*>& subcommands) const {
  subcommands.clear();
  for (const SubComObj& subcommand : fpState->fvSubComs)
    if (subcommand.getName() == name) subcommands.push_back(&subcommand);
  return static_cast<int>(subcommands.size());
}
