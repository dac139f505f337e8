#include "host/output/TextTable.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "host/output/TextWidth.h"

namespace BayesHost {
namespace {

constexpr int kGap = 2;                 // between columns
constexpr int kWidestColumnLabel = 14;  // beyond it a column's label is broken at blanks
constexpr int kWidestRowLabel = 32;

std::string WithMarks(const std::string& text, const std::string& marks) {
  return marks.empty() ? text : text + "[" + marks + "]";
}

std::string Label(const TableLayout& layout, const Category& category) {
  return WithMarks(category.fShowLabel ? PlainText(category.GetLabel().fText) : "",
                   layout.GetMarks(category.fvNotes));
}

void TrimEnd(std::string& line) {
  line.erase(line.find_last_not_of(' ') + 1);
}

// Lines of text, one below the other, in a field as wide as given.
struct Block {
  std::vector<std::string> fvLines;
  int fWidth;
  Align fAlign;
};

}  // namespace

TextTable::TextTable(const PivotTable& table, const TableLayout& layout, const TableLayout::Line& layer,
                     int width, std::string rule)
    : fTable(table), fLayout(layout), fLayer(layer), fWidth(width), fRule(std::move(rule)) {
  MakeStub();
  MakeColumns();
  fvSpans = MakeSpans();
  WidenForLabels();
}

void TextTable::MakeStub() {
  const auto& rows = fLayout.GetRows();
  fvStub.resize(static_cast<std::size_t>(rows.fLevels));
  fvCorner.resize(fvStub.size());
  for (std::size_t i = 0; i < rows.fvDimensions.size(); ++i)
    fvCorner[static_cast<std::size_t>(rows.fvFirstLevels[i])] =
        PlainText(fTable.GetDimensions()[static_cast<std::size_t>(rows.fvDimensions[i])].GetLabel().fText);
  for (TextColumn& column : fvStub) column.fvTexts.resize(rows.fvLines.size());
  for (const auto& cell : fLayout.MakeHeader(rows))
    fvStub[static_cast<std::size_t>(cell.fLevel)].fvTexts[static_cast<std::size_t>(cell.fFirstLine)] =
        Label(fLayout, fLayout.GetCategory(cell));
  for (std::size_t level = 0; level < fvStub.size(); ++level) {
    int longest = LongestWord(fvCorner[level]);
    int widest = DisplayWidth(fvCorner[level]);
    for (const std::string& text : fvStub[level].fvTexts) {
      longest = std::max(longest, LongestWord(text));
      widest = std::max(widest, DisplayWidth(text));
    }
    fvStub[level].fWidth = std::max(longest, std::min(widest, kWidestRowLabel));
  }
}

void TextTable::MakeColumns() {
  for (const auto& column : fLayout.GetColumns().fvLines) fvColumns.push_back(MakeColumn(column));
}

TextTable::TextColumn TextTable::MakeColumn(const TableLayout::Line& column) const {
  TextColumn made;
  made.fWidth = fTable.GetMinDataColumnWidth();
  const int markWidth = fTable.GetCells().HasNotes() ? MeasureMarks(column) : 0;
  for (const auto& row : fLayout.GetRows().fvLines) {
    const auto cell = fLayout.FindCell(fLayer, row, column);
    made.fvTexts.push_back(ShowCell(cell, markWidth));
    made.fWidth = std::max(made.fWidth, DisplayWidth(made.fvTexts.back()));
    if (cell && cell->fIsWritten && !cell->fNumber) made.fIsNumeric = false;
  }
  return made;
}

int TextTable::MeasureMarks(const TableLayout::Line& column) const {
  int width = 0;
  for (const auto& row : fLayout.GetRows().fvLines)
    if (const auto cell = fLayout.FindCell(fLayer, row, column))
      width = std::max(width, DisplayWidth(WithMarks("", fLayout.GetMarks(cell->fNotes))));
  return width;
}

// The marks of a column stand in a strip of their own, so that its numbers stay in line.
std::string TextTable::ShowCell(const std::optional<Cell>& cell, int markWidth) const {
  if (!cell) return "";
  const std::string text = PlainText(cell->fText);
  const std::string marks = WithMarks("", fLayout.GetMarks(cell->fNotes));
  return text.empty() && marks.empty() ? text : text + PadText(marks, markWidth, Align::Left);
}

std::vector<TextTable::Span> TextTable::MakeSpans() const {
  std::vector<Span> spans;
  for (const auto& cell : fLayout.MakeHeader(fLayout.GetColumns())) {
    const bool isLowest = cell.fLevel + cell.fLevelSpan == fLayout.GetColumns().fLevels;
    spans.push_back({Label(fLayout, fLayout.GetCategory(cell)), cell.fLevel,
                     cell.fLevel + cell.fLevelSpan - 1, cell.fFirstLine, cell.fLineSpan, !isLowest});
  }
  std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) {
    return std::tie(a.fLastLevel, a.fFirst) < std::tie(b.fLastLevel, b.fFirst);
  });
  return spans;
}

