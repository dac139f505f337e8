#include "host/data/CsvFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

#include "host/data/DataError.h"
#include "host/data/SqlText.h"

namespace BayesHost {

namespace {

constexpr int kSampleRecords = 20480;
constexpr std::uint64_t kSampleBytes = std::uint64_t{8} << 20;
// What the engine reads at a time, and no record may be longer. With small buffers its threads share the work
// on small files, too; its own choice, 32 MB for each thread, leaves it no room under a small memory setting.
constexpr int kEngineBufferBytes = 1 << 20;
constexpr int kLongRecordBytes = 16 << 20;
constexpr int kMostDecimals = 6;
constexpr std::size_t kLeastWidth = 8;
constexpr std::size_t kMostWidth = 40;
constexpr std::size_t kMostQuoted = 40;

// A cell's text for an error message: short and on one line.
std::string QuoteCell(std::string_view cell) {
  std::string text(cell.substr(0, kMostQuoted));
  while (!IsUtf8(text) && text.size() + 4 > kMostQuoted) text.pop_back();
  std::replace(text.begin(), text.end(), '\n', ' ');
  return "\"" + text + (text.size() < cell.size() ? "...\"" : "\"");
}

std::string_view NameDelimiter(char delimiter) {
  switch (delimiter) {
    case '\t':
      return "tab";
    case ';':
      return "semicolon";
    case '|':
      return "bar";
    default:
      return "comma";
  }
}

std::string JoinNames(const std::vector<std::string>& names) {
  constexpr std::size_t kShown = 6;
  const auto end = names.begin() + static_cast<std::ptrdiff_t>(std::min(kShown, names.size()));
  return fmt::format("{}{}", fmt::join(names.begin(), end, ", "), names.size() > kShown ? ", ..." : "");
}

std::string EscapeNewLine(const std::string& newLine) {
  std::string escaped;
  for (const char c : newLine) escaped += c == '\n' ? "\\n" : "\\r";
  return escaped;
}

}  // namespace

CsvFile::CsvFile(DataFile file, const Dictionary* dictionary)
    : fFile(std::move(file)), fDialect(CsvDialect::Settle(fFile)) {
  ReadFirstRecord();
  TakeMissingWords(dictionary);
  std::vector<Profile> profiles = SettleDecimal();
  fHasNames = (dictionary != nullptr && dictionary->IsOf(fvNames)) || !LooksLikeCase(profiles);
  if (!fHasNames) profiles = SettleDecimal();
  NameVariables();
  CheckNames();
  TakeMissingWords(dictionary);
  if (dictionary != nullptr) ApplyDictionary(*dictionary, profiles);
  MakeVariables(profiles);
  if (dictionary == nullptr) return;
  for (VariableState& variable : fvVariables) dictionary->Complete(variable);
}

// Known before the sample is read: a column of numbers may hold such words.
void CsvFile::TakeMissingWords(const Dictionary* dictionary) {
  fvMissingWords.assign(fvNames.size(), {});
  for (std::size_t i = 0; dictionary != nullptr && i < fvNames.size(); ++i) {
    const Dictionary::Field* const field = dictionary->Find(fvNames[i]);
    if (field == nullptr || field->fType == ColumnType::Text) continue;
    fvMissingWords[i] = dictionary->ListMissingWords(fvNames[i]);
  }
}

void CsvFile::ApplyDictionary(const Dictionary& dictionary, std::vector<Profile>& profiles) {
  dictionary.CheckNames(fvNames);
  for (std::size_t i = 0; i < fvNames.size(); ++i) {
    const Dictionary::Field* const field = dictionary.Find(fvNames[i]);
    if (field != nullptr && field->fType != ColumnType::AsFound) profiles[i].fDeclared = field->fType;
  }
}

void CsvFile::Refuse(std::uint64_t line, int column, const std::string& text) const {
  const std::string name = column > 0 ? fvNames[static_cast<std::size_t>(column - 1)] : std::string();
  throw DataError({fFile.fName, line, column, name}, text);
}

void CsvFile::ReadFirstRecord() {
  CsvScanner scanner(fFile.fPath, fDialect);
  if (!scanner.Next() || scanner.GetLine() > 1) {
    Refuse(1, 0, "The line is empty. Expected the variable names: delete the empty lines before them.");
  }
  for (int i = 0; i < scanner.CountCells(); ++i) fvNames.emplace_back(TrimBlanks(scanner.GetCell(i)));
  CheckRecord(scanner);
}

bool CsvFile::LooksLikeCase(const std::vector<Profile>& profiles) const {
  bool hasNumber = false;
  for (std::size_t i = 0; i < fvNames.size(); ++i) {
    const CellKind kind = ClassifyCell(fvNames[i], fDialect.fDecimal);
    const bool aboveText = profiles[i].GetType() == ColumnType::Text || !profiles[i].HasValue();
    if (kind == CellKind::Text && !aboveText) return false;
    hasNumber |= kind == CellKind::Number;
  }
  return hasNumber;
}

void CsvFile::NameVariables() {
  for (std::size_t i = 0; i < fvNames.size(); ++i) {
    if (!fHasNames || fvNames[i].empty()) fvNames[i] = fmt::format("V{}", i + 1);
  }
}

void CsvFile::CheckNames() const {
  std::map<std::string_view, int> columns;
  int column = 0;
  for (const std::string& name : fvNames) {
    const auto [other, isNew] = columns.emplace(name, ++column);
    if (isNew) continue;
    Refuse(
        1, column,
        fmt::format("The variable name {} stands in column {} already. Give each column a name of its own.",
                    name, other->second));
  }
}

CsvScanner CsvFile::OpenData() const {
  CsvScanner scanner(fFile.fPath, fDialect);
  if (fHasNames) scanner.Next();
  return scanner;
}

void CsvFile::CheckRecord(const CsvScanner& scanner) const {
  const std::uint64_t line = scanner.GetLine();
  switch (scanner.GetFault()) {
    case CsvScanner::Fault::OpenQuote:
      Refuse(line, scanner.CountCells(),
             "The quoted cell that begins here has no closing quote. Add it, or double a quote "
             "that belongs to the text.");
    case CsvScanner::Fault::TextAfterQuote:
      Refuse(
          line, 0,
          fmt::format("Text stands between a closing quote and the next {}. Double a quote that belongs to "
                      "the text.",
                      NameDelimiter(fDialect.fDelimiter)));
    case CsvScanner::Fault::OtherNewLine:
      Refuse(line - 1, 0,
             "The line ends in another way than the lines before it. Save the file with one kind of line "
             "end.");
    case CsvScanner::Fault::DamagedArchive:
      Refuse(line, 0, "The gzip archive ends here or is damaged. Make it anew.");
    case CsvScanner::Fault::None:
      break;
  }
  CheckCells(scanner);
}

void CsvFile::CheckCells(const CsvScanner& scanner) const {
  const int cells = scanner.CountCells();
  const int columns = static_cast<int>(fvNames.size());
  if (cells != columns) {
    Refuse(scanner.GetLine(), 0,
           fmt::format("The line has {} {}, but {} {} expected ({}). Cells are separated by the {} "
                       "character: quote a cell "
                       "that holds it, and keep the place of an empty cell.",
                       cells, cells == 1 ? "cell" : "cells", columns, columns == 1 ? "is" : "are",
                       JoinNames(fvNames), NameDelimiter(fDialect.fDelimiter)));
  }
  for (int i = 0; i < cells; ++i) {
    if (!IsUtf8(scanner.GetCell(i)))
      Refuse(scanner.GetLine(), i + 1, "The text is not UTF-8. Save the file as UTF-8.");
  }
}

CsvFile::ColumnType CsvFile::Profile::GetType() const {
  if (fDeclared) return *fDeclared;
  if (fText || (fBooleans && fNumbers)) return ColumnType::Text;
  return fBooleans ? ColumnType::Boolean : ColumnType::Number;
}

std::vector<CsvFile::Profile> CsvFile::ReadSample(char decimal, std::set<std::string>& missingCells) const {
  std::vector<Profile> profiles(fvNames.size());
  CsvScanner scanner = OpenData();
  for (int n = 0; n < kSampleRecords && scanner.GetOffset() < kSampleBytes && scanner.Next(); ++n) {
    CheckRecord(scanner);
    for (int i = 0; i < scanner.CountCells(); ++i) {
      const std::string_view cell = scanner.GetCell(i);
      Profile& profile = profiles[static_cast<std::size_t>(i)];
      if (IsMissingWord(i, cell)) continue;
      const CellKind kind = ClassifyCell(cell, decimal);
      if (kind == CellKind::Missing) {
        if (missingCells.find(std::string(cell)) == missingCells.end()) missingCells.emplace(cell);
        continue;
      }
      profile.fNumbers |= kind == CellKind::Number;
      profile.fBooleans |= kind == CellKind::Boolean;
      if (kind == CellKind::Text && !profile.fText) {
        profile.fTextLine = scanner.GetLine();
        profile.fTextCell = QuoteCell(cell);
      }
      profile.fText |= kind == CellKind::Text;
      profile.fWidth = std::max(profile.fWidth, cell.size());
      if (kind == CellKind::Number)
        profile.fDecimals = std::max(profile.fDecimals, CountDecimals(cell, decimal));
    }
  }
  return profiles;
}

std::vector<CsvFile::Profile> CsvFile::SettleDecimal() {
  const auto isNumeric = [](const Profile& profile) { return profile.GetType() == ColumnType::Number; };
  const auto countNumeric = [&](const auto& all) { return std::count_if(all.begin(), all.end(), isNumeric); };
  for (const std::string_view word : kMissingWords) fMissingCells.emplace(word);
  fDialect.fDecimal = '.';
  std::vector<Profile> profiles = ReadSample('.', fMissingCells);
  if (fDialect.fDelimiter != ',' && countNumeric(profiles) < static_cast<std::ptrdiff_t>(profiles.size())) {
    std::vector<Profile> withComma = ReadSample(',', fMissingCells);
    if (countNumeric(withComma) > countNumeric(profiles)) {
      profiles = std::move(withComma);
      fDialect.fDecimal = ',';
    }
  }
  return profiles;
}

std::string CsvFile::ExplainText(const Profile& profile, std::size_t column) const {
  if (profile.fDeclared || !profile.fText || !profile.fNumbers) return {};
  return fmt::format(
      "{}, line {}, column {} ({}): {} is not a number. Correct the cell, leave it empty, or name it "
      "as a missing value in a dictionary.",
      fFile.fName, profile.fTextLine, column + 1, fvNames[column], profile.fTextCell);
}

void CsvFile::MakeVariables(const std::vector<Profile>& profiles) {
  for (std::size_t i = 0; i < profiles.size(); ++i) {
    const Profile& profile = profiles[i];
    fvTypes.push_back(profile.GetType());
    VariableState variable;
    variable.fName = fvNames[i];
    variable.fIsString = profile.GetType() == ColumnType::Text;
    const std::size_t width = std::min(profile.fWidth, kMostWidth);
    if (variable.fIsString) {
      variable.fWidth = static_cast<int>(profile.fWidth);
      variable.fLevel = VariableState::Level::Nominal;
      variable.fFormat = {static_cast<std::uint16_t>(width), kStringFormat, 0};
      variable.fTextReason = ExplainText(profile, i);
    } else {
      const int decimals = std::min(profile.fDecimals, kMostDecimals);
      variable.fFormat = {static_cast<std::uint16_t>(std::max(width, kLeastWidth)), 5,
                          static_cast<std::uint8_t>(decimals)};
    }
    if (profile.GetType() == ColumnType::Boolean) {
      variable.fLevel = VariableState::Level::Nominal;
      variable.fvValueLabels = {{OBS(0.0), "false"}, {OBS(1.0), "true"}};
    }
    fvVariables.push_back(std::move(variable));
  }
}

std::string CsvFile::MakeQuery(const std::vector<int>& columns) const {
  std::vector<std::string> wanted;
  wanted.reserve(columns.size());
  for (const int column : columns) wanted.push_back(MakeExpression(column));
  return fmt::format("SELECT {} FROM read_csv({}, {}, columns = {{{}}})", fmt::join(wanted, ", "),
                     QuoteSource(fFile.fPath), DescribeDialect(), DeclareColumns(columns));
}

bool CsvFile::AllowLongerRecords() {
  return !std::exchange(fHasLongRecords, true);
}

// The engine knows words for missing of the whole file only: a column with words of its own is read as text.
std::string CsvFile::MakeExpression(int column) const {
  const auto i = static_cast<std::size_t>(column);
  if (fvTypes[i] == ColumnType::Text) return fmt::format("c{}", column);
  if (fvMissingWords[i].empty()) return fmt::format("CAST(c{} AS DOUBLE)", column);
  std::vector<std::string> words;
  for (const std::string& word : fvMissingWords[i]) words.push_back(QuoteText(word));
  const std::string text =
      fmt::format("CASE WHEN trim(c{0}) IN ({1}) THEN NULL ELSE replace(c{0}, '{2}', '.') END", column,
                  fmt::join(words, ", "), fDialect.fDecimal);
  const bool isBoolean = fvTypes[i] == ColumnType::Boolean;
  return fmt::format(fmt::runtime(isBoolean ? "CAST(CAST({} AS BOOLEAN) AS DOUBLE)" : "CAST({} AS DOUBLE)"),
                     text);
}

// Names the engine's columns c0, c1, ...: it takes names that differ in case for the same. Only the wanted
// ones are converted.
std::string CsvFile::DeclareColumns(const std::vector<int>& columns) const {
  std::vector<const char*> types(fvTypes.size(), "VARCHAR");
  for (const int column : columns) {
    const ColumnType type = fvTypes[static_cast<std::size_t>(column)];
    if (!fvMissingWords[static_cast<std::size_t>(column)].empty()) continue;
    if (type == ColumnType::Number) types[static_cast<std::size_t>(column)] = "DOUBLE";
    if (type == ColumnType::Boolean) types[static_cast<std::size_t>(column)] = "BOOLEAN";
  }
  std::vector<std::string> declared;
  for (std::size_t i = 0; i < types.size(); ++i) declared.push_back(fmt::format("'c{}': '{}'", i, types[i]));
  return fmt::format("{}", fmt::join(declared, ", "));
}

std::string CsvFile::DescribeDialect() const {
  std::vector<std::string> missing;
  for (const std::string& cell : fMissingCells) missing.push_back(QuoteText(cell));
  return fmt::format(
      "auto_detect = false, hive_partitioning = false, header = {}, delim = {}, quote = {}, escape = {}, "
      "new_line = '{}', "
      "decimal_separator = '{}', nullstr = [{}], buffer_size = {}, compression = '{}'",
      fHasNames, QuoteText({&fDialect.fDelimiter, 1}), QuoteText({&fDialect.fQuote, 1}),
      QuoteText({&fDialect.fEscape, 1}), EscapeNewLine(fDialect.fNewLine), fDialect.fDecimal,
      fmt::join(missing, ", "), fHasLongRecords ? kLongRecordBytes : kEngineBufferBytes,
      TextInput::IsArchive(fFile.fPath) ? "gzip" : "none");
}

bool CsvFile::IsMissingWord(int column, std::string_view cell) const {
  const std::vector<std::string>& words = fvMissingWords[static_cast<std::size_t>(column)];
  return std::find(words.begin(), words.end(), TrimBlanks(cell)) != words.end();
}

bool CsvFile::Fits(int column, std::string_view cell) const {
  const ColumnType type = fvTypes[static_cast<std::size_t>(column)];
  const CellKind kind = ClassifyCell(cell, fDialect.fDecimal);
  if (type == ColumnType::Text || kind == CellKind::Missing || IsMissingWord(column, cell)) return true;
  if (type == ColumnType::Number) return kind == CellKind::Number;
  return kind == CellKind::Boolean || TrimBlanks(cell) == "0" || TrimBlanks(cell) == "1";
}

void CsvFile::CheckInfinite(const std::vector<int>& columns) const {
  for (CsvScanner scanner = OpenData(); scanner.Next();) {
    for (const int column : columns) {
      const std::string_view cell = scanner.GetCell(column);
      const bool isNumber = fvTypes[static_cast<std::size_t>(column)] == ColumnType::Number;
      if (!isNumber || IsMissingWord(column, cell) || !IsTooLarge(cell, fDialect.fDecimal)) continue;
      Refuse(scanner.GetLine(), column + 1,
             QuoteCell(cell) +
                 " is too large for a number: the largest is about 1.8e308. Correct the cell, or "
                 "leave it empty.");
    }
  }
}

void CsvFile::Explain(const std::vector<int>& columns, const std::string& engineText) const {
  CsvScanner scanner = OpenData();
  for (std::uint64_t begin = scanner.GetOffset(); scanner.Next(); begin = scanner.GetOffset()) {
    CheckRecord(scanner);
    if (scanner.GetOffset() - begin > kLongRecordBytes) {
      Refuse(
          scanner.GetLine(), 0,
          fmt::format("The record is longer than {} MB. Shorten its cells, or look for a quote that should "
                      "be doubled.",
                      kLongRecordBytes >> 20));
    }
    for (const int column : columns) {
      if (Fits(column, scanner.GetCell(column))) continue;
      const bool isBoolean = fvTypes[static_cast<std::size_t>(column)] == ColumnType::Boolean;
      Refuse(scanner.GetLine(), column + 1,
             fmt::format("{} is not {}, but the column was taken as such from the cells before or the "
                         "dictionary. Correct the cell, or leave it empty.",
                         QuoteCell(scanner.GetCell(column)), isBoolean ? "true or false" : "a number"));
    }
  }
  Refuse(0, 0, "The data engine can't read the file: " + MakeReadable(engineText));
}

}  // namespace BayesHost
