#include "host/output/HtmlReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "host/output/SharePath.h"
#include "host/output/TableLayout.h"

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

std::string Superscript(const std::string& marks) {
  return marks.empty() ? "" : "<sup>" + marks + "</sup>";
}

std::string SpanAttributes(int rows, int columns) {
  std::string attributes;
  if (rows > 1) attributes += fmt::format(" rowspan=\"{}\"", rows);
  if (columns > 1) attributes += fmt::format(" colspan=\"{}\"", columns);
  return attributes;
}

// Writes one layer of one table.
class HtmlTable {
 public:
  HtmlTable(const PivotTable& table, const TableLayout& layout, const TableLayout::Line& layer,
            std::ostream& out)
      : fTable(table), fLayout(layout), fLayer(layer), fOut(out) {}

  void Write() const {
    fOut << "<table>\n";
    if (!fLayer.empty())
      fOut << "<caption>" << E(JoinTexts(fLayout.GetLabels(fLayout.GetLayers(), fLayer))) << "</caption>\n";
    WriteHead();
    WriteBody();
    fOut << "</table>\n";
  }

 private:
  std::string LabelOf(const TableLayout::HeaderCell& cell) const {
    const Category& category = fLayout.GetCategory(cell);
    return E(category.fShowLabel ? category.GetLabel().fText : "") +
           Superscript(fLayout.GetMarks(category.fvNotes));
  }

  bool IsNumeric(const TableLayout::Line& column) const {
    for (const auto& row : fLayout.GetRows().fvLines) {
      const Cell* cell = fLayout.FindCell(fLayer, row, column);
      if (cell != nullptr && cell->fContent && !cell->fContent->fNumber) return false;
    }
    return true;
  }

  void WriteHead() const {
    const auto& columns = fLayout.GetColumns();
    const auto cells = fLayout.MakeHeader(columns);
    fOut << "<thead>\n";
    for (int level = 0; level < columns.fLevels; ++level) {
      fOut << "<tr>";
      if (level == 0) WriteCorner();
      for (const auto& cell : cells)
        if (cell.fLevel == level) WriteColumnLabel(cell);
      fOut << "</tr>\n";
    }
    fOut << "</thead>\n";
  }

  void WriteCorner() const {
    const auto& rows = fLayout.GetRows();
    for (std::size_t i = 0; i < rows.fvDimensions.size(); ++i) {
      const int end = i + 1 < rows.fvDimensions.size() ? rows.fvFirstLevels[i + 1] : rows.fLevels;
      const auto dimension = static_cast<std::size_t>(rows.fvDimensions[i]);
      fOut << "<th scope=\"col\"" << SpanAttributes(fLayout.GetColumns().fLevels, end - rows.fvFirstLevels[i])
           << '>' << E(fTable.GetDimensions()[dimension].GetLabel().fText) << "</th>";
    }
  }

  void WriteColumnLabel(const TableLayout::HeaderCell& cell) const {
    const auto& columns = fLayout.GetColumns();
    const bool isLowest = cell.fLevel + cell.fLevelSpan == columns.fLevels;
    const bool isNumber = isLowest && IsNumeric(columns.fvLines[static_cast<std::size_t>(cell.fFirstLine)]);
    fOut << "<th scope=\"" << (isLowest ? "col\"" : "colgroup\"")
         << SpanAttributes(cell.fLevelSpan, cell.fLineSpan) << (isNumber ? " class=\"number\">" : ">")
         << LabelOf(cell) << "</th>";
  }

  void WriteBody() const {
    const auto& rows = fLayout.GetRows();
    const auto labels = fLayout.MakeHeader(rows);
    fOut << "<tbody>\n";
    for (std::size_t row = 0; row < rows.fvLines.size(); ++row) {
      fOut << "<tr>";
      for (const auto& label : labels)
        if (label.fFirstLine == static_cast<int>(row)) WriteRowLabel(label);
      for (const auto& column : fLayout.GetColumns().fvLines) WriteCell(rows.fvLines[row], column);
      fOut << "</tr>\n";
    }
    fOut << "</tbody>\n";
  }

