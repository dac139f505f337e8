#include "host/data/CsvScanner.h"

#include <algorithm>
#include <utility>

namespace BayesHost {

namespace {
constexpr std::size_t kBufferBytes = std::size_t{1} << 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
}  // namespace

CsvScanner::CsvScanner(const std::filesystem::path& file, CsvDialect dialect)
    : fDialect(std::move(dialect)), fFile(file), fvBuffer(kBufferBytes) {
  if (Refill() && std::string_view(fpAt, fpEnd).starts_with(kByteOrderMark)) fpAt += kByteOrderMark.size();
}

CsvScanner::CsvScanner(std::string_view text, CsvDialect dialect)
    : fDialect(std::move(dialect)), fpAt(text.data()), fpEnd(text.data() + text.size()) {
  if (text.starts_with(kByteOrderMark)) fpAt += kByteOrderMark.size();
}

bool CsvScanner::Refill() {
  if (!fFile) return false;
  fpAt = fvBuffer.data();
  fpEnd = fpAt + fFile->Read(fvBuffer.data(), fvBuffer.size());
  return fpAt != fpEnd;
}

char CsvScanner::Take() {
  const char c = *fpAt++;
  ++fOffset;
  if (c == '\n' || (c == '\r' && Peek() != '\n')) ++fNextLine;
  return c;
}

bool CsvScanner::Next() {
  do {
    if (Peek() == kEnd) return false;
    ReadRecord();
  } while (fBlank && fColumns != 1);
  if (fColumns == 0) fColumns = CountCells();
  return true;
}

void CsvScanner::ReadRecord() {
  fText.clear();
  fvEnds.clear();
  fFault = fMixed ? Fault::OtherNewLine : Fault::None;
  fBlank = true;
  fLine = fNextLine;
  ReadCell();
  while (Peek() == fDialect.fDelimiter) {
    Take();
    fBlank = false;
    ReadCell();
  }
  TakeNewLine();
  if (Peek() == kEnd && fFile && fFile->IsDamaged()) fFault = Fault::DamagedArchive;
}

void CsvScanner::ReadCell() {
  const bool quoted = Peek() == fDialect.fQuote;
  if (quoted) ReadQuoted();
  if (quoted && !AtCellEnd() && fFault == Fault::None) fFault = Fault::TextAfterQuote;
  while (!AtCellEnd()) TakeText();
  fvEnds.push_back(fText.size());
}

void CsvScanner::TakeText() {
  const char* const pEnd = std::find_if(fpAt, fpEnd, [this](char c) { return EndsCell(c); });
  fText.append(fpAt, pEnd);
  fOffset += static_cast<std::uint64_t>(pEnd - fpAt);
  fpAt = pEnd;
  fBlank = false;
}

void CsvScanner::ReadQuoted() {
  Take();
  fBlank = false;
  while (Peek() != kEnd) {
    const char c = Take();
    const bool escapes = c == fDialect.fEscape && Peek() == fDialect.fQuote;
    if (c == fDialect.fQuote && !escapes) return;
    fText += escapes ? Take() : c;
  }
  fFault = Fault::OpenQuote;
}

void CsvScanner::TakeNewLine() {
  if (Peek() == kEnd) return;
  std::string_view newLine = "\n";
  if (Take() == '\r') newLine = Peek() == '\n' ? "\r\n" : "\r";
  if (newLine.size() == 2) Take();
  if (newLine != fDialect.fNewLine) fMixed = true;
}

bool CsvScanner::AtCellEnd() {
  const int c = Peek();
  return c == kEnd || EndsCell(static_cast<char>(c));
}

std::string_view CsvScanner::GetCell(int i) const {
  const auto cell = static_cast<std::size_t>(i);
  const std::size_t begin = cell == 0 ? 0 : fvEnds[cell - 1];
  return std::string_view(fText).substr(begin, fvEnds[cell] - begin);
}

}  // namespace BayesHost
