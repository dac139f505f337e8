#include "host/data/CsvDialect.h"

#include <array>
#include <string_view>

#include "host/data/CsvScanner.h"
#include "host/data/DataError.h"
#include "host/data/TextInput.h"

namespace BayesHost {

namespace {

constexpr std::size_t kSampleBytes = std::size_t{1} << 18;
constexpr int kSampleRecords = 200;

[[noreturn]] void Refuse(const DataFile& file, const std::string& text) {
  throw DataError({file.fName, 0, 0, {}}, text);
}

std::string ReadSample(const DataFile& file) {
  TextInput input(file.fPath);
  if (!input.IsOpen()) Refuse(file, "The file can't be opened. Check that you may read it.");
  std::string sample(kSampleBytes, '\0');
  sample.resize(input.Read(sample.data(), sample.size()));
  if (input.IsDamaged() && sample.empty()) Refuse(file, "The gzip archive is damaged. Make it anew.");
  return sample;
}

struct Signature {
  std::string_view fBytes;
  const char* fText;
};

constexpr std::array kNoText = {
    Signature{"\x1F\x8B", "The gzip archive holds another archive. Unpack it first (gunzip)."},
    Signature{"PK\x03\x04", "This is a zip archive or a spreadsheet workbook. Save the table as CSV."},
    Signature{"\xD0\xCF\x11\xE0", "This is an office document. Save the table as CSV."},
    Signature{"PAR1", "The gzip archive holds a Parquet file. Unpack it first (gunzip)."},
    Signature{"\xFF\xFE", "The text is encoded as UTF-16. Save it as UTF-8."},
    Signature{"\xFE\xFF", "The text is encoded as UTF-16. Save it as UTF-8."},
};

void CheckText(const DataFile& file, std::string_view sample) {
  if (sample.empty()) {
    Refuse(file, "The file is empty. Expected a line of variable names and one line for each case.");
  }
  for (const Signature& signature : kNoText) {
    if (sample.starts_with(signature.fBytes)) Refuse(file, signature.fText);
  }
  if (sample.find('\0') != std::string_view::npos) {
    Refuse(file, "The file holds binary data. Expected text: save the table as CSV.");
  }
}

// The first line end outside quotes.
std::string FindNewLine(std::string_view sample) {
  bool quoted = false;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (sample[i] == '"') quoted = !quoted;
    if (quoted || (sample[i] != '\n' && sample[i] != '\r')) continue;
    if (sample[i] == '\n') return "\n";
    return sample.substr(i + 1, 1) == "\n" ? "\r\n" : "\r";
  }
  return "\n";
}

// How well a delimiter explains the sample: the share of records with as many cells as the first has, then
// the number of these cells. A delimiter that the first record lacks explains nothing.
struct Fit {
  double fShare = 0;
  int fCells = 0;
  auto operator<=>(const Fit&) const = default;
};

Fit Judge(std::string_view sample, const CsvDialect& dialect) {
  CsvScanner scanner(sample, dialect);
  if (!scanner.Next() || scanner.CountCells() < 2) return {};
  const int cells = scanner.CountCells();
  int records = 1;
  int equal = 1;
  for (; records < kSampleRecords && scanner.Next(); ++records) {
    equal += scanner.CountCells() == cells && scanner.GetFault() == CsvScanner::Fault::None ? 1 : 0;
  }
  return {static_cast<double>(equal) / records, cells};
}

// On a tie the first wins: commas and semicolons also stand in ordinary text, and doubled quotes are the
// rule. A file without any of the delimiters has one column.
CsvDialect FindDelimiter(std::string_view sample, const CsvDialect& start) {
  CsvDialect best = start;
  Fit bestFit;
  for (const char delimiter : {'\t', '|', ';', ','}) {
    for (const char escape : {'"', '\\'}) {
      CsvDialect dialect = start;
      dialect.fDelimiter = delimiter;
      dialect.fEscape = escape;
      const Fit fit = Judge(sample, dialect);
      if (fit <= bestFit) continue;
      best = dialect;
      bestFit = fit;
    }
  }
  return best;
}

}  // namespace

CsvDialect CsvDialect::Settle(const DataFile& file) {
  CheckFile(file);
  const std::string sample = ReadSample(file);
  CheckText(file, sample);
  CsvDialect dialect;
  dialect.fNewLine = FindNewLine(sample);
  // A cut last line would look ragged.
  const std::size_t lastLine = sample.rfind(dialect.fNewLine.back());
  const bool cut = sample.size() == kSampleBytes && lastLine != std::string::npos;
  return FindDelimiter(std::string_view(sample).substr(0, cut ? lastLine + 1 : sample.size()), dialect);
}

}  // namespace BayesHost
