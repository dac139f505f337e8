// What the parser remembers of the command under way once it is accepted.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

#include "host/parser/CommandState.h"
#include "host/session/Session.h"
#include "platform/host/Data.h"

namespace BayesHost {

struct ParserRun {
  // The subcommand that the module read last: its messages speak of this one. Null before it reads any.
  std::shared_ptr<const SubComObj::State> fpLastRead;
  // All that it read, by name: for what is only checked when the command has run.
  std::map<std::string, std::shared_ptr<const SubComObj::State>> fRead;
  // Category values handed to the module; their addresses stay.
  std::list<OBS> fValues;
};

// That of the session's current command.
inline ParserRun& GetParserRun() {
  Session& session = Session::Current();
  if (session.GetParserRun() == nullptr) session.SetParserRun(std::make_shared<ParserRun>());
  return *session.GetParserRun();
}

}  // namespace BayesHost
