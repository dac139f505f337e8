#include "host/output/CommandOutput.h"

#include <algorithm>
#include <utility>

namespace BayesHost {

CommandOutput::CommandOutput(std::string name, std::string text, int line)
    : fName(std::move(name)), fText(std::move(text)), fLine(line) {}

Item& CommandOutput::Add(ItemList& items, decltype(Item::fContent) content) {
  items.push_back({fvSplit, std::move(content)});
  return items.back();
}

void CommandOutput::AddMessage(Message message) {
  if (message.fLevel == Message::Level::Error) fFailed = true;
  Add(fItems, std::move(message));
}

void CommandOutput::AddNote(NoteEntry note) {
  if (fItems.empty() || !std::holds_alternative<Notes>(fItems.front().fContent))
    fItems.push_front({{}, Notes{}});
  auto& entries = std::get<Notes>(fItems.front().fContent).fvEntries;
  const auto after = std::find_if(entries.begin(), entries.end(),
                                  [&](const NoteEntry& entry) { return entry.fSection > note.fSection; });
  entries.insert(after, std::move(note));
}

}  // namespace BayesHost
