// A session with one command under way, and what the parser said about it.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/output/CommandOutput.h"
#include "host/session/Session.h"

namespace BayesHost {

class ParserSession {
 public:
  explicit ParserSession(RunOptions options = {}) : fSession(options), fUse(fSession) {}

  Session& Get() { return fSession; }

  void Begin(const std::string& text) {
    fpOutput = std::make_shared<CommandOutput>("TEST", text, 1);
    fSession.BeginCommand({"", text, 0, text.size()}, fpOutput);
  }

  bool HasFailed() const { return fpOutput->IsFailed(); }

  std::vector<Message> GetMessages() const {
    std::vector<Message> messages;
    for (const Item& item : fpOutput->GetItems()) messages.push_back(std::get<Message>(item.fContent));
    return messages;
  }

  // "line:column key | argument | argument", one line for each message.
  std::string ShowMessages() const {
    std::string text;
    for (const Message& message : GetMessages()) {
      text += (text.empty() ? "" : "\n") + std::to_string(message.fLine) + ":" +
              std::to_string(message.fColumn) + " " + message.fText.fKey;
      for (const std::string& argument : message.fText.fvArguments) text += " | " + argument;
    }
    return text;
  }

 private:
  Session fSession;
  Session::Use fUse;
  std::shared_ptr<CommandOutput> fpOutput;
};

}  // namespace BayesHost
