#include "host/parser/Fault.h"

#include <utility>

namespace BayesHost {

void Reject(const char* key, Arguments arguments, std::size_t position) {
  throw Rejection{{key, std::move(arguments), position}};
}

Message MakeMessage(const Fault& fault, const CommandText& command) {
  SourcePlace place = FindPlace(command, fault.fPosition);
  Message message;
  message.fLevel = fault.fLevel;
  message.fText.fText = StringTable::English().Fill(fault.fKey, fault.fvArguments);
  message.fText.fKey = fault.fKey;
  for (const Argument& argument : fault.fvArguments) message.fText.fvArguments.push_back(argument.GetText());
  message.fLine = place.fLine;
  message.fColumn = place.fColumn;
  message.fSourceLine = std::move(place.fLineText);
  return message;
}

void ShowFault(const Fault& fault) {
  const Session& session = Session::Current();
  session.GetOutput().AddMessage(MakeMessage(fault, session.GetCommand()));
}

}  // namespace BayesHost
