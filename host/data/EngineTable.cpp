#include "host/data/EngineTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>

#include "host/data/CsvCell.h"
#include "host/data/DataError.h"
#include "host/data/SqlText.h"
#include "host/data/TextInput.h"

namespace BayesHost {

namespace {

constexpr int kSampleRows = 2048;
constexpr int kMostDecimals = 6;
constexpr std::size_t kMostWidth = 40;

// Decimals to show: none for whole numbers, the declared ones for DECIMAL(p,s), found out for the others.
struct NumberRow {
  std::string_view fType;
  int fDecimals;
};

constexpr std::array kNumbers = {
    NumberRow{"TINYINT", 0}, NumberRow{"SMALLINT", 0}, NumberRow{"INTEGER", 0},   NumberRow{"BIGINT", 0},
    NumberRow{"HUGEINT", 0}, NumberRow{"UTINYINT", 0}, NumberRow{"USMALLINT", 0}, NumberRow{"UINTEGER", 0},
    NumberRow{"UBIGINT", 0}, NumberRow{"UHUGEINT", 0}, NumberRow{"FLOAT", 2},     NumberRow{"DOUBLE", 2},
};

bool IsFractional(const std::string& type) {
  return type == "FLOAT" || type == "DOUBLE";
}

// Decimals to show for a number type, -1 for any other type.
int FindDecimals(const std::string& type) {
  if (type.starts_with("DECIMAL(") && type.back() == ')') {
    const std::size_t comma = type.find(',');
    return comma == std::string::npos ? 0 : std::min(std::atoi(type.c_str() + comma + 1), kMostDecimals);
  }
  const auto known =
      std::find_if(kNumbers.begin(), kNumbers.end(), [&](const NumberRow& row) { return row.fType == type; });
  return known == kNumbers.end() ? -1 : known->fDecimals;
}

// What a value of JSON that is text in one record and a number in the next says, without quotes.
const char* FindConversion(const std::string& type, bool isString) {
  if (type == "JSON") return "json_extract_string({}, '$')";
  return isString ? "CAST({} AS VARCHAR)" : "CAST({} AS DOUBLE)";
}

// The engine doesn't look at an archive's checksum.
void CheckArchive(const DataFile& file) {
  TextInput input(file.fPath);
  std::array<char, 1 << 16> buffer{};
  while (input.Read(buffer.data(), buffer.size()) > 0) {
  }
  if (input.IsDamaged()) {
    throw DataError({file.fName, 0, 0, {}}, "The gzip archive ends too early or is damaged. Make it anew.");
  }
}

std::string GetEnding(const DataFile& file) {
  std::filesystem::path path = file.fPath;
  if (path.extension() == ".gz") path.replace_extension();
  std::string ending = path.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending;
}

// Width and decimals from the first values, as the texts that a person would write.
class FormatSample {
 public:
  FormatSample(Engine& engine, const std::string& relation, const std::vector<std::string>& expressions) {
    std::vector<std::string> texts;
    texts.reserve(expressions.size());
    for (const std::string& expression : expressions)
      texts.push_back(fmt::format("CAST({} AS VARCHAR)", expression));
    fStrings.resize(kSampleRows);
    fvWidths.assign(texts.size(), 1);
    fvDecimals.assign(texts.size(), 0);
    const std::string sql =
        fmt::format("SELECT {} FROM {} LIMIT {}", fmt::join(texts, ", "), relation, kSampleRows);
    for (Engine::Stream stream = engine.Query(sql); stream.Next();) {
      for (std::size_t i = 0; i < texts.size(); ++i) TakeColumn(stream, i);
    }
  }
  void Apply(std::size_t column, bool fractional, VariableState& variable) const {
    if (variable.fIsString) {
      variable.fWidth = static_cast<int>(fvWidths[column]);
      variable.fFormat.fWidth = static_cast<std::uint16_t>(std::min(fvWidths[column], kMostWidth));
    } else if (fractional) {
      variable.fFormat.fDecimals = static_cast<std::uint8_t>(std::min(fvDecimals[column], kMostDecimals));
    }
  }

 private:
  // The engine writes the whole number 3 as "3.0".
  void TakeColumn(const Engine::Stream& stream, std::size_t column) {
    const std::size_t rows = std::min(stream.CountRows(), fStrings.size());
    stream.GetStrings(column, 0, rows, fStrings.data());
    for (std::size_t i = 0; i < rows; ++i) {
      const std::string_view text = fStrings[i];
      fvWidths[column] = std::max(fvWidths[column], text.size());
      if (!text.ends_with(".0") && ClassifyCell(text, '.') == CellKind::Number)
        fvDecimals[column] = std::max(fvDecimals[column], CountDecimals(text, '.'));
    }
  }

