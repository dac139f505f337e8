#include "host/output/MarkdownReport.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/output/Diagnostic.h"
#include "host/output/TableLayout.h"

namespace BayesHost {
namespace {

std::string E(std::string_view text) {
  return MarkdownReport::Escape(text);
}

std::string Marks(const std::string& marks) {
  return marks.empty() ? "" : "<sup>" + marks + "</sup>";
}

// A fence longer than any run of backquotes in the text.
std::string Fenced(const std::string& text) {
  std::string fence = "```";
  while (text.find(fence) != std::string::npos) fence += '`';
  return fence + "\n" + text + "\n" + fence + "\n";
}

// Writes one layer of one table. A pipe table has one line of headings, so a column is headed by the labels
// of its groups and its own.
class MarkdownTable {
 public:
  MarkdownTable(const PivotTable& table, const TableLayout& layout, const TableLayout::Line& layer,
                std::ostream& out)
      : fTable(table), fLayout(layout), fLayer(layer), fOut(out) {}

  void Write() const {
    WriteHead();
    const auto& rows = fLayout.GetRows();
    const auto labels = fLayout.MakeHeader(rows);
    for (std::size_t row = 0; row < rows.fvLines.size(); ++row) {
      std::vector<std::string> stub(static_cast<std::size_t>(rows.fLevels));
      for (const auto& label : labels)
        if (label.fFirstLine == static_cast<int>(row))
          stub[static_cast<std::size_t>(label.fLevel)] = LabelOf(fLayout.GetCategory(label));
      fOut << '|';
      for (const std::string& text : stub) fOut << ' ' << text << " |";
      for (const auto& column : fLayout.GetColumns().fvLines)
        fOut << ' ' << CellOf(fLayout.FindCell(fLayer, rows.fvLines[row], column)) << " |";
      fOut << '\n';
    }
    fOut << '\n';
  }

 private:
  void WriteHead() const {
    const auto& rows = fLayout.GetRows();
    std::vector<std::string> titles(static_cast<std::size_t>(rows.fLevels));
    for (std::size_t i = 0; i < rows.fvDimensions.size(); ++i)
      titles[static_cast<std::size_t>(rows.fvFirstLevels[i])] = E(DimensionOf(rows, i).GetLabel().fText);
    std::string rule = "|";
    for (std::size_t i = 0; i < titles.size(); ++i) rule += ":--|";
    for (const auto& column : fLayout.GetColumns().fvLines) {
      titles.push_back(TitleOf(column));
      rule += IsNumeric(column) ? "--:|" : ":--|";
    }
    fOut << '|';
    for (const std::string& title : titles) fOut << ' ' << title << " |";
    fOut << '\n' << rule << '\n';
  }

  const Dimension& DimensionOf(const TableLayout::Axis& axis, std::size_t i) const {
    return fTable.GetDimensions()[static_cast<std::size_t>(axis.fvDimensions[i])];
  }

  std::string TitleOf(const TableLayout::Line& column) const {
    std::string title;
    for (std::size_t i = 0; i < column.size(); ++i) {
      const Dimension& dimension = DimensionOf(fLayout.GetColumns(), i);
      for (const int category : dimension.GetPath(column[i])) {
        const std::string label = LabelOf(dimension.fvCategories[static_cast<std::size_t>(category)]);
        title += (title.empty() || label.empty() ? "" : ": ") + label;
      }
    }
    return title;
  }

  std::string LabelOf(const Category& category) const {
    return E(category.fShowLabel ? category.GetLabel().fText : "") +
           Marks(fLayout.GetMarks(category.fvNotes));
  }

  bool IsNumeric(const TableLayout::Line& column) const {
    const auto& rows = fLayout.GetRows().fvLines;
    return std::all_of(rows.begin(), rows.end(), [&](const TableLayout::Line& row) {
      const auto cell = fLayout.FindCell(fLayer, row, column);
      return !cell || !cell->fIsWritten || cell->fNumber;
    });
  }

  std::string CellOf(const std::optional<Cell>& cell) const {
    return cell ? E(cell->fText) + Marks(fLayout.GetMarks(cell->fNotes)) : "";
  }

