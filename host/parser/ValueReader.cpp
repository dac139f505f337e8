#include "host/parser/ValueReader.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>
#include <utility>

#include "host/output/HostKeys.h"
#include "host/parser/Fault.h"
#include "host/parser/GrammarWords.h"
#include "host/parser/Keywords.h"

namespace BayesHost {
namespace {

// Whole numbers up to here are exact as doubles.
constexpr double kLargestInteger = 9007199254740992.0;

class ValueReader {
 public:
  ValueReader(TokenCursor& cursor, const ParamDescriptor& param, const ValueContext& context)
      : fCursor(cursor), fParam(param), fContext(context) {}

  Value Read();

 private:
  using ReadFunction = void (ValueReader::*)();
  struct KindRule {
    UPSpecTypes::ParamSpec fSpec;
    ReadFunction fRead;
  };
  static const KindRule kRules[];
  static ReadFunction FindRule(UPSpecTypes::ParamSpec spec);

  // One function for each kind of value.
  void ReadTokens();
  void ReadKeyword();
  void ReadKeywords() { ReadList(&ValueReader::ReadKeyword); }
  void ReadQuotedText();
  void ReadNumber();
  void ReadNumbers() { ReadList(&ValueReader::ReadNumber); }
  void ReadInteger();
  void ReadVariable();
  void ReadPairs() { ReadJoined("WITH"); }
  void ReadTable();
  void ReadFile();
  void ReadQualifier();

  void ReadList(ReadFunction readItem);
  void ReadJoined(const char* joint);
  void ReadMatrix();
  void ReadName();
  void ReadNameOrValue();
  void ReadQualifierValues(const ParamDescriptor& qualifier);
  void CloseBracket(int code, const ZARQ_Token& opened);

  bool TakeSeparator();
  bool IsAtEndOfValue() const;
  bool IsAtSibling() const;
  void AppendNumber();
  std::size_t MatchNext(const std::vector<std::string>& keywords) const;

  [[noreturn]] void RejectHere(const char* key, Arguments more = {}) const;
  [[noreturn]] void RejectNext() const;

