#include "host/parser/Diagnostic.h"

#include <utility>

namespace BayesHost {

Message MakeMessage(const Diagnostic& diagnostic, const CommandText& command) {
  SourcePlace place = FindPlace(command, diagnostic.fPosition);
  Message message;
  message.fLevel = diagnostic.fLevel;
  message.fText.fText = StringTable::English().Fill(diagnostic.fKey, diagnostic.fvArguments);
  message.fText.fKey = diagnostic.fKey;
  for (const Argument& argument : diagnostic.fvArguments)
    message.fText.fvArguments.push_back(argument.GetText());
  message.fLine = place.fLine;
  message.fColumn = place.fColumn;
  message.fSourceLine = std::move(place.fLineText);
  return message;
}

void Report(const Diagnostic& diagnostic) {
  const Session& session = Session::Current();
  session.GetOutput().AddMessage(MakeMessage(diagnostic, session.GetCommand()));
}

}  // namespace BayesHost
