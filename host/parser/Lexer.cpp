#include "host/parser/Lexer.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <utility>

#include "host/output/HostKeys.h"
#include "host/parser/Utf8.h"

namespace BayesHost {
namespace {

constexpr std::pair<char, OperatorCode> kOperators[] = {
    {'=', kEquals},
    {'/', kSlash},
    {',', kComma},
    {'(', kOpenParenthesis},
    {')', kCloseParenthesis},
    {'{', kOpenBrace},
    {'}', kCloseBrace},
    {'+', kPlus},
    {'-', kMinus},
    {'*', kStar},
    {'<', kLess},
    {'>', kGreater},
    {';', kSemicolon},
};

bool IsBlank(char c) {
  return std::string_view(" \t\r\n\f\v").find(c) != std::string_view::npos;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsSign(char c) {
  return c == '+' || c == '-';
}

// Identifier characters beside letters and digits.
bool IsNameMark(char c) {
  return std::string_view("_.$@#").find(c) != std::string_view::npos;
}

std::size_t FindLineEnd(std::string_view text, std::size_t position) {
  return std::min(text.find('\n', position), text.size());
}

class StatementLexer {
 public:
  explicit StatementLexer(std::string_view text) : fText(text) {}

  LexedText Lex();

 private:
  // A character by place; beyond the text stands NUL, which is part of no token.
  char At(std::size_t position) const { return position < fText.size() ? fText[position] : '\0'; }
  bool IsTerminator(std::size_t position) const;
  std::size_t FindWordEnd(std::size_t position) const;
  std::size_t FindDigitsEnd(std::size_t position) const;
  std::size_t FindNumberEnd() const;
  bool StartsNumber() const;
  bool MayCarrySign() const;

  void ReadToken();
  void ReadNumber();
  void ReadWord();
  void ReadText();
  bool ReadOperator();
  void ReadBadCharacter();

  void Add(ZARQ_Token::Kind kind, std::string text, std::size_t end, double number = 0, int code = -1);
  void NoteFault(const char* key, Arguments arguments = {});
  void MarkLeading();

  std::string_view fText;
  std::size_t fPosition = 0;
  LexedText fLexed;
};

LexedText StatementLexer::Lex() {
  for (;;) {
    fPosition = SkipBlanks(fText, fPosition);
    if (fPosition >= fText.size()) break;
    if (IsTerminator(fPosition)) {
      ++fPosition;
      break;
    }
    ReadToken();
  }
  fLexed.fEnd = fPosition;
  MarkLeading();
  return std::move(fLexed);
}

// A period with nothing but blanks, or a comment after a blank, between it and the end of its line.
bool StatementLexer::IsTerminator(std::size_t position) const {
  if (At(position) != '.') return false;
  const std::size_t next = std::min(fText.find_first_not_of(" \t\r", position + 1), fText.size());
  return next == fText.size() || fText[next] == '\n' || (fText[next] == '#' && next > position + 1);
}

// One past the identifier characters from a place on; the terminating period is none.
std::size_t StatementLexer::FindWordEnd(std::size_t position) const {
  while (position < fText.size() && !IsTerminator(position)) {
    const Utf8Character character = ReadUtf8(fText, position);
    if (!character.IsLetter() && !IsDigit(fText[position]) && !IsNameMark(fText[position])) break;
    position += character.fSize;
  }
  return position;
}

std::size_t StatementLexer::FindDigitsEnd(std::size_t position) const {
  while (IsDigit(At(position))) ++position;
  return position;
}

// One past the longest number (sign, digits, fraction, exponent) from the current place on.
std::size_t StatementLexer::FindNumberEnd() const {
  std::size_t end = FindDigitsEnd(fPosition + (IsSign(At(fPosition)) ? 1 : 0));
  if (At(end) == '.' && !IsTerminator(end)) end = FindDigitsEnd(end + 1);
  if (At(end) != 'e' && At(end) != 'E') return end;
  const std::size_t exponent = end + (IsSign(At(end + 1)) ? 2 : 1);
  return IsDigit(At(exponent)) ? FindDigitsEnd(exponent) : end;
}

bool StatementLexer::StartsNumber() const {
  std::size_t digit = fPosition;
  if (IsSign(At(digit)) && MayCarrySign()) ++digit;
  if (At(digit) == '.') ++digit;
  return IsDigit(At(digit));
}

bool StatementLexer::MayCarrySign() const {
  if (fPosition == 0 || IsBlank(fText[fPosition - 1])) return true;
  return std::string_view("=/,({+-*<>;").find(fText[fPosition - 1]) != std::string_view::npos;
}

void StatementLexer::ReadToken() {
  if (StartsNumber()) return ReadNumber();
  if (At(fPosition) == '\'' || At(fPosition) == '"') return ReadText();
  if (At(fPosition) != '.' && FindWordEnd(fPosition) > fPosition) return ReadWord();
  if (!ReadOperator()) ReadBadCharacter();
}

void StatementLexer::ReadNumber() {
  const std::size_t end = FindWordEnd(FindNumberEnd());
  std::string text(fText.substr(fPosition, end - fPosition));
  const char* const begin = text.data() + (text.front() == '+' ? 1 : 0);
  const char* const last = text.data() + text.size();
  double number = 0;
  const auto [rest, error] = std::from_chars(begin, last, number);
  if (error != std::errc() || rest != last) NoteFault(kHostBadNumber, {text});
  Add(ZARQ_Token::Kind::Number, std::move(text), end, number);
}

void StatementLexer::ReadWord() {
  const std::size_t end = FindWordEnd(fPosition);
  Add(ZARQ_Token::Kind::Identifier, std::string(fText.substr(fPosition, end - fPosition)), end);
}

// An unclosed text ends with its line, before a period there: what follows is lexed as it stands.
void StatementLexer::ReadText() {
  const char quote = fText[fPosition];
  const std::size_t lineEnd = FindLineEnd(fText, fPosition);
  std::string text;
  for (std::size_t i = fPosition + 1; i < lineEnd; ++i) {
    if (fText[i] == quote && At(i + 1) != quote)
      return Add(ZARQ_Token::Kind::QuotedText, std::move(text), i + 1);
    if (fText[i] == quote) ++i;
    text += fText[i];
  }
  NoteFault(kHostOpenQuote);
  std::size_t end = fPosition + 1;
  while (end < lineEnd && !IsTerminator(end)) ++end;
  Add(ZARQ_Token::Kind::QuotedText, std::string(fText.substr(fPosition + 1, end - fPosition - 1)), end);
}

bool StatementLexer::ReadOperator() {
  const auto found = std::find_if(std::begin(kOperators), std::end(kOperators),
                                  [this](const auto& entry) { return entry.first == At(fPosition); });
  if (found == std::end(kOperators)) return false;
  Add(ZARQ_Token::Kind::Operator, std::string(1, found->first), fPosition + 1, 0, found->second);
  return true;
}

void StatementLexer::ReadBadCharacter() {
  NoteFault(kHostBadCharacter, {ShowCharacter(fText, fPosition)});
  fPosition += ReadUtf8(fText, fPosition).fSize;
}

void StatementLexer::Add(ZARQ_Token::Kind kind, std::string text, std::size_t end, double number, int code) {
  fLexed.fvTokens.emplace_back(kind, std::move(text), fPosition, number, code);
  fPosition = fLexed.fStop = end;
}

void StatementLexer::NoteFault(const char* key, Arguments arguments) {
  if (!fLexed.fFault) fLexed.fFault = Fault{key, std::move(arguments), fPosition};
}

// An identifier before = opens a parameter, one after / a subcommand.
void StatementLexer::MarkLeading() {
  std::vector<ZARQ_Token>& tokens = fLexed.fvTokens;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (tokens[i].GetKind() != ZARQ_Token::Kind::Identifier) continue;
    const bool opensParameter = i + 1 < tokens.size() && tokens[i + 1].GetOperatorCode() == kEquals;
    const bool opensSubCommand = i > 0 && tokens[i - 1].GetOperatorCode() == kSlash;
    if (opensParameter || opensSubCommand)
      tokens[i] = ZARQ_Token(tokens[i].GetKind(), tokens[i].GetText(), tokens[i].GetPosition(), 0, -1, true);
  }
}

}  // namespace

LexedText LexStatement(std::string_view text) {
  return StatementLexer(text).Lex();
}

std::size_t SkipBlanks(std::string_view text, std::size_t position) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (position == 0 && text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
    position = kByteOrderMark.size();
  for (;;) {
    while (position < text.size() && IsBlank(text[position])) ++position;
    if (position >= text.size() || text[position] != '#') return position;
    position = FindLineEnd(text, position);
  }
}

}  // namespace BayesHost
