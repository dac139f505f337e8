// The document of one command: what it showed, in order, in no output form. The reports read it.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/output/PivotTable.h"
#include "host/output/ShownText.h"
#include "platform/Visibility.h"

namespace BayesHost {

// One split variable and its value in a group.
struct SplitValue {
  std::string fVariable;
  std::string fLabel;  // of the variable: its label, else its name
  DataValue fValue;
  std::string fText;  // of the value, as the variable shows it
};
using Split = std::vector<SplitValue>;
// "label = value, label = value"
std::string ShowSplit(const Split& split);

struct NoteEntry {
  int fSection = 0;  // 2 files, 3 saved variables, 4 case handling
  ShownText fLabel;
  ShownText fText;
};
struct Notes {
  std::vector<NoteEntry> fvEntries;
};

struct Message {
  enum class Level { Warning, Error };
  Level fLevel = Level::Error;
  ShownText fText;
  // The place in the file that it speaks of, 1-based; 0 when it speaks of none.
  int fLine = 0;
  int fColumn = 0;
  std::string fSourceLine;
};

struct Chart {
  std::string fTitle;
  std::string fTemplate;
  std::string fVegaLite;  // a JSON document; empty when no reader wants it
  std::string fSvg;       // the same chart drawn; may be empty
};

struct Item;
using ItemList = std::list<Item>;

struct Heading {
  ShownText fText;
  ItemList fItems;
};

// The heading says no more than the split that it stands under, as ShowSplit shows it: readers name a split
// once.
bool RepeatsSplit(const Heading& heading, const std::string& split);

struct Item {
  const Split& GetSplit() const { return *fpSplit; }

  std::shared_ptr<const Split> fpSplit;  // shared by all that belongs to it; empty when the data aren't split
  std::variant<Notes, Message, Heading, std::shared_ptr<PivotTable>, Chart> fContent;
};

class BAYES_PLATFORM CommandOutput {
 public:
  // `text`: the command as written; `line`: where it starts in its file, 1-based.
  CommandOutput(std::string name, std::string text, int line);

  // The group of cases that what follows belongs to; empty: all cases. Set by whoever walks the splits.
  void SetSplit(Split split) { fpSplit = std::make_shared<const Split>(std::move(split)); }
  const Split& GetSplit() const { return *fpSplit; }

  // Adds under the innermost open heading, else to the document itself.
  void Add(decltype(Item::fContent) content);
  // A heading under the innermost open one. Its reference stays valid as the document grows.
  Heading& OpenHeading(ShownText text);
  // Closes the heading and those opened under it; nothing when it is closed already.
  void CloseHeading(const Heading& heading);
  // An error makes the command fail.
  void AddMessage(Message message);
  // Notes stand first in the document, in the order of their sections.
  void AddNote(NoteEntry note);

  void SetFailed() { fFailed = true; }
  bool IsFailed() const { return fFailed; }
  // The procedure's title, as shown.
  void SetTitle(std::string title) { fTitle = std::move(title); }
  const std::string& GetTitle() const { return fTitle; }
  // The title, else the command's name.
  const std::string& ShowTitle() const { return fTitle.empty() ? fName : fTitle; }
  // The seed of the command's random numbers.
  void SetSeed(std::uint64_t seed) { fSeed = seed; }
  std::optional<std::uint64_t> GetSeed() const { return fSeed; }

  const std::string& GetName() const { return fName; }
  const std::string& GetText() const { return fText; }
  int GetLine() const { return fLine; }
  const ItemList& GetItems() const { return fItems; }
  // The texts of its tables.
  const std::shared_ptr<TextPool>& GetTextPool() const { return fpTextPool; }

 private:
  std::string fName;
  std::string fText;
  std::string fTitle;
  int fLine;
  bool fFailed = false;
  std::optional<std::uint64_t> fSeed;
  std::shared_ptr<const Split> fpSplit = std::make_shared<const Split>();
  std::shared_ptr<TextPool> fpTextPool = std::make_shared<TextPool>();
  ItemList fItems;
  std::vector<Heading*> fvOpen;  // outermost first; they live in the lists of items
};

}  // namespace BayesHost