  const PivotTable& fTable;
  const TableLayout& fLayout;
  const TableLayout::Line& fLayer;
  std::ostream& fOut;
};

class MarkdownWriter {
 public:
  explicit MarkdownWriter(std::ostream& out) : fOut(out) {}

  void WriteHead(const ReportHead& head) {
    fOut << "# Bayesian analysis" << (head.fData ? ": " + E(head.fData->fFile) : "") << "\n\n- "
         << head.fProgram << ' ' << head.fVersion << '\n';
    if (head.fSeed) fOut << "- seed " << *head.fSeed << '\n';
    if (head.fData)
      fOut << fmt::format("- {} bytes, {} cases, {} variables\n", head.fData->fBytes, head.fData->fCases,
                          head.fData->fVariables);
    if (head.fData && head.fData->fFingerprint) fOut << "- XXH3-128 " << *head.fData->fFingerprint << '\n';
    fOut << '\n';
  }

  void WriteCommand(const CommandOutput& command) {
    fOut << "## " << E(command.ShowTitle()) << (command.IsFailed() ? " (failed)" : "") << "\n\n"
         << Fenced(command.GetText()) << '\n';
    fSplit.clear();
    WriteItems(command.GetItems());
  }

 private:
  void WriteItems(const ItemList& items) {
    for (const Item& item : items) {
      const std::string split = ShowSplit(item.GetSplit());
      if (split != fSplit && !split.empty()) fOut << "### " << E(split) << "\n\n";
      fSplit = split;
      std::visit([&](const auto& content) { WriteContent(content); }, item.fContent);
    }
  }

  void WriteContent(const Notes& notes) {
    for (const NoteEntry& entry : notes.fvEntries)
      fOut << "- " << E(entry.fLabel.fText) << ": " << E(entry.fText.fText) << '\n';
    fOut << '\n';
  }

  void WriteContent(const Message& message) {
    fOut << (message.fLevel == Message::Level::Error ? "**Error" : "**Warning");
    if (message.fLine > 0) fOut << fmt::format(", line {}, column {}", message.fLine, message.fColumn);
    fOut << ":** " << E(message.fText.fText) << "\n\n";
    if (message.fLine > 0 && !message.fSourceLine.empty())
      fOut << Fenced(Diagnostic::PointAt(message.fSourceLine, message.fColumn)) << '\n';
  }

  void WriteContent(const Heading& heading) {
    if (!RepeatsSplit(heading, fSplit)) fOut << "#### " << E(heading.fText.fText) << "\n\n";
    WriteItems(heading.fItems);
  }

  void WriteContent(const std::shared_ptr<PivotTable>& table) {
    const TableLayout layout(*table);
    fOut << "**" << E(table->GetTitle().fText) << "**" << Marks(layout.GetTableMarks()) << "\n\n";
    for (const auto& layer : layout.GetLayers().fvLines) {
      if (!layer.empty()) fOut << E(JoinTexts(layout.GetLabels(layout.GetLayers(), layer))) << "\n\n";
      MarkdownTable(*table, layout, layer, fOut).Write();
    }
    if (table->GetCaption()) fOut << E(table->GetCaption()->fText) << "\n\n";
    for (const int note : layout.GetNoteOrder())
      fOut << Marks(layout.GetLetter(note)) << ' '
           << E(table->GetFootnotes()[static_cast<std::size_t>(note)].GetText().fText) << "\n\n";
  }

  void WriteContent(const Chart& chart) { fOut << "*Chart: " << E(chart.fTitle) << "*\n\n"; }

  std::ostream& fOut;
  std::string fSplit;
};

}  // namespace

std::string MarkdownReport::Escape(std::string_view text) {
  constexpr std::string_view kSpecial = "\\`*_[]<>|~&#";
  std::string escaped;
  for (const char c : text) {
    if (kSpecial.find(c) != std::string_view::npos) escaped += '\\';
    escaped += c == '\n' || c == '\r' ? ' ' : c;
  }
  return escaped;
}

void MarkdownReport::Write(const Report& report, std::ostream& out) {
  MarkdownWriter writer(out);
  writer.WriteHead(report.fHead);
  for (const auto& command : report.fvCommands) writer.WriteCommand(*command);
}

}  // namespace BayesHost
