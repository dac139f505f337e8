// How a text table is written: what separates cells and lines, how cells are quoted.
//
// The dialect is settled before the data engine sees the file: left to itself the engine reads a ragged file
// as one text column, and takes minutes to guess at a file of thousands of columns.
#pragma once

#include <string>

#include "host/data/DataFile.h"

namespace BayesHost {

struct CsvDialect {
  std::string fNewLine = "\n";  // "\n", "\r\n" or "\r"
  char fDelimiter = ',';
  char fQuote = '"';
  char fEscape = '"';   // before a quote inside a quoted cell
  char fDecimal = '.';  // '.' or ','; settled with the columns' types

  // From the file's first 256 KB. Throws DataError when there is no readable text: a missing or empty file, a
  // folder, an archive, another encoding.
  static CsvDialect Settle(const DataFile& file);
};

}  // namespace BayesHost
