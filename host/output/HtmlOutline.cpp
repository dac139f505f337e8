#include "host/output/HtmlOutline.h"

#include "host/output/HtmlReport.h"

namespace BayesHost {
namespace {

// Writes entries as they come, opening and closing lists as their depth changes.
class OutlineWriter {
 public:
  explicit OutlineWriter(std::ostream& out) : fOut(out) {}

  void WriteCommand(const CommandOutput& command) {
    WriteEntry(1, HtmlAnchors::OfItem(fAnchors.Next()),
               command.ShowTitle() + (command.IsFailed() ? " (failed)" : ""));
    fSplit.clear();
    WriteItems(command.GetItems(), 0);
  }

  void Finish() {
    SetDepth(0);
    fOut << '\n';
  }

 private:
  // `headings`: how many are open.
  void WriteItems(const ItemList& items, int headings) {
    for (const Item& item : items) {
      const int anchor = fAnchors.Next();
      const std::string split = ShowSplit(item.GetSplit());
      if (!split.empty() && split != fSplit) WriteEntry(2, HtmlAnchors::OfSplit(anchor), split);
      fSplit = split;
      const std::string title = TitleOf(item);
      const bool isShown = !title.empty();
      if (isShown) WriteEntry(2 + (split.empty() ? 0 : 1) + headings, HtmlAnchors::OfItem(anchor), title);
      if (const auto* heading = std::get_if<Heading>(&item.fContent))
        WriteItems(heading->fItems, headings + (isShown ? 1 : 0));
    }
  }

  // Empty for what has no entry.
  std::string TitleOf(const Item& item) const {
    if (const auto* table = std::get_if<std::shared_ptr<PivotTable>>(&item.fContent))
      return (*table)->GetTitle().fText;
    if (const auto* chart = std::get_if<Chart>(&item.fContent)) return "Chart: " + chart->fTitle;
    const auto* heading = std::get_if<Heading>(&item.fContent);
    return heading == nullptr || RepeatsSplit(*heading, fSplit) ? "" : heading->fText.fText;
  }

  void WriteEntry(int depth, const std::string& anchor, const std::string& text) {
    SetDepth(depth);
    fOut << "<li><a href=\"#" << anchor << "\">" << HtmlReport::Escape(text) << "</a>";
  }

  // Afterwards an entry of that depth may begin.
  void SetDepth(int depth) {
    if (depth <= fDepth && depth > 0) fOut << "</li>\n";
    for (; fDepth < depth; ++fDepth) fOut << "\n<ol>\n";
    for (; fDepth > depth; --fDepth) fOut << (depth == 0 ? "</li>\n</ol>" : "</ol>\n</li>\n");
  }

  std::ostream& fOut;
  HtmlAnchors fAnchors;
  std::string fSplit;
  int fDepth = 0;
};

}  // namespace

void HtmlOutline::Write(const Report& report, std::ostream& out) {
  OutlineWriter writer(out);
  for (const auto& command : report.fvCommands) writer.WriteCommand(*command);
  writer.Finish();
}

}  // namespace BayesHost