  TokenCursor& fCursor;
  const ParamDescriptor& fParam;
  const ValueContext& fContext;
  bool fBracketed = false;
  Value fValue;
};

const ValueReader::KindRule ValueReader::kRules[] = {
    {UPSpecTypes::kTokenList, &ValueReader::ReadTokens},
    {UPSpecTypes::kKeyword, &ValueReader::ReadKeyword},
    {UPSpecTypes::kQuotedText, &ValueReader::ReadQuotedText},
    {UPSpecTypes::kKeywords, &ValueReader::ReadKeywords},
    {UPSpecTypes::kNumber, &ValueReader::ReadNumber},
    {UPSpecTypes::kNumbers, &ValueReader::ReadNumbers},
    {UPSpecTypes::kInteger, &ValueReader::ReadInteger},
    {UPSpecTypes::kVariable, &ValueReader::ReadVariable},
    {UPSpecTypes::kVariablePairs, &ValueReader::ReadPairs},
    {UPSpecTypes::kTable, &ValueReader::ReadTable},
    {UPSpecTypes::kFile, &ValueReader::ReadFile},
    {UPSpecTypes::kQualifier, &ValueReader::ReadQualifier},
};

ValueReader::ReadFunction ValueReader::FindRule(UPSpecTypes::ParamSpec spec) {
  const auto rule = std::find_if(std::begin(kRules), std::end(kRules),
                                 [spec](const KindRule& entry) { return entry.fSpec == spec; });
  assert(rule != std::end(kRules));
  return rule->fRead;
}

Value ValueReader::Read() {
  const ZARQ_Token* const opened = fCursor.IsAtOperator(kOpenParenthesis) ? &fCursor.Take() : nullptr;
  fBracketed = opened != nullptr;
  const bool empty = fBracketed && fCursor.IsAtOperator(kCloseParenthesis) && !fParam.IsValueRequired();
  if (!empty) {
    if (IsAtEndOfValue()) RejectHere(kHostParamNeedValue, {DescribeValue(fParam)});
    (this->*FindRule(fParam.GetSpec()))();
  }
  if (fBracketed) CloseBracket(kCloseParenthesis, *opened);
  return std::move(fValue);
}

void ValueReader::ReadList(ReadFunction readItem) {
  do {
    (this->*readItem)();
  } while (!IsAtSibling() && TakeSeparator());
}

void ValueReader::ReadTokens() {
  if (fCursor.IsAtOperator(kOpenBrace)) return ReadMatrix();
  do {
    ReadNameOrValue();
  } while (TakeSeparator());
  if (fCursor.IsAtOperator(kSemicolon)) RejectHere(kHostBadMatrix);
}

// {1,2;3,4}: rows of one value or more. How long they are is the reader's business.
void ValueReader::ReadMatrix() {
  const ZARQ_Token& opened = fCursor.Take();
  for (;;) {
    if (IsAtEndOfValue()) RejectHere(kHostBadMatrix);
    do {
      ReadNameOrValue();
    } while (TakeSeparator());
    if (!fCursor.IsAtOperator(kSemicolon)) break;
    fValue.fvTokens.push_back(fCursor.Take());
  }
  CloseBracket(kCloseBrace, opened);
}

void ValueReader::ReadNameOrValue() {
  if (fCursor.IsAt(ZARQ_Token::Kind::Number)) return AppendNumber();
  ReadName();
}

// Names with a word between two of them. How many names there must be is the reader's business.
void ValueReader::ReadJoined(const char* joint) {
  const auto isAtJoint = [&] { return fCursor.IsAtWord() && IsSameWord(fCursor.Peek().GetText(), joint); };
  do {
    if (isAtJoint()) RejectNext();
    ReadName();
    if (!isAtJoint()) continue;
    fValue.fvTokens.push_back(fCursor.Take());
    if (IsAtEndOfValue()) RejectNext();
  } while (TakeSeparator());
}

void ValueReader::ReadTable() {
  ReadJoined("BY");
  const bool isJoined =
      std::any_of(fValue.fvTokens.begin(), fValue.fvTokens.end(), [](const ZARQ_Token& token) {
        return token.GetKind() == ZARQ_Token::Kind::Identifier && IsSameWord(token.GetText(), "BY");
      });
  if (fValue.fvTokens.size() > 1 && !isJoined) RejectHere(kHostNeedTable);
}

void ValueReader::ReadKeyword() {
  if (!fCursor.IsAtWord()) RejectNext();
  const std::string& keyword = fParam.GetStringValues()[MatchNext(fParam.GetStringValues())];
  const ZARQ_Token& word = fCursor.Take();
  fValue.fvTokens.emplace_back(word.GetKind(), keyword, word.GetPosition());
}

void ValueReader::ReadQuotedText() {
  if (!fCursor.IsAt(ZARQ_Token::Kind::QuotedText)) RejectNext();
  fValue.fvTokens.push_back(fCursor.Take());
}

void ValueReader::ReadFile() {
  if (!fCursor.IsAt(ZARQ_Token::Kind::QuotedText) || fCursor.Peek().GetText().empty()) RejectNext();
  fValue.fvTokens.push_back(fCursor.Take());
}

// ALL is no single variable, unless it is quoted.
void ValueReader::ReadVariable() {
  if (fCursor.IsAtWord() && IsSameWord(fCursor.Peek().GetText(), "ALL")) RejectNext();
  ReadName();
}

void ValueReader::ReadName() {
  if (!fCursor.IsAtWord() && !fCursor.IsAt(ZARQ_Token::Kind::QuotedText)) RejectNext();
  fValue.fvTokens.push_back(fCursor.Take());
}

void ValueReader::ReadNumber() {
  if (fCursor.IsAtWord() && !fParam.GetStringValues().empty()) return ReadKeyword();
  if (!fCursor.IsAt(ZARQ_Token::Kind::Number)) RejectNext();
  AppendNumber();
}

void ValueReader::ReadInteger() {
  if (fCursor.IsAt(ZARQ_Token::Kind::Number)) {
    const double number = fCursor.Peek().GetNumber();
    if (number != std::floor(number) || std::fabs(number) > kLargestInteger) RejectNext();
  }
  ReadNumber();
}

void ValueReader::ReadQualifier() {
  if (!fCursor.IsAtWord()) RejectNext();
  const std::vector<std::string> keywords = GetNames(fParam.GetQualifiers());
  const std::size_t chosen = MatchNext(keywords);
  fCursor.Take();
  fValue.fKeyword = keywords[chosen];
  ReadQualifierValues(fParam.GetQualifiers()[chosen]);
  const bool another = fCursor.IsAtWord() && !IsAtEndOfValue() && !IsAtSibling() &&
                       !MatchKeyword(fCursor.Peek().GetText(), keywords).empty();
  if (another) RejectHere(kHostOneQualifier, {keywords});
}

void ValueReader::ReadQualifierValues(const ParamDescriptor& qualifier) {
  const ValueContext context{fContext.fParam + " " + qualifier.GetName(), fContext.fSubCom, {}};
  ValueReader values(fCursor, qualifier, context);
  const bool isAtValue = fCursor.IsAt(ZARQ_Token::Kind::Number) || fCursor.IsAt(ZARQ_Token::Kind::QuotedText);
  if (qualifier.IsBare() && (isAtValue || fCursor.IsAtOperator(kOpenParenthesis)))
    values.RejectHere(kHostTokenNoQualif);
  if (isAtValue) values.RejectHere(kHostNeedParentheses);
  if (fCursor.IsAtOperator(kOpenParenthesis)) fValue.fvTokens = values.Read().fvTokens;
}

void ValueReader::CloseBracket(int code, const ZARQ_Token& opened) {
  if (fCursor.TakeOperator(code)) return;
  if (!IsAtEndOfValue()) RejectHere(kHostOneValue);
  Reject(kHostOpenBracket, {opened.GetText()}, opened.GetPosition());
}

// True when another item follows: behind a comma it must.
bool ValueReader::TakeSeparator() {
  const bool comma = fCursor.TakeOperator(kComma);
  if (comma && IsAtEndOfValue()) RejectNext();
  return !IsAtEndOfValue();
}

// Whatever can't be part of a value: the next parameter or subcommand, a closing bracket, the end of a row.
bool ValueReader::IsAtEndOfValue() const {
  constexpr int kEnding[] = {kSlash, kCloseParenthesis, kCloseBrace, kSemicolon};
  if (fCursor.IsAtEnd() || fCursor.IsAtLeadingWord()) return true;
  return std::any_of(std::begin(kEnding), std::end(kEnding),
                     [this](int code) { return fCursor.IsAtOperator(code); });
}

// Outside brackets, a word that names a parameter of the subcommand: that one stands bare, since no =
// follows.
bool ValueReader::IsAtSibling() const {
  const auto& siblings = fContext.fvSiblings;
  return !fBracketed && fCursor.IsAtWord() &&
         std::any_of(siblings.begin(), siblings.end(),
                     [this](const std::string& name) { return IsSameWord(fCursor.Peek().GetText(), name); });
}

void ValueReader::AppendNumber() {
  const double number = fCursor.Peek().GetNumber();
  const auto& lower = fParam.GetLowerBoundary();
  const auto& upper = fParam.GetUpperBoundary();
  const bool tooLow = lower && (number < lower->value ||
                                (number == lower->value && lower->option == UPSpecTypes::kGreaterThan));
  const bool tooHigh =
      upper && (number > upper->value || (number == upper->value && upper->option == UPSpecTypes::kLessThan));
  if (tooLow || tooHigh)
    throw Rejection{
        MakeBoundaryFault(fContext.fParam, fContext.fSubCom, lower, upper, fCursor.GetPosition())};
  fValue.fvTokens.push_back(fCursor.Take());
}

// The index of the keyword that the next word stands for.
std::size_t ValueReader::MatchNext(const std::vector<std::string>& keywords) const {
  const std::string& word = fCursor.Peek().GetText();
  const std::vector<std::size_t> matches = MatchKeyword(word, keywords);
  if (matches.size() == 1) return matches.front();
  if (matches.empty())
    Reject(kHostUnknownValue,
           {word, fContext.fParam, fContext.fSubCom, DescribeValue(fParam), FindNearest(word, keywords)},
           fCursor.GetPosition());
  Reject(kHostAmbiguousValue, {word, fContext.fParam, fContext.fSubCom, Pick(keywords, matches)},
         fCursor.GetPosition());
}

void ValueReader::RejectHere(const char* key, Arguments more) const {
  Arguments arguments{fContext.fParam, fContext.fSubCom};
  std::move(more.begin(), more.end(), std::back_inserter(arguments));
  Reject(key, std::move(arguments), fCursor.GetPosition());
}

void ValueReader::RejectNext() const {
  Reject(kHostNeedValue, {fCursor.ShowNext(), fContext.fParam, fContext.fSubCom, DescribeValue(fParam)},
         fCursor.GetPosition());
}

}  // namespace

Value ReadValue(TokenCursor& cursor, const ParamDescriptor& param, const ValueContext& context) {
  return ValueReader(cursor, param, context).Read();
}

}  // namespace BayesHost
