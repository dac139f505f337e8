// A place in the tokens of a statement.
#pragma once

#include <string>

#include "host/parser/Lexer.h"

namespace BayesHost {

class TokenCursor {
 public:
  // `text` must outlive the cursor.
  explicit TokenCursor(const LexedText& text) : fText(text) {}

  bool IsAtEnd() const { return fNext == fText.fvTokens.size(); }
  // The next token; not at the end.
  const ZARQ_Token& Peek() const { return fText.fvTokens[fNext]; }
  const ZARQ_Token& Take() { return fText.fvTokens[fNext++]; }

  bool IsAt(ZARQ_Token::Kind kind) const { return !IsAtEnd() && Peek().GetKind() == kind; }
  bool IsAtOperator(int code) const { return !IsAtEnd() && Peek().GetOperatorCode() == code; }
  bool IsAtWord() const { return IsAt(ZARQ_Token::Kind::Identifier); }
  // A word that opens a parameter: = follows.
  bool IsAtLeadingWord() const { return IsAtWord() && Peek().IsLeading(); }
  // Takes the operator if it comes next.
  bool TakeOperator(int code) {
    const bool found = IsAtOperator(code);
    if (found) ++fNext;
    return found;
  }

  // Of the next token; at the end, right behind the last one.
  std::size_t GetPosition() const { return IsAtEnd() ? fText.fStop : Peek().GetPosition(); }
  // The next token for a message.
  std::string ShowNext() const;

 private:
  const LexedText& fText;
  std::size_t fNext = 0;
};

// A token as the user wrote it.
std::string ShowToken(const ZARQ_Token& token);

}  // namespace BayesHost
