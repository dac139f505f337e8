#include "host/output/HtmlReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "host/output/Diagnostic.h"
#include "host/output/HtmlChart.h"
#include "host/output/HtmlOutline.h"
#include "host/output/HtmlTable.h"
#include "host/output/SharePath.h"

namespace BayesHost {
namespace {

constexpr std::array<std::pair<char, std::string_view>, 5> kEscapes{
    {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}}};

bool IsControl(char c) {
  return (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' && c != '\r') || c == '\x7f';
}

std::string E(std::string_view text) {
  return HtmlReport::Escape(text);
}

class HtmlWriter {
 public:
  explicit HtmlWriter(std::ostream& out) : fOut(out) {}

  void WriteHead(const ReportHead& head) {
    fOut << "<dl>\n";
    WriteEntry("Program", head.fProgram + " " + head.fVersion);
    if (head.fSeed) WriteEntry("Seed", fmt::format("{}", *head.fSeed));
    if (head.fData) {
      WriteEntry("Data", fmt::format("{} ({} bytes)", head.fData->fFile, head.fData->fBytes));
      WriteEntry("Cases", fmt::format("{}", head.fData->fCases));
      WriteEntry("Variables", fmt::format("{}", head.fData->fVariables));
      if (head.fData->fFingerprint) WriteEntry("XXH3-128", *head.fData->fFingerprint);
    }
    fOut << "</dl>\n";
  }

  void WriteCommand(const CommandOutput& command) {
    fOut << "<section class=\"command\">\n<h2" << IdOf(HtmlAnchors::OfItem(fAnchors.Next())) << '>'
         << E(command.ShowTitle()) << (command.IsFailed() ? " <span class=\"status\">failed</span>" : "")
         << "</h2>\n<pre>" << E(command.GetText()) << "</pre>\n";
    fSplit.clear();
    WriteItems(command.GetItems());
    fOut << "</section>\n";
  }

 private:
  static std::string IdOf(const std::string& anchor) { return " id=\"" + anchor + '"'; }

  void WriteEntry(std::string_view label, std::string_view text) {
    fOut << "<div><dt>" << E(label) << "</dt><dd>" << E(text) << "</dd></div>\n";
  }

  void WriteItems(const ItemList& items) {
    for (const Item& item : items) {
      const int anchor = fAnchors.Next();
      const std::string split = ShowSplit(item.GetSplit());
      if (split != fSplit && !split.empty())
        fOut << "<h3" << IdOf(HtmlAnchors::OfSplit(anchor)) << '>' << E(split) << "</h3>\n";
      fSplit = split;
      const std::string id = IdOf(HtmlAnchors::OfItem(anchor));
      std::visit([&](const auto& content) { WriteContent(content, id); }, item.fContent);
    }
  }

  void WriteContent(const Heading& heading, const std::string& id) {
    if (!RepeatsSplit(heading, fSplit)) fOut << "<h4" << id << '>' << E(heading.fText.fText) << "</h4>\n";
    WriteItems(heading.fItems);
  }

  void WriteContent(const Notes& notes, const std::string&) {
    fOut << "<div class=\"notes\">\n<h3>Notes</h3>\n<dl>\n";
    for (const NoteEntry& entry : notes.fvEntries) WriteEntry(entry.fLabel.fText, entry.fText.fText);
    fOut << "</dl>\n</div>\n";
  }

  // With the place in the command that an error speaks of.
  void WriteContent(const Message& message, const std::string&) {
    const bool isError = message.fLevel == Message::Level::Error;
    fOut << "<div class=\"message" << (isError ? " error" : "") << "\">\n<p><strong>"
         << (isError ? "Error" : "Warning");
    if (message.fLine > 0) fOut << fmt::format(", line {}, column {}", message.fLine, message.fColumn);
    fOut << ":</strong> " << E(message.fText.fText) << "</p>\n";
    if (message.fLine > 0 && !message.fSourceLine.empty())
      fOut << "<pre>" << E(Diagnostic::PointAt(message.fSourceLine, message.fColumn)) << "</pre>\n";
    fOut << "</div>\n";
  }

  void WriteContent(const std::shared_ptr<PivotTable>& table, const std::string& id) {
    const TableLayout layout(*table);
    fOut << "<figure" << id << ">\n";
    for (const auto& layer : layout.GetLayers().fvLines) HtmlTable(*table, layout, layer, fOut).Write();
    if (table->GetCaption()) fOut << "<p class=\"below\">" << E(table->GetCaption()->fText) << "</p>\n";
    for (const int note : layout.GetNoteOrder())
      fOut << "<p class=\"below\">" << HtmlMarks(layout.GetLetter(note)) << ' '
           << E(table->GetFootnotes()[static_cast<std::size_t>(note)].GetText().fText) << "</p>\n";
    fOut << "</figure>\n";
  }

  // The drawing comes from this host's own chart writer, which shows the title and escapes its texts.
  void WriteContent(const Chart& chart, const std::string& id) {
    fOut << "<figure class=\"chart\"" << id << ">\n";
    if (chart.fSvg.empty())
      fOut << "<figcaption>" << E(chart.fTitle) << "</figcaption>\n";
    else
      HtmlChart::Write(chart, fOut);
    fOut << "</figure>\n";
  }

  HtmlAnchors fAnchors;
  std::ostream& fOut;
  std::string fSplit;
};

}  // namespace

std::string HtmlReport::Escape(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    const auto* known =
        std::find_if(kEscapes.begin(), kEscapes.end(), [c](const auto& entry) { return entry.first == c; });
    if (known != kEscapes.end())
      escaped += known->second;
    else if (IsControl(c))
      escaped += "\uFFFD";
    else
      escaped += c;
  }
  return escaped;
}

void HtmlReport::Write(const Report& report, std::ostream& out) {
  Write(report, ReadShareFile("html/report.html"), out);
}

void HtmlReport::Write(const Report& report, std::string_view page, std::ostream& out) {
  HtmlWriter writer(out);
  while (!page.empty()) {
    const std::size_t begin = std::min(page.find("{{"), page.size());
    out << page.substr(0, begin);
    page.remove_prefix(begin);
    const std::size_t end = page.find("}}");
    if (page.empty() || end == std::string_view::npos) break;
    const std::string_view place = page.substr(2, end - 2);
    if (place == "title")
      out << E("Bayesian analysis" + (report.fHead.fData ? ": " + report.fHead.fData->fFile : ""));
    if (place == "head") writer.WriteHead(report.fHead);
    if (place == "outline") HtmlOutline::Write(report, out);
    if (place == "commands")
      for (const auto& command : report.fvCommands) writer.WriteCommand(*command);
    page.remove_prefix(end + 2);
  }
  out << page;
}

}  // namespace BayesHost
