#include "host/output/CommandOutput.h"

#include <algorithm>
#include <utility>

namespace BayesHost {

std::string ShowSplit(const Split& split) {
  std::vector<std::string> texts;
  for (const SplitValue& value : split) texts.push_back(value.fLabel + " = " + value.fText);
  return JoinTexts(texts);
}

bool RepeatsSplit(const Heading& heading, const std::string& split) {
  return !split.empty() && heading.fText.fText == split;
}

CommandOutput::CommandOutput(std::string name, std::string text, int line)
    : fName(std::move(name)), fText(std::move(text)), fLine(line) {}

void CommandOutput::Add(decltype(Item::fContent) content) {
  ItemList& items = fvOpen.empty() ? fItems : fvOpen.back()->fItems;
  items.push_back({fpSplit, std::move(content)});
}

Heading& CommandOutput::OpenHeading(ShownText text) {
  ItemList& items = fvOpen.empty() ? fItems : fvOpen.back()->fItems;
  items.push_back({fpSplit, Heading{std::move(text), {}}});
  fvOpen.push_back(&std::get<Heading>(items.back().fContent));
  return *fvOpen.back();
}

void CommandOutput::CloseHeading(const Heading& heading) {
  const auto open = std::find(fvOpen.begin(), fvOpen.end(), &heading);
  fvOpen.erase(open, fvOpen.end());
}

void CommandOutput::AddMessage(Message message) {
  if (message.fLevel == Message::Level::Error) fFailed = true;
  Add(std::move(message));
}

void CommandOutput::AddNote(NoteEntry note) {
  if (fItems.empty() || !std::holds_alternative<Notes>(fItems.front().fContent))
    fItems.push_front({std::make_shared<const Split>(), Notes{}});
  auto& entries = std::get<Notes>(fItems.front().fContent).fvEntries;
  const auto after = std::find_if(entries.begin(), entries.end(),
                                  [&](const NoteEntry& entry) { return entry.fSection > note.fSection; });
  entries.insert(after, std::move(note));
}

}  // namespace BayesHost
