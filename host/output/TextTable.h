// One layer of a table as lines of text: labels to the left, columns under their groups, rules above, between
// and below.
#pragma once

#include <string>
#include <vector>

#include "host/output/TableLayout.h"

namespace BayesHost {

class TextTable {
 public:
  // `width`: columns of the terminal. A table that doesn't fit is cut between its columns into blocks, one
  // below the other, each with the labels of its rows. `rule`: the string that one column of a rule is made
  // of.
  TextTable(const PivotTable& table, const TableLayout& layout, const TableLayout::Line& layer, int width,
            std::string rule);

  std::string Render() const;

 private:
  // A column of labels or of cells.
  struct TextColumn {
    std::vector<std::string> fvTexts;  // by row
    int fWidth = 0;
    bool fIsNumeric = true;
  };
  // A label of the header and the columns that it covers.
  struct Span {
    std::string fText;
    int fFirstLevel;
    int fLastLevel;
    int fFirst;
    int fCount;
    bool fIsGroup;
  };
  struct HeaderLabel;

  void MakeStub();
  void MakeColumns();
  TextColumn MakeColumn(const TableLayout::Line& column) const;
  int MeasureMarks(const TableLayout::Line& column) const;
  std::string ShowCell(const std::optional<Cell>& cell, int markWidth) const;
  std::vector<Span> MakeSpans() const;
  void WidenForLabels();

  int GetStubWidth() const;
  // One past the last column that fits beside the row labels when `first` is the first. A group that doesn't
  // fit whole goes to the next block, unless it is the first.
  std::size_t FindBlockEnd(std::size_t first) const;
  std::string RenderBlock(std::size_t first, std::size_t end) const;
  std::string RenderHeader(std::size_t first, std::size_t end) const;
  std::vector<int> MeasureLevels(const std::vector<HeaderLabel>& labels) const;
  std::vector<HeaderLabel> MakeHeaderLabels(std::size_t first, std::size_t end) const;
  // What is appended ends a block's lines so far.
  void AppendRow(std::size_t row, std::size_t first, std::size_t end, std::string& block) const;
  void AppendCells(std::size_t row, std::size_t first, std::size_t end, std::string& block) const;
  int GetSpanWidth(std::size_t first, std::size_t end) const;
  std::string MakeRule(int width) const;

  const PivotTable& fTable;
  const TableLayout& fLayout;
  const TableLayout::Line& fLayer;
  int fWidth;
  std::string fRule;
  std::vector<std::string> fvCorner;  // by level of the row labels
  std::vector<TextColumn> fvStub;
  std::vector<TextColumn> fvColumns;
  std::vector<Span> fvSpans;
};

}  // namespace BayesHost
