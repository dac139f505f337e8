#include "host/parser/GrammarCheck.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "host/output/HostKeys.h"
#include "host/parser/CommandState.h"
#include "host/parser/GrammarWords.h"
#include "host/parser/Keywords.h"
#include "host/parser/ValueReader.h"

namespace BayesHost {
namespace {

// Without the name of the leading body, which is empty.
std::vector<std::string> DropEmpty(std::vector<std::string> names) {
  names.erase(std::remove(names.begin(), names.end(), std::string()), names.end());
  return names;
}

// What stands behind the name of a body: its keywords stand in place of both.
ParamDescriptor DropKeywords(const ParamDescriptor& body) {
  return {body.GetName(), body.GetSpec(), true, true, UPSpecTypes::kBracketsFree};
}

// A subcommand under way.
struct OpenSubCom {
  const SubComDescriptor& fDescriptor;
  std::string fLabel;  // its name, or the command's where it has none
  std::vector<std::string> fvParamNames;
  SubComObj::State fState;
};

class GrammarCheck {
 public:
  GrammarCheck(const LexedText& text, const CommandDescriptor& grammar) : fCursor(text), fGrammar(grammar) {}

  std::vector<SubComObj> Check(bool hasName);

 private:
  void SkipName();
  void ReadLeadingBody();
  void ReadSubCommand();
  const SubComDescriptor& MatchSubCommand(const ZARQ_Token& name) const;
  void ReadBody(const SubComDescriptor& descriptor, std::size_t position);
  ParamObj ReadUnnamedBody(const OpenSubCom& open);
  bool TakeBodyKeyword(const ParamDescriptor& body, ParamObj::State& state);
  void ReadParam(OpenSubCom& open);
  const ParamDescriptor& MatchParam(const OpenSubCom& open) const;
  Value ReadParamValue(const ParamDescriptor& param, const OpenSubCom& open, std::size_t position);
  void CheckRequiredParams(const OpenSubCom& open) const;
  void CheckRequiredSubComs() const;
  const SubComDescriptor* FindSubCom(const std::string& name) const;
  bool IsAccepted(const std::string& name) const;
  [[noreturn]] void RejectAsParam(const OpenSubCom& open) const;

