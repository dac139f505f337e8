#include "host/data/DataWriter.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <cerrno>
#include <numeric>
#include <ostream>
#include <system_error>

#include "host/data/DataError.h"
#include "host/data/Engine.h"
#include "host/data/SqlText.h"
#include "host/files/OutputFile.h"
#include "host/files/TempFile.h"
#include "host/files/TempNames.h"
#include "platform/component/Common.h"

namespace BayesHost {

namespace {

// Blanks at an end are quoted because a reader may take them off; a lone blank line would be no record.
void AppendText(std::string_view text, std::string& lines) {
  const bool plain = text.find_first_of(",\"\n\r\t;|") == std::string_view::npos && !text.starts_with(' ');
  if (plain) {
    lines += text;
    return;
  }
  lines += '"';
  for (const char c : text) lines.append(c == '"' ? 2 : 1, c);
  lines += '"';
}

// With as many digits as bring the same number back.
void AppendNumber(double number, std::string& lines) {
  char text[32];
  lines.append(text, fmt::format_to(text, FMT_COMPILE("{}"), number));
}

class CsvWriter {
 public:
  CsvWriter(DataSet& data, std::ostream& out) : fData(data), fOut(out) {
    fvAll.resize(static_cast<std::size_t>(data.CountVariables()));
    std::iota(fvAll.begin(), fvAll.end(), 0);
  }

  void Write() {
    fData.Require(fvAll);
    fData.Load();
    for (const int variable : fvAll) {
      if (variable > 0) fLines += ',';
      AppendText(fData.GetVariable(variable).GetName(), fLines);
    }
    EndLine();
    CaseCursor cursor = fData.MakeFileCursor(fvAll);
    cursor.SetRange(0, fData.CountCases());
    while (fOut && cursor.Next()) WriteCase(cursor.GetValues());
    Flush();
  }

 private:
  void WriteCase(const double* values) {
    for (const int variable : fvAll) {
      if (variable > 0) fLines += ',';
      const double value = values[variable];
      if (value == MCCommon_850::MCMV::Missing()) continue;
      if (fData.GetVariable(variable).IsString()) {
        AppendText(fData.GetStrings(variable).Decode(value), fLines);
      } else {
        AppendNumber(value, fLines);
      }
    }
    EndLine();
  }

  void EndLine() {
    fLines += '\n';
    if (fLines.size() >= kPieceBytes) Flush();
  }

  void Flush() {
    fOut << fLines;
    fLines.clear();
  }

  static constexpr std::size_t kPieceBytes = 1 << 16;

  DataSet& fData;
  std::ostream& fOut;
  std::vector<int> fvAll;
  std::string fLines;  // not yet written
};

void SaveCsv(DataSet& data, const std::filesystem::path& target) {
  OutputFile file(target);
  CsvWriter(data, file.Stream()).Write();
  file.Commit();
}

std::string DeclareColumns(const DataSet& data) {
  std::string columns;
  for (int i = 0; i < data.CountVariables(); ++i) {
    const ZARQ_Variable& variable = data.GetVariable(i);
    columns += fmt::format("{}{}: '{}'", i > 0 ? ", " : "", QuoteText(variable.GetName()),
                           variable.IsString() ? "VARCHAR" : "DOUBLE");
  }
  return columns;
}

// The engine writes the format, from a CSV file in the temporary folder: memory stays small.
void SaveParquet(DataSet& data, const std::filesystem::path& target, const DataSet::Limits& limits) {
  OutputFile file(target);
  TempNames names;
  const std::filesystem::path csv = names.Make("bayes_save_");
  if (csv.empty()) throw std::system_error(errno, std::generic_category());
  SaveCsv(data, csv);
  Engine::Options options{limits.fThreads, limits.fMemoryBytes / 2, GetTempFolder(), {csv, file.GetPath()}};
  Engine engine(options);
  engine.Run(
      fmt::format("COPY (FROM read_csv({}, auto_detect = false, header = true, delim = ',', quote = '\"', "
                  "escape = '\"', nullstr = '', buffer_size = 4194304, columns = {{{}}})) TO {} "
                  "(FORMAT parquet, USE_TMP_FILE false)",
                  QuoteFile(csv), DeclareColumns(data), QuoteFile(file.GetPath())));
  file.Commit();
}

}  // namespace

void SaveData(DataSet& data, const DataFile& target, const DataSet::Limits& limits) {
  const auto refuse = [&](const std::string& text) {
    throw DataError({target.fName, 0, 0, {}}, "The data can't be saved: " + text +
                                                  " Nothing was written. Check the folder and its space.");
  };
  try {
    if (target.fPath.extension() == ".parquet") {
      SaveParquet(data, target.fPath, limits);
    } else {
      SaveCsv(data, target.fPath);
    }
  } catch (const std::system_error& error) {
    refuse(error.code().message() + ".");
  } catch (const EngineError& error) {
    refuse(MakeReadable(error.what()));
  }
}

}  // namespace BayesHost
