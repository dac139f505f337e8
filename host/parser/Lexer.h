// Text of a statement to tokens.
//
// Identifiers: letters of any script, digits, _ . $ @ #, starting with neither a digit nor a period. A period
// that ends a line ends the statement. Texts stand in '..' or "..", on one line; a doubled quote is the quote
// itself. A # between tokens starts a comment that runs to the end of its line. A sign belongs to the number
// that it directly precedes when it follows a blank, an opening bracket, an operator or nothing.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "host/parser/Fault.h"
#include "platform/Visibility.h"
#include "platform/host/Tokens.h"

namespace BayesHost {

// Codes of operator tokens.
enum OperatorCode {
  kEquals = 1,
  kSlash = 2,
  kComma = 3,
  kOpenParenthesis = 4,
  kCloseParenthesis = 5,
  kOpenBrace = 6,
  kCloseBrace = 7,
  kPlus = 8,
  kMinus = 9,
  kStar = 10,
  kLess = 11,
  kGreater = 12,
  kSemicolon = ZARQ_Token::kRowSeparator
};

struct LexedText {
  std::vector<ZARQ_Token> fvTokens;
  // One past the terminating period; the end of the text when there is none.
  std::size_t fEnd = 0;
  // One past the last token.
  std::size_t fStop = 0;
  // The first fault. The tokens behind it are there all the same, so that the statement's end is found.
  std::optional<Fault> fFault;
};

// Lexes one statement: from the beginning of the text to its period. Positions are relative to the text.
BAYES_PLATFORM LexedText LexStatement(std::string_view text);

// The first place, from `position` on, that is neither blank nor comment.
BAYES_PLATFORM std::size_t SkipBlanks(std::string_view text, std::size_t position);

}  // namespace BayesHost