void TextTable::WidenForLabels() {
  for (const bool groups : {false, true})
    for (const Span& span : fvSpans) {
      if (span.fIsGroup != groups) continue;
      const int wanted = std::min(DisplayWidth(span.fText), groups ? 0 : kWidestColumnLabel);
      const auto first = static_cast<std::size_t>(span.fFirst);
      const std::size_t end = first + static_cast<std::size_t>(span.fCount);
      const int missing = std::max(LongestWord(span.fText), wanted) - GetSpanWidth(first, end);
      if (missing > 0) fvColumns[end - 1].fWidth += missing;
    }
}

int TextTable::GetStubWidth() const {
  int width = 0;
  for (const TextColumn& column : fvStub) width += column.fWidth + kGap;
  return width;
}

int TextTable::GetSpanWidth(std::size_t first, std::size_t end) const {
  int width = -kGap;
  for (std::size_t i = first; i < end; ++i) width += fvColumns[i].fWidth + kGap;
  return width;
}

std::size_t TextTable::FindBlockEnd(std::size_t first) const {
  std::size_t end = first + 1;
  while (end < fvColumns.size() && GetStubWidth() + GetSpanWidth(first, end + 1) <= fWidth) ++end;
  const auto cut = std::find_if(fvSpans.begin(), fvSpans.end(), [&](const Span& span) {
    const auto begin = static_cast<std::size_t>(span.fFirst);
    return begin > first && begin < end && end < begin + static_cast<std::size_t>(span.fCount);
  });
  return cut == fvSpans.end() ? end : static_cast<std::size_t>(cut->fFirst);
}

std::string TextTable::MakeRule(int width) const {
  std::string rule;
  rule.reserve(static_cast<std::size_t>(width) * fRule.size());
  for (int i = 0; i < width; ++i) rule += fRule;
  return rule;
}

std::string TextTable::Render() const {
  std::string rendered;
  for (std::size_t first = 0; first < fvColumns.size(); first = FindBlockEnd(first))
    rendered += (first == 0 ? "" : "\n") + RenderBlock(first, FindBlockEnd(first));
  return rendered;
}

std::string TextTable::RenderBlock(std::size_t first, std::size_t end) const {
  const std::string rule = MakeRule(GetStubWidth() + GetSpanWidth(first, end)) + '\n';
  std::string block = rule + RenderHeader(first, end) + rule;
  for (std::size_t row = 0; row < fLayout.GetRows().fvLines.size(); ++row) AppendRow(row, first, end, block);
  return block + rule;
}

// A label with its place: where it begins in the lines, and the levels that it may fill from below.
struct TextTable::HeaderLabel {
  Block fBlock;
  int fLeft;
  int fFirstLevel;
  int fLastLevel;

  int CountLines() const { return static_cast<int>(fBlock.fvLines.size()); }
};

// A level is as high as its own labels need; the last one of a label of several levels grows when all of them
// are too low for it.
std::vector<int> TextTable::MeasureLevels(const std::vector<HeaderLabel>& labels) const {
  std::vector<int> heights(static_cast<std::size_t>(fLayout.GetColumns().fLevels));
  for (const bool several : {false, true})
    for (const HeaderLabel& label : labels) {
      if ((label.fFirstLevel < label.fLastLevel) != several) continue;
      const auto last = heights.begin() + label.fLastLevel;
      const int room = std::accumulate(heights.begin() + label.fFirstLevel, last + 1, 0);
      *last += std::max(0, label.CountLines() - room);
    }
  return heights;
}

