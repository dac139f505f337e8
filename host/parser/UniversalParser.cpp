#include "host/parser/CommandState.h"
#include "host/parser/GrammarCheck.h"
#include "host/parser/GrammarHelp.h"
#include "host/parser/TokenState.h"
#include "host/session/Session.h"

namespace {
enum Status { kAccepted = 0, kRejected = 1, kDescribed = 2 };
}  // namespace

UniversalParser::UniversalParser(ZARQ_TokenSequence& tokens, CommandSpec& spec,
                                 const CommandDescriptor& grammar)
    : fTokens(tokens), fSpec(spec), fGrammar(grammar) {}

int UniversalParser::getCommandSpecifications() {
  if (BayesHost::Session::Current().GetOptions().fParserMode == BayesHost::ParserMode::Describe) {
    BayesHost::GrammarHelp::Record(fGrammar);
    return kDescribed;
  }
  const ZARQ_TokenSequence::State& tokens = fTokens.GetState();
  const auto fault =
      BayesHost::CheckCommand(tokens.fLexed, tokens.fHasCommandName, fGrammar, fSpec.GetState().fvSubComs);
  if (fault) BayesHost::ShowFault(*fault);
  return fault ? kRejected : kAccepted;
}
