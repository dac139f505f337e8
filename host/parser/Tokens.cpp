#include "platform/host/Tokens.h"

#include <utility>

#include "host/parser/TokenState.h"
#include "host/session/Session.h"

ZARQ_Token::ZARQ_Token(Kind kind, std::string text, std::size_t position, double number, int operatorCode,
                       bool leading)
    : fKind(kind),
      fText(std::move(text)),
      fPosition(position),
      fNumber(number),
      fOperatorCode(operatorCode),
      fLeading(leading) {}

ZARQ_TokenSequence::ZARQ_TokenSequence(bool wholeCommand)
    : fpState(std::make_unique<State>(State{
          BayesHost::LexStatement(BayesHost::Session::Current().GetCommand().GetText()), wholeCommand})) {}

ZARQ_TokenSequence::~ZARQ_TokenSequence() = default;
