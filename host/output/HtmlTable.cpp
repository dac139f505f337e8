#include "host/output/HtmlTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/output/HtmlReport.h"

namespace BayesHost {
namespace {

// What the characters of a number that are no digits take of a digit's width, in the usual fonts.
constexpr std::pair<char, double> kWidths[] = {{'.', 0.5}, {'-', 0.57}, {'+', 1.3}, {'%', 1.5}};

std::string E(std::string_view text) {
  return HtmlReport::Escape(text);
}

std::string SpanAttributes(int rows, int columns) {
  std::string attributes;
  if (rows > 1) attributes += fmt::format(" rowspan=\"{}\"", rows);
  if (columns > 1) attributes += fmt::format(" colspan=\"{}\"", columns);
  return attributes;
}

double WidthOf(char character) {
  for (const auto& [known, width] : kWidths)
    if (character == known) return width;
  return 1;
}

// The width of the point and what follows it, in digits; 0 without a point.
double TailOf(std::string_view number) {
  double width = 0;
  for (std::size_t i = number.find('.'); i < number.size(); ++i) width += WidthOf(number[i]);
  return width;
}

}  // namespace

std::string HtmlMarks(const std::string& marks) {
  return marks.empty() ? "" : "<sup>" + marks + "</sup>";
}

HtmlTable::HtmlTable(const PivotTable& table, const TableLayout& layout, const TableLayout::Line& layer,
                     std::ostream& out)
    : fTable(table), fLayout(layout), fLayer(layer), fOut(out) {
  for (const auto& column : layout.GetColumns().fvLines) fvColumns.push_back(MakeColumn(column));
}

HtmlTable::Column HtmlTable::MakeColumn(const TableLayout::Line& column) const {
  Column made;
  for (const auto& row : fLayout.GetRows().fvLines) {
    const auto cell = fLayout.FindCell(fLayer, row, column);
    if (!cell || !cell->fIsWritten) continue;
    made.fIsNumeric = made.fIsNumeric && cell->fNumber;
    if (cell->fNumber) made.fTail = std::max(made.fTail, TailOf(cell->fText));
  }
  return made;
}

void HtmlTable::Write() const {
  fOut << "<div class=\"scroll\"><table>\n";
  WriteCaption();
  WriteHead();
  WriteBody();
  fOut << "</table></div>\n";
}

void HtmlTable::WriteCaption() const {
  fOut << "<caption><span>" << E(fTable.GetTitle().fText) << HtmlMarks(fLayout.GetTableMarks()) << "</span>";
  if (!fLayer.empty())
    fOut << "<span class=\"layer\">" << E(JoinTexts(fLayout.GetLabels(fLayout.GetLayers(), fLayer)))
         << "</span>";
  fOut << "</caption>\n";
}

std::string HtmlTable::LabelOf(const TableLayout::HeaderCell& cell) const {
  const Category& category = fLayout.GetCategory(cell);
  return E(category.fShowLabel ? category.GetLabel().fText : "") +
         HtmlMarks(fLayout.GetMarks(category.fvNotes));
}

void HtmlTable::WriteHead() const {
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

void HtmlTable::WriteCorner() const {
  const auto& rows = fLayout.GetRows();
  for (std::size_t i = 0; i < rows.fvDimensions.size(); ++i) {
    const int end = i + 1 < rows.fvDimensions.size() ? rows.fvFirstLevels[i + 1] : rows.fLevels;
    const auto dimension = static_cast<std::size_t>(rows.fvDimensions[i]);
    fOut << "<th scope=\"col\"" << SpanAttributes(fLayout.GetColumns().fLevels, end - rows.fvFirstLevels[i])
         << (i == 0 ? " class=\"stub\">" : ">") << E(fTable.GetDimensions()[dimension].GetLabel().fText)
         << "</th>";
  }
}

void HtmlTable::WriteColumnLabel(const TableLayout::HeaderCell& cell) const {
  const bool isLowest = cell.fLevel + cell.fLevelSpan == fLayout.GetColumns().fLevels;
  const bool isNumber = isLowest && fvColumns[static_cast<std::size_t>(cell.fFirstLine)].fIsNumeric;
  fOut << "<th scope=\"" << (isLowest ? "col\"" : "colgroup\"")
       << SpanAttributes(cell.fLevelSpan, cell.fLineSpan) << (isNumber ? " class=\"number\">" : ">")
       << LabelOf(cell) << "</th>";
}

void HtmlTable::WriteBody() const {
  const auto& rows = fLayout.GetRows();
  const auto& columns = fLayout.GetColumns().fvLines;
  const auto labels = fLayout.MakeHeader(rows);
  fOut << "<tbody>\n";
  for (std::size_t row = 0; row < rows.fvLines.size(); ++row) {
    const bool opens = std::any_of(labels.begin(), labels.end(), [&](const auto& label) {
      return label.fLevel == 0 && label.fLineSpan > 1 && label.fFirstLine == static_cast<int>(row);
    });
    fOut << (opens ? "<tr class=\"group\">" : "<tr>");
    for (const auto& label : labels)
      if (label.fFirstLine == static_cast<int>(row)) WriteRowLabel(label);
    for (std::size_t column = 0; column < columns.size(); ++column)
      WriteCell(fLayout.FindCell(fLayer, rows.fvLines[row], columns[column]), fvColumns[column]);
    fOut << "</tr>\n";
  }
  fOut << "</tbody>\n";
}

void HtmlTable::WriteRowLabel(const TableLayout::HeaderCell& label) const {
  const bool isLowest = label.fLevel + label.fLevelSpan == fLayout.GetRows().fLevels;
  fOut << "<th scope=\"" << (isLowest ? "row\"" : "rowgroup\"")
       << SpanAttributes(label.fLineSpan, label.fLevelSpan) << (label.fLevel == 0 ? " class=\"stub\">" : ">")
       << LabelOf(label) << "</th>";
}

void HtmlTable::WriteCell(const std::optional<Cell>& cell, const Column& column) const {
  if (!cell) {
    fOut << "<td></td>";
    return;
  }
  fOut << (cell->fNumber ? "<td class=\"number\"" : "<td");
  const double missing = cell->fNumber ? column.fTail - TailOf(cell->fText) : 0;
  if (missing > 0.01) fOut << fmt::format(" style=\"--tail:{:.3g}\"", missing);
  fOut << '>' << E(cell->fText) << HtmlMarks(fLayout.GetMarks(cell->fNotes)) << "</td>";
}

}  // namespace BayesHost
