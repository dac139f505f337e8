#include "host/output/TableLayout.h"

#include <algorithm>

namespace BayesHost {
namespace {

std::size_t At(int index) {
  return static_cast<std::size_t>(index);
}

std::vector<int> LeafIndices(const Dimension& dimension, const std::vector<int>& leaves) {
  std::vector<int> indices(dimension.fvCategories.size(), -1);
  int next = 0;
  for (const int leaf : leaves) indices[At(leaf)] = next++;
  return indices;
}

bool CoversSame(const TableLayout::HeaderCell& a, const TableLayout::HeaderCell& b) {
  return a.fDimension == b.fDimension && a.fCategory == b.fCategory && a.fLevel == b.fLevel;
}

}  // namespace

TableLayout::TableLayout(const PivotTable& table) : fTable(table), fvAddress(table.GetDimensions().size()) {
  for (const Dimension& dimension : table.GetDimensions()) {
    fvLeaves.push_back(dimension.GetLeaves());
    fvLeafIndices.push_back(LeafIndices(dimension, fvLeaves.back()));
  }
  fRows = MakeAxis(Dimension::Role::Row);
  fColumns = MakeAxis(Dimension::Role::Column);
  fLayers = MakeAxis(Dimension::Role::Layer);
  OrderNotes();
}

const Dimension& TableLayout::GetDimension(int dimension) const {
  return fTable.GetDimensions()[At(dimension)];
}

// How deep its categories are nested.
int TableLayout::FindDepth(int dimension) const {
  const std::vector<Category>& categories = GetDimension(dimension).fvCategories;
  int deepest = 1;
  for (const int leaf : fvLeaves[At(dimension)]) {
    int depth = 1;
    for (int at = categories[At(leaf)].fParent; at >= 0; at = categories[At(at)].fParent) ++depth;
    deepest = std::max(deepest, depth);
  }
  return deepest;
}

TableLayout::Axis TableLayout::MakeAxis(Dimension::Role role) const {
  Axis axis;
  for (std::size_t i = 0; i < fTable.GetDimensions().size(); ++i)
    if (fTable.GetDimensions()[i].fRole == role) axis.fvDimensions.push_back(static_cast<int>(i));
  std::stable_sort(axis.fvDimensions.begin(), axis.fvDimensions.end(),
                   [&](int a, int b) { return GetDimension(a).fOrder < GetDimension(b).fOrder; });
  for (const int dimension : axis.fvDimensions) {
    axis.fvFirstLevels.push_back(axis.fLevels);
    axis.fLevels += FindDepth(dimension);
  }
  axis.fvLines = MakeLines(axis.fvDimensions);
  return axis;
}

// One dimension shows all its categories. Of several, only the crossings that hold a cell: nested dimensions
// seldom fill them all.
std::vector<TableLayout::Line> TableLayout::MakeLines(const std::vector<int>& dimensions) const {
  if (dimensions.empty()) return {{}};
  std::vector<Line> lines;
  if (dimensions.size() == 1) {
    for (const int leaf : fvLeaves[At(dimensions.front())]) lines.push_back({leaf});
    return lines;
  }
  Line line(dimensions.size());
  for (std::size_t cell = 0; cell < fTable.GetCells().Count(); ++cell) {
    const CellStore::Address address = fTable.GetCells().GetAddress(cell);
    for (std::size_t i = 0; i < line.size(); ++i) line[i] = address[At(dimensions[i])];
    if (lines.empty() || lines.back() != line) lines.push_back(line);
  }
  SortAsShown(dimensions, lines);
  return lines;
}

// Each line once.
void TableLayout::SortAsShown(const std::vector<int>& dimensions, std::vector<Line>& lines) const {
  std::sort(lines.begin(), lines.end(), [&](const Line& a, const Line& b) {
    std::size_t i = 0;
    while (i + 1 < a.size() && a[i] == b[i]) ++i;
    return GetLeafIndex(dimensions[i], a[i]) < GetLeafIndex(dimensions[i], b[i]);
  });
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
}

int TableLayout::GetLeafIndex(int dimension, int category) const {
  return fvLeafIndices[At(dimension)][At(category)];
}

std::vector<TableLayout::HeaderCell> TableLayout::MakeHeader(const Axis& axis) const {
  std::vector<std::vector<HeaderCell>> levels(At(axis.fLevels));
  for (std::size_t line = 0; line < axis.fvLines.size(); ++line) {
    bool joins = line > 0;  // as long as all outer labels are those of the line before
    for (std::size_t i = 0; i < axis.fvDimensions.size(); ++i) {
      const int dimension = axis.fvDimensions[i];
      const int end = i + 1 < axis.fvDimensions.size() ? axis.fvFirstLevels[i + 1] : axis.fLevels;
      const std::vector<int> path = GetDimension(dimension).GetPath(axis.fvLines[line][i]);
      int level = axis.fvFirstLevels[i];
      for (const int category : path) {
        const bool isLeaf = category == path.back();
        HeaderCell cell{dimension, category, level, isLeaf ? end - level : 1, static_cast<int>(line), 1};
        auto& row = levels[At(level++)];
        joins = joins && !row.empty() && CoversSame(row.back(), cell) &&
                row.back().fFirstLine + row.back().fLineSpan == static_cast<int>(line);
        if (joins)
          ++row.back().fLineSpan;
        else
          row.push_back(cell);
      }
    }
  }
  std::vector<HeaderCell> cells;
  for (const auto& row : levels) cells.insert(cells.end(), row.begin(), row.end());
  return cells;
}

const Category& TableLayout::GetCategory(const HeaderCell& cell) const {
  return GetDimension(cell.fDimension).fvCategories[At(cell.fCategory)];
}

void TableLayout::Scatter(const Axis& axis, const Line& line) const {
  for (std::size_t i = 0; i < line.size(); ++i) fvAddress[At(axis.fvDimensions[i])] = line[i];
}

const PivotTable::Address& TableLayout::GetAddress(const Line& layer, const Line& row,
                                                   const Line& column) const {
  Scatter(fLayers, layer);
  Scatter(fRows, row);
  Scatter(fColumns, column);
  return fvAddress;
}

std::optional<Cell> TableLayout::FindCell(const Line& layer, const Line& row, const Line& column) const {
  return fTable.GetCells().Find(GetAddress(layer, row, column));
}

std::vector<std::string> TableLayout::GetLabels(const Axis& axis, const Line& line) const {
  std::vector<std::string> labels;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Dimension& dimension = GetDimension(axis.fvDimensions[i]);
    for (const int category : dimension.GetPath(line[i]))
      labels.push_back(dimension.fvCategories[At(category)].GetLabel().fText);
  }
  return labels;
}

