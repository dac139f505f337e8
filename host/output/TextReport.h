// The report as text for a terminal.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "host/output/Report.h"
#include "platform/Visibility.h"

namespace BayesHost {

class BAYES_PLATFORM TextReport {
 public:
  struct Options {
    int fWidth = 80;        // columns of the terminal
    bool fUnicode = true;   // false: ASCII rules
    bool fColour = false;   // ANSI colour sequences
    bool fMessages = true;  // false: messages are shown elsewhere (Diagnostic)
    int fThreads = 1;       // that lay out tables; 0: all cores
  };

  explicit TextReport(Options options);

  void Write(const Report& report, std::ostream& out) const;
  void WriteHead(const ReportHead& head, std::ostream& out) const;
  void WriteCommand(const CommandOutput& command, std::ostream& out) const;

 private:
  // Items [fBegin, fEnd) and the split that stands above already; empty: none.
  struct Piece {
    ItemList::const_iterator fBegin;
    ItemList::const_iterator fEnd;
    std::string fSplit;
  };

  void WriteItems(const ItemList& items, std::ostream& out) const;
  std::vector<Piece> CutPieces(const ItemList& items) const;
  void WritePiece(const Piece& piece, std::ostream& out) const;
  bool IsShown(const Item& item) const;
  void WriteContent(const Notes& notes, std::ostream& out) const;
  void WriteContent(const Message& message, std::ostream& out) const;
  void WriteContent(const Heading& heading, std::ostream& out) const;
  void WriteContent(const std::shared_ptr<PivotTable>& table, std::ostream& out) const;
  void WriteContent(const Chart& chart, std::ostream& out) const;

  // `first` opens the first line, blanks of the same width every other one.
  void WriteWrapped(const std::string& first, const std::string& text, std::ostream& out) const;
  std::string Bold(const std::string& text) const;
  std::string MakeRule() const;

  Options fOptions;
};

}  // namespace BayesHost
