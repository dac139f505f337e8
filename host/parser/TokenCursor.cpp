#include "host/parser/TokenCursor.h"

#include "host/output/StringTable.h"

namespace BayesHost {

std::string ShowToken(const ZARQ_Token& token) {
  return token.GetKind() == ZARQ_Token::Kind::QuotedText ? "'" + token.GetText() + "'" : token.GetText();
}

std::string TokenCursor::ShowNext() const {
  return IsAtEnd() ? StringTable::English().Find("the end of the command") : ShowToken(Peek());
}

}  // namespace BayesHost