void TableLayout::OrderNote(int note) {
  if (std::find(fvNoteOrder.begin(), fvNoteOrder.end(), note) == fvNoteOrder.end())
    fvNoteOrder.push_back(note);
}

void TableLayout::OrderHeaderNotes(const Axis& axis, const Line& line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    const Dimension& dimension = GetDimension(axis.fvDimensions[i]);
    for (const int category : dimension.GetPath(line[i]))
      for (const int note : dimension.fvCategories[At(category)].fvNotes) OrderNote(note);
  }
}

void TableLayout::OrderNotes() {
  const auto& notes = fTable.GetFootnotes();
  if (notes.empty()) return;
  for (std::size_t i = 0; i < notes.size(); ++i)
    if (notes[i].fOnTable) OrderNote(static_cast<int>(i));
  for (const Line& column : fColumns.fvLines) OrderHeaderNotes(fColumns, column);
  for (const Line& layer : fLayers.fvLines) {
    OrderHeaderNotes(fLayers, layer);
    for (const Line& row : fRows.fvLines) {
      OrderHeaderNotes(fRows, row);
      if (!fTable.GetCells().HasNotes()) continue;
      for (const Line& column : fColumns.fvLines)
        if (const auto cell = FindCell(layer, row, column))
          for (const int note : cell->fNotes) OrderNote(note);
    }
  }
}

std::string TableLayout::GetLetter(int note) const {
  auto rank = std::find(fvNoteOrder.begin(), fvNoteOrder.end(), note) - fvNoteOrder.begin();
  std::string letters;
  for (; rank >= 0; rank = rank / 26 - 1) letters.insert(letters.begin(), static_cast<char>('a' + rank % 26));
  return letters;
}

std::string TableLayout::GetMarks(std::span<const int> notes) const {
  std::string marks;
  if (notes.empty()) return marks;
  for (const int note : fvNoteOrder)
    if (std::find(notes.begin(), notes.end(), note) != notes.end())
      marks += (marks.empty() ? "" : ",") + GetLetter(note);
  return marks;
}

std::string TableLayout::GetTableMarks() const {
  std::vector<int> onTable;
  for (const int note : fvNoteOrder)
    if (fTable.GetFootnotes()[At(note)].fOnTable) onTable.push_back(note);
  return GetMarks(onTable);
}

}  // namespace BayesHost