  std::vector<std::string_view> fStrings;
  std::vector<std::size_t> fvWidths;
  std::vector<int> fvDecimals;
};

}  // namespace

EngineVariable::EngineVariable(const Engine::Column& column) {
  const std::string name = QuoteName(column.fName);
  const int decimals = FindDecimals(column.fType);
  const bool isBoolean = column.fType == "BOOLEAN";
  fVariable.fName = column.fName;
  fVariable.fIsString = decimals < 0 && !isBoolean;
  fExpression = fmt::format(fmt::runtime(FindConversion(column.fType, fVariable.fIsString)), name);
  if (fVariable.fIsString) fVariable.fFormat.fType = kStringFormat;
  fVariable.fFormat.fDecimals = static_cast<std::uint8_t>(std::max(decimals, 0));
  if (decimals < 0) fVariable.fLevel = VariableState::Level::Nominal;
  if (isBoolean) fVariable.fvValueLabels = {{OBS(0.0), "false"}, {OBS(1.0), "true"}};
}

bool EngineTable::IsParquet(const DataFile& file) {
  constexpr std::string_view kSignature = "PAR1";
  std::array<char, kSignature.size()> bytes{};
  std::ifstream(file.fPath, std::ios::binary).read(bytes.data(), bytes.size());
  return std::string_view(bytes.data(), bytes.size()) == kSignature || GetEnding(file) == ".parquet";
}

bool EngineTable::IsJson(const DataFile& file) {
  const std::string ending = GetEnding(file);
  return ending == ".json" || ending == ".ndjson" || ending == ".jsonl";
}

EngineTable EngineTable::OpenParquet(DataFile file, Engine& engine, const Dictionary* dictionary) {
  const std::string relation =
      fmt::format("read_parquet({}, hive_partitioning = false)", QuoteSource(file.fPath));
  return {std::move(file), relation, engine, dictionary};
}

// The types are taken from the whole file: a record may lack a field, or have a text where others have
// numbers. However many fields there are, they are fields and not the entries of one map. The engine keeps
// some buffers of twice the largest record for each thread.
EngineTable EngineTable::OpenJson(DataFile file, Engine& engine, const Dictionary* dictionary) {
  constexpr int kLargestRecord = 2 << 20;
  const bool isArchive = TextInput::IsArchive(file.fPath);
  if (isArchive) CheckArchive(file);
  const std::string relation = fmt::format(
      "read_json({}, format = 'auto', records = true, sample_size = -1, maximum_object_size = {}, "
      "map_inference_threshold = -1, hive_partitioning = false, compression = '{}')",
      QuoteSource(file.fPath), kLargestRecord, isArchive ? "gzip" : "uncompressed");
  EngineTable table(std::move(file), relation, engine, dictionary);
  table.fIsFinite = true;
  return table;
}

EngineTable::EngineTable(DataFile file, std::string relation, Engine& engine, const Dictionary* dictionary)
    : fFile(std::move(file)), fRelation(std::move(relation)), fEngine(engine) {
  try {
    std::vector<std::string> names;
    std::vector<bool> fractional;
    for (const Engine::Column& column : engine.Describe(fRelation)) {
      EngineVariable variable(column);
      names.push_back(column.fName);
      fractional.push_back(IsFractional(column.fType));
      fvVariables.push_back(std::move(variable.fVariable));
      fvExpressions.push_back(std::move(variable.fExpression));
    }
    const FormatSample sample(engine, fRelation, fvExpressions);
    if (dictionary != nullptr) dictionary->CheckNames(names);
    for (std::size_t i = 0; i < fvVariables.size(); ++i) {
      sample.Apply(i, fractional[i], fvVariables[i]);
      if (dictionary != nullptr) dictionary->Complete(fvVariables[i]);
    }
  } catch (const EngineError& error) {
    if (engine.IsStopped()) throw;
    Explain({}, error.what());
  }
}

std::string EngineTable::MakeQuery(const std::vector<int>& columns) const {
  std::vector<std::string> wanted;
  wanted.reserve(columns.size());
  for (const int column : columns) wanted.push_back(fvExpressions[static_cast<std::size_t>(column)]);
  return fmt::format("SELECT {} FROM {}", fmt::join(wanted, ", "), fRelation);
}

void EngineTable::CheckInfinite(const std::vector<int>& columns) const {
  if (!fIsFinite) return;
  for (const int column : columns) {
    const auto i = static_cast<std::size_t>(column);
    if (fvVariables[i].fIsString || !HasInfinite(fvExpressions[i])) continue;
    throw DataError(
        {fFile.fName, 0, column + 1, fvVariables[i].fName},
        "A number is infinite, or too large: the largest is about 1.8e308. Correct it, or leave it out.");
  }
}

bool EngineTable::HasInfinite(const std::string& expression) const {
  double count = 0;
  const std::string sql =
      fmt::format("SELECT CAST(count_if(isinf({})) AS DOUBLE) FROM {}", expression, fRelation);
  for (Engine::Stream stream = fEngine.Query(sql); stream.Next();) stream.GetNumbers(0, 0, 1, &count);
  return count > 0;
}

// The engine names the file by a path that the user need not have written.
void EngineTable::Explain(const std::vector<int>& /*columns*/, const std::string& engineText) const {
  std::string text = MakeReadable(engineText);
  const std::string path = FullName(fFile.fPath);
  for (std::size_t at = 0; (at = text.find(path, at)) != std::string::npos; at += fFile.fName.size())
    text.replace(at, path.size(), fFile.fName);
  if (text.find("expected records") != std::string::npos)
    text = "It holds no records. Expected [{\"name\": value, ...}, ...], or one such object on each line.";
  throw DataError({fFile.fName, 0, 0, {}},
                  fmt::format("The file can't be read: {} Make it anew, or save the table as CSV.", text));
}

}  // namespace BayesHost