  TokenCursor fCursor;
  const CommandDescriptor& fGrammar;
  std::vector<SubComObj> fvAccepted;
};

std::vector<SubComObj> GrammarCheck::Check(bool hasName) {
  if (hasName) SkipName();
  if (!fCursor.IsAtEnd()) {
    ReadLeadingBody();
    while (!fCursor.IsAtEnd()) ReadSubCommand();
    CheckRequiredSubComs();
  }
  return std::move(fvAccepted);
}

// Whoever found the command by its name has read it: its words are passed over.
void GrammarCheck::SkipName() {
  const std::string& name = fGrammar.GetCommandName();
  const auto blanks = std::count(name.begin(), name.end(), ' ');
  for (auto words = blanks + 1; words > 0 && fCursor.IsAtWord(); --words) fCursor.Take();
}

void GrammarCheck::ReadLeadingBody() {
  const SubComDescriptor* const leading = FindSubCom("");
  if (leading == nullptr) return;
  if (!fCursor.IsAtOperator(kSlash)) return ReadBody(*leading, fCursor.GetPosition());
  if (leading->IsRequired())
    Reject(kHostMissingBody, {fCursor.ShowNext(), fGrammar.GetCommandName()}, fCursor.GetPosition());
}

void GrammarCheck::ReadSubCommand() {
  const std::size_t position = fCursor.GetPosition();
  const auto names = DropEmpty(GetNames(fGrammar.GetSubComs()));
  if (names.empty())
    Reject(kHostNeedEnd, {fCursor.ShowNext(), fGrammar.GetCommandName()}, fCursor.GetPosition());
  const bool slash = fCursor.TakeOperator(kSlash);
  if (!slash || !fCursor.IsAtWord())
    Reject(kHostNeedSubCommand, {fCursor.ShowNext(), fGrammar.GetCommandName(), names},
           fCursor.GetPosition());
  const SubComDescriptor& descriptor = MatchSubCommand(fCursor.Take());
  if (!descriptor.IsRepeatable() && IsAccepted(descriptor.GetName()))
    Reject(kHostRepeatedSubCommand, {descriptor.GetName(), fGrammar.GetCommandName()}, position);
  ReadBody(descriptor, position);
}

const SubComDescriptor& GrammarCheck::MatchSubCommand(const ZARQ_Token& name) const {
  const auto all = GetNames(fGrammar.GetSubComs());
  const auto matches = MatchKeyword(name.GetText(), all);
  if (matches.size() == 1) return fGrammar.GetSubComs()[matches.front()];
  if (!matches.empty())
    Reject(kHostAmbiguousSubCommand, {name.GetText(), fGrammar.GetCommandName(), Pick(all, matches)},
           name.GetPosition());
  const auto names = DropEmpty(all);
  Reject(kHostUnknownSubCommand,
         {name.GetText(), fGrammar.GetCommandName(), names, FindNearest(name.GetText(), names)},
         name.GetPosition());
}

void GrammarCheck::ReadBody(const SubComDescriptor& descriptor, std::size_t position) {
  const std::string& name = descriptor.GetName();
  OpenSubCom open{
      descriptor, name.empty() ? fGrammar.GetCommandName() : name, GetNames(descriptor.GetParams()), {}};
  open.fState.fName = name;
  open.fState.fPosition = position;
  if (descriptor.GetSpec() == UPSpecTypes::kUnnamedBody)
    open.fState.fBody = ReadUnnamedBody(open);
  else
    while (!fCursor.IsAtEnd() && !fCursor.IsAtOperator(kSlash)) ReadParam(open);
  CheckRequiredParams(open);
  fvAccepted.emplace_back(std::make_shared<SubComObj::State>(std::move(open.fState)));
}

// A body that declares no specification of its own is a list of names with BY and WITH.
ParamObj GrammarCheck::ReadUnnamedBody(const OpenSubCom& open) {
  const ParamDescriptor names("", UPSpecTypes::kTokenList, true, true, UPSpecTypes::kBracketsFree);
  const auto& exported = open.fDescriptor.GetExportParam();
  const ParamDescriptor& declared = exported ? *exported : names;
  ParamObj::State body;
  body.fPosition = fCursor.GetPosition();
  if (declared.GetName().empty())
    body.fvTokens = ReadValue(fCursor, declared, {open.fLabel, fGrammar.GetCommandName(), {}}).fvTokens;
  else if (!TakeBodyKeyword(declared, body))
    body.fvTokens =
        ReadValue(fCursor, DropKeywords(declared), {declared.GetName(), open.fLabel, {}}).fvTokens;
  return ParamObj(std::make_shared<ParamObj::State>(std::move(body)));
}

// Takes the name that a body stands behind. True: a keyword stands in place of name and value.
bool GrammarCheck::TakeBodyKeyword(const ParamDescriptor& body, ParamObj::State& state) {
  std::vector<std::string> words = body.GetStringValues();
  words.push_back(body.GetName());
  const auto matches =
      fCursor.IsAtWord() ? MatchKeyword(fCursor.Peek().GetText(), words) : std::vector<std::size_t>();
  if (matches.size() != 1)
    Reject(kHostNeedBehind, {fCursor.ShowNext(), fGrammar.GetCommandName(), DescribeBody(body)},
           fCursor.GetPosition());
  fCursor.Take();
  const std::string& word = words[matches.front()];
  if (word != body.GetName()) state.fKeyword = word;
  return !state.fKeyword.empty();
}

void GrammarCheck::ReadParam(OpenSubCom& open) {
  const ParamDescriptor& descriptor = MatchParam(open);
  ParamObj::State param;
  param.fName = descriptor.GetName();
  param.fPosition = fCursor.GetPosition();
  if (FindParam(open.fState, param.fName) != nullptr)
    Reject(kHostRepeatedParam, {param.fName, open.fLabel}, param.fPosition);
  fCursor.Take();
  Value value = ReadParamValue(descriptor, open, param.fPosition);
  param.fKeyword = std::move(value.fKeyword);
  param.fvTokens = std::move(value.fvTokens);
  open.fState.fvParams.emplace_back(std::make_shared<ParamObj::State>(std::move(param)));
}

const ParamDescriptor& GrammarCheck::MatchParam(const OpenSubCom& open) const {
  if (!fCursor.IsAtWord()) RejectAsParam(open);
  const auto matches = MatchKeyword(fCursor.Peek().GetText(), open.fvParamNames);
  if (matches.empty()) RejectAsParam(open);
  if (matches.size() > 1)
    Reject(kHostAmbiguousParam, {fCursor.ShowNext(), open.fLabel, Pick(open.fvParamNames, matches)},
           fCursor.GetPosition());
  return open.fDescriptor.GetParams()[matches.front()];
}

// What stands at a parameter's place opens none: a wrong word, or a second value for the parameter before.
void GrammarCheck::RejectAsParam(const OpenSubCom& open) const {
  const std::size_t position = fCursor.GetPosition();
  const std::string found = fCursor.ShowNext();
  if (fCursor.IsAtOperator(kCloseParenthesis) || fCursor.IsAtOperator(kCloseBrace))
    Reject(kHostExtraBracket, {found}, position);
  const auto nearest =
      fCursor.IsAtWord() ? FindNearest(found, open.fvParamNames) : std::vector<std::string>();
  if (fCursor.IsAtLeadingWord() || !nearest.empty())
    Reject(kHostUnknownParam, {found, open.fLabel, open.fvParamNames, nearest}, position);
  if (!open.fState.fvParams.empty() && !fCursor.IsAtOperator(kEquals))
    Reject(kHostOneValue, {open.fState.fvParams.back().getName(), open.fLabel}, position);
  Reject(kHostNeedParam, {found, open.fLabel, open.fvParamNames}, position);
}

Value GrammarCheck::ReadParamValue(const ParamDescriptor& param, const OpenSubCom& open,
                                   std::size_t position) {
  if (fCursor.TakeOperator(kEquals))
    return ReadValue(fCursor, param, {param.GetName(), open.fLabel, open.fvParamNames});
  const bool mayStandBare = !param.IsValueRequired() && !param.NeedsExactlyOneQualifier();
  if (!mayStandBare || fCursor.IsAtOperator(kOpenParenthesis))
    Reject(kHostNeedEquals, {param.GetName(), open.fLabel, DescribeValue(param)}, position);
  return {};
}

void GrammarCheck::CheckRequiredParams(const OpenSubCom& open) const {
  for (const ParamDescriptor& param : open.fDescriptor.GetParams())
    if (param.IsRequired() && FindParam(open.fState, param.GetName()) == nullptr)
      Reject(kHostMissingParam, {param.GetName(), open.fLabel, DescribeValue(param)}, open.fState.fPosition);
}

void GrammarCheck::CheckRequiredSubComs() const {
  for (const SubComDescriptor& descriptor : fGrammar.GetSubComs())
    if (descriptor.IsRequired() && !IsAccepted(descriptor.GetName()))
      Reject(kHostMissingSubCommand, {descriptor.GetName(), fGrammar.GetCommandName()}, 0);
}

const SubComDescriptor* GrammarCheck::FindSubCom(const std::string& name) const {
  for (const SubComDescriptor& descriptor : fGrammar.GetSubComs())
    if (descriptor.GetName() == name) return &descriptor;
  return nullptr;
}

bool GrammarCheck::IsAccepted(const std::string& name) const {
  return std::any_of(fvAccepted.begin(), fvAccepted.end(),
                     [&](const SubComObj& subcommand) { return subcommand.getName() == name; });
}

}  // namespace

std::optional<Fault> CheckCommand(const LexedText& text, bool hasName, const CommandDescriptor& grammar,
                                  std::vector<SubComObj>& accepted) {
  if (text.fFault) return text.fFault;
  try {
    accepted = GrammarCheck(text, grammar).Check(hasName);
    return std::nullopt;
  } catch (const Rejection& rejection) {
    return rejection.fFault;
  }
}

}  // namespace BayesHost