  void WriteRowLabel(const TableLayout::HeaderCell& label) const {
    const bool isLowest = label.fLevel + label.fLevelSpan == fLayout.GetRows().fLevels;
    fOut << "<th scope=\"" << (isLowest ? "row\"" : "rowgroup\"")
         << SpanAttributes(label.fLineSpan, label.fLevelSpan) << '>' << LabelOf(label) << "</th>";
  }

  void WriteCell(const TableLayout::Line& row, const TableLayout::Line& column) const {
    const Cell* cell = fLayout.FindCell(fLayer, row, column);
    if (cell == nullptr) {
      fOut << "<td></td>";
      return;
    }
    const bool isNumber = cell->fContent && cell->fContent->fNumber;
    fOut << (isNumber ? "<td class=\"number\">" : "<td>") << E(cell->fContent ? cell->fContent->fText : "")
         << Superscript(fLayout.GetMarks(cell->fvNotes)) << "</td>";
  }

  const PivotTable& fTable;
  const TableLayout& fLayout;
  const TableLayout::Line& fLayer;
  std::ostream& fOut;
};

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
    fOut << "<section class=\"command\">\n<h2>"
         << E(command.GetTitle().empty() ? command.GetName() : command.GetTitle())
         << (command.IsFailed() ? " <span class=\"status\">failed</span>" : "") << "</h2>\n<pre>"
         << E(command.GetText()) << "</pre>\n";
    WriteItems(command.GetItems());
    fOut << "</section>\n";
  }

 private:
  void WriteEntry(std::string_view label, std::string_view text) {
    fOut << "<dt>" << E(label) << "</dt><dd>" << E(text) << "</dd>\n";
  }

  void WriteItems(const ItemList& items) {
    for (const Item& item : items) {
      const std::string split = ShowSplit(item.GetSplit());
      if (split != fSplit && !split.empty()) fOut << "<p class=\"split\">" << E(split) << "</p>\n";
      fSplit = split;
      std::visit([&](const auto& content) { WriteContent(content); }, item.fContent);
    }
  }

  void WriteContent(const Notes& notes) {
    fOut << "<h3>Notes</h3>\n<dl>\n";
    for (const NoteEntry& entry : notes.fvEntries) WriteEntry(entry.fLabel.fText, entry.fText.fText);
    fOut << "</dl>\n";
  }

  void WriteContent(const Message& message) {
    const bool isError = message.fLevel == Message::Level::Error;
    fOut << "<p class=\"message" << (isError ? " error" : "") << "\"><strong>"
         << (isError ? "Error" : "Warning");
    if (message.fLine > 0) fOut << fmt::format(", line {}, column {}", message.fLine, message.fColumn);
    fOut << ":</strong> " << E(message.fText.fText) << "</p>\n";
  }

  void WriteContent(const Heading& heading) {
    fOut << "<h3>" << E(heading.fText.fText) << "</h3>\n";
    WriteItems(heading.fItems);
  }

  void WriteContent(const std::shared_ptr<PivotTable>& table) {
    const TableLayout layout(*table);
    fOut << "<figure>\n<figcaption>" << E(table->GetTitle().fText) << Superscript(layout.GetTableMarks())
         << "</figcaption>\n";
    for (const auto& layer : layout.GetLayers().fvLines) HtmlTable(*table, layout, layer, fOut).Write();
    if (table->GetCaption()) fOut << "<p class=\"below\">" << E(table->GetCaption()->fText) << "</p>\n";
    for (const int note : layout.GetNoteOrder())
      fOut << "<p class=\"below\">" << Superscript(layout.GetLetter(note)) << ' '
           << E(table->GetFootnotes()[static_cast<std::size_t>(note)].GetText().fText) << "</p>\n";
    fOut << "</figure>\n";
  }

  // The drawing comes from this host's own chart writer, which shows the title and escapes its texts.
  void WriteContent(const Chart& chart) {
    fOut << "<figure>\n";
    if (chart.fSvg.empty())
      fOut << "<figcaption>" << E(chart.fTitle) << "</figcaption>\n";
    else
      fOut << chart.fSvg << '\n';
    fOut << "</figure>\n";
  }

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
    if (place == "commands")
      for (const auto& command : report.fvCommands) writer.WriteCommand(*command);
    page.remove_prefix(end + 2);
  }
  out << page;
}

}  // namespace BayesHost
