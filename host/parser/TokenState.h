#pragma once

#include "host/parser/Lexer.h"
#include "platform/host/Tokens.h"

struct ZARQ_TokenSequence::State {
  BayesHost::LexedText fLexed;
  bool fHasCommandName;  // false: the text is what follows the name
};