std::string TextTable::RenderHeader(std::size_t first, std::size_t end) const {
  const std::vector<HeaderLabel> labels = MakeHeaderLabels(first, end);
  const std::vector<int> heights = MeasureLevels(labels);
  std::vector<std::string> lines(
      static_cast<std::size_t>(std::accumulate(heights.begin(), heights.end(), 0)));
  for (const HeaderLabel& label : labels) {
    const auto bottom =
        lines.begin() + std::accumulate(heights.begin(), heights.begin() + label.fLastLevel + 1, 0);
    auto line = bottom - label.CountLines();
    for (const std::string& text : label.fBlock.fvLines) {
      AppendPadded(*line, "", label.fLeft - DisplayWidth(*line), Align::Left);
      AppendPadded(*line, text, label.fBlock.fWidth, label.fBlock.fAlign);
      ++line;
    }
  }
  std::string header;
  for (std::string& line : lines) {
    TrimEnd(line);
    header += line + '\n';
  }
  return header;
}

// From left to right, with a rule under each group; empty ones are left out.
std::vector<TextTable::HeaderLabel> TextTable::MakeHeaderLabels(std::size_t first, std::size_t end) const {
  std::vector<HeaderLabel> labels;
  int left = 0;
  for (std::size_t i = 0; i < fvStub.size(); ++i) {
    const int width = fvStub[i].fWidth;
    labels.push_back(
        {{WrapText(fvCorner[i], width), width, Align::Left}, left, 0, fLayout.GetColumns().fLevels - 1});
    left += width + kGap;
  }
  for (const Span& span : fvSpans) {
    const std::size_t begin = std::max(first, static_cast<std::size_t>(span.fFirst));
    const std::size_t stop = std::min(end, static_cast<std::size_t>(span.fFirst + span.fCount));
    if (begin >= stop) continue;
    const int width = GetSpanWidth(begin, stop);
    const Align align = span.fIsGroup                 ? Align::Centre
                        : fvColumns[begin].fIsNumeric ? Align::Right
                                                      : Align::Left;
    Block block{WrapText(span.fText, width), width, align};
    if (span.fIsGroup) block.fvLines.push_back(MakeRule(width));
    const int place = left + GetSpanWidth(first, begin) + kGap;
    labels.push_back({std::move(block), place, span.fFirstLevel, span.fLastLevel});
  }
  labels.erase(std::remove_if(labels.begin(), labels.end(),
                              [](const HeaderLabel& label) {
                                return label.CountLines() == 1 && label.fBlock.fvLines.front().empty();
                              }),
               labels.end());
  std::stable_sort(labels.begin(), labels.end(),
                   [](const HeaderLabel& a, const HeaderLabel& b) { return a.fLeft < b.fLeft; });
  return labels;
}

// Row labels may take several lines; the cells stand in the first of them.
void TextTable::AppendRow(std::size_t row, std::size_t first, std::size_t end, std::string& block) const {
  std::size_t height = 1;
  std::vector<std::vector<std::string>> labels;
  for (const TextColumn& column : fvStub) {
    labels.push_back(WrapText(column.fvTexts[row], column.fWidth));
    height = std::max(height, labels.back().size());
  }
  for (std::size_t line = 0; line < height; ++line) {
    for (std::size_t i = 0; i < fvStub.size(); ++i) {
      AppendPadded(block, line < labels[i].size() ? labels[i][line] : "", fvStub[i].fWidth, Align::Left);
      block.append(kGap, ' ');
    }
    if (line == 0) AppendCells(row, first, end, block);
    TrimEnd(block);
    block += '\n';
  }
}

void TextTable::AppendCells(std::size_t row, std::size_t first, std::size_t end, std::string& block) const {
  for (std::size_t i = first; i < end; ++i) {
    if (i > first) block.append(kGap, ' ');
    const TextColumn& column = fvColumns[i];
    AppendPadded(block, column.fvTexts[row], column.fWidth, column.fIsNumeric ? Align::Right : Align::Left);
  }
}

}  // namespace BayesHost
