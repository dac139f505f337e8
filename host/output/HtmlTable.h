// One layer of a table as an HTML <table>: copied into a spreadsheet or a word processor it stays one.
#pragma once

#include <ostream>
#include <string>

#include "host/output/TableLayout.h"

namespace BayesHost {

// Footnote letters as they stand behind a text; nothing for none.
std::string HtmlMarks(const std::string& marks);

class HtmlTable {
 public:
  HtmlTable(const PivotTable& table, const TableLayout& layout, const TableLayout::Line& layer,
            std::ostream& out);

  void Write() const;

 private:
  // How the cells of a column are set: numbers have their points in line, so all but the longest tails are
  // followed by room, in digits.
  struct Column {
    bool fIsNumeric = true;
    double fTail = 0;
  };

  Column MakeColumn(const TableLayout::Line& column) const;
  std::string LabelOf(const TableLayout::HeaderCell& cell) const;
  void WriteCaption() const;
  void WriteHead() const;
  void WriteCorner() const;
  void WriteColumnLabel(const TableLayout::HeaderCell& cell) const;
  void WriteBody() const;
  void WriteRowLabel(const TableLayout::HeaderCell& label) const;
  void WriteCell(const std::optional<Cell>& cell, const Column& column) const;

  const PivotTable& fTable;
  const TableLayout& fLayout;
  const TableLayout::Line& fLayer;
  std::ostream& fOut;
  std::vector<Column> fvColumns;
};

}  // namespace BayesHost
