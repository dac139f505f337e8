#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/data/CsvDialect.h"
#include "host/data/TextInput.h"

namespace BayesHost {

// Reads a text table record by record and knows the line of each: for the header, for the sample that settles
// the columns' types, and to find the place of an error. The bulk of the data goes through the engine.
//
// Lines without any character are no records, except in a table of one column, where they are an empty cell.
class CsvScanner {
 public:
  enum class Fault {
    None,
    OpenQuote,       // the file ends inside a quoted cell
    TextAfterQuote,  // something stands between a closing quote and the next delimiter
    OtherNewLine,    // the line before this record ends in another way than the dialect says
    DamagedArchive   // the file can't be unpacked any further
  };

  CsvScanner(const std::filesystem::path& file, CsvDialect dialect);
  // A table in memory; the text is not copied.
  CsvScanner(std::string_view text, CsvDialect dialect);

  // To the next record; false at the end.
  bool Next();
  // The record's first line. Lines count from 1; a quoted line end makes a record of several lines.
  std::uint64_t GetLine() const { return fLine; }
  // Bytes of the file read so far.
  std::uint64_t GetOffset() const { return fOffset; }
  int CountCells() const { return static_cast<int>(fvEnds.size()); }
  // Without quotes and escapes. Valid until Next.
  std::string_view GetCell(int i) const;
  Fault GetFault() const { return fFault; }

 private:
  static constexpr int kEnd = -1;

  bool Refill();
  int Peek() { return fpAt != fpEnd || Refill() ? static_cast<unsigned char>(*fpAt) : kEnd; }
  char Take();
  void ReadRecord();
  void ReadCell();
  // From here to the end of the cell or of the buffer.
  void TakeText();
  void ReadQuoted();
  void TakeNewLine();
  bool AtCellEnd();
  bool EndsCell(char c) const { return c == fDialect.fDelimiter || c == '\n' || c == '\r'; }

  CsvDialect fDialect;
  std::optional<TextInput> fFile;  // none: the text lies in memory
  std::vector<char> fvBuffer;
  const char* fpAt = nullptr;
  const char* fpEnd = nullptr;
  std::string fText;                // the record's cells, one behind the other
  std::vector<std::size_t> fvEnds;  // where each of them ends in fText
  std::uint64_t fLine = 0;
  std::uint64_t fNextLine = 1;
  std::uint64_t fOffset = 0;
  int fColumns = 0;     // cells of the first record
  bool fBlank = true;   // the record has no character at all
  bool fMixed = false;  // a line ended in another way than the dialect says
  Fault fFault = Fault::None;
};

}  // namespace BayesHost
