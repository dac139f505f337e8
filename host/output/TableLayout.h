// A table's lines and headers as a reader goes through them: which rows, columns and layers there are, which
// labels span them, and the letters of its footnotes.
#pragma once

#include <string>
#include <vector>

#include "host/output/PivotTable.h"

namespace BayesHost {

class TableLayout {
 public:
  // One row, column or layer: a category of each dimension of the axis.
  using Line = std::vector<int>;

  // The dimensions that share a role, outermost first, and the lines they make. A dimension takes as many
  // levels of labels as its categories are nested deep.
  struct Axis {
    std::vector<int> fvDimensions;
    std::vector<int> fvFirstLevels;  // of each dimension
    int fLevels = 0;
    std::vector<Line> fvLines;
  };

  // A label and the levels and lines that it covers.
  struct HeaderCell {
    int fDimension = 0;
    int fCategory = 0;
    int fLevel = 0;
    int fLevelSpan = 1;
    int fFirstLine = 0;
    int fLineSpan = 1;
  };

  explicit TableLayout(const PivotTable& table);

  const Axis& GetRows() const { return fRows; }
  const Axis& GetColumns() const { return fColumns; }
  const Axis& GetLayers() const { return fLayers; }

  // By level, then by line.
  std::vector<HeaderCell> MakeHeader(const Axis& axis) const;
  const Category& GetCategory(const HeaderCell& cell) const;
  // Nothing where nothing was written.
  std::optional<Cell> FindCell(const Line& layer, const Line& row, const Line& column) const;

  // Valid until the next cell is asked for.
  const PivotTable::Address& GetAddress(const Line& layer, const Line& row, const Line& column) const;

  // The category's place among the categories of its dimension that are no groups.
  int GetLeafIndex(int dimension, int category) const;
  // The labels from the outermost group inwards, all dimensions of the axis.
  std::vector<std::string> GetLabels(const Axis& axis, const Line& line) const;

  // Footnotes in the order of their first appearance: title, column labels, layers, then row by row.
  const std::vector<int>& GetNoteOrder() const { return fvNoteOrder; }
  std::string GetLetter(int note) const;
  // The letters of some notes, sorted, as "a" or "a,b"; empty for none.
  std::string GetMarks(std::span<const int> notes) const;
  std::string GetTableMarks() const;

 private:
  Axis MakeAxis(Dimension::Role role) const;
  void SortAsShown(const std::vector<int>& dimensions, std::vector<Line>& lines) const;
  std::vector<Line> MakeLines(const std::vector<int>& dimensions) const;
  void OrderNotes();
  void OrderHeaderNotes(const Axis& axis, const Line& line);
  void OrderNote(int note);
  void Scatter(const Axis& axis, const Line& line) const;
  const Dimension& GetDimension(int dimension) const;
  int FindDepth(int dimension) const;

  const PivotTable& fTable;
  std::vector<std::vector<int>> fvLeaves;       // of each dimension, in the order shown
  std::vector<std::vector<int>> fvLeafIndices;  // by dimension and category; -1 for groups
  Axis fRows;
  Axis fColumns;
  Axis fLayers;
  std::vector<int> fvNoteOrder;
  mutable PivotTable::Address fvAddress;  // room for one: readers ask for every cell
};

}  // namespace BayesHost
