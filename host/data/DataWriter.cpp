#include "host/data/DataWriter.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include <algorithm>
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
#include "platform/host/Run.h"

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

// Threads turn stretches of the cases into text side by side; the stretches are written in their order.
class CsvWriter {
 public:
  CsvWriter(DataSet& data, std::ostream& out, const DataSet::Limits& limits)
      : fData(data),
        fOut(out),
        fLimits(limits),
        fvStretches(static_cast<std::size_t>(std::max(limits.fThreads, 1))) {
    fvAll.resize(static_cast<std::size_t>(data.CountVariables()));
    std::iota(fvAll.begin(), fvAll.end(), 0);
  }

  // False when the user wants to stop.
  bool Write() {
    fData.Require(fvAll);
    if (!fData.Load()) return false;
    WriteNames();
    ACAThreadFactory threads;
    const int count = static_cast<int>(fvStretches.size());
    for (std::uint64_t begin = 0; fOut && begin < fData.CountCases();
         begin += fvStretches.size() * kStretchCases) {
      if (fLimits.IsStopped()) return false;
      threads.ForEach(count, count, [&](int i) {
        const auto stretch = static_cast<std::size_t>(i);
        FormatCases(begin + stretch * kStretchCases, fvStretches[stretch]);
      });
      for (const std::string& stretch : fvStretches) fOut << stretch;
    }
    return true;
  }

 private:
  void WriteNames() {
    std::string line;
    for (const int variable : fvAll) {
      if (variable > 0) line += ',';
      AppendText(fData.GetVariable(variable).GetName(), line);
    }
    fOut << line << '\n';
  }

  // The stretch that begins at this case, as far as there are cases.
  void FormatCases(std::uint64_t begin, std::string& lines) const {
    lines.clear();
    const std::uint64_t end = std::min(begin + kStretchCases, fData.CountCases());
    if (begin >= end) return;
    CaseCursor cursor = fData.MakeFileCursor(fvAll);
    cursor.SetRange(begin, end);
    while (cursor.Next()) AppendCase(cursor.GetValues(), lines);
  }

  void AppendCase(const double* values, std::string& lines) const {
    for (const int variable : fvAll) {
      if (variable > 0) lines += ',';
      const double value = values[variable];
      if (value == MCCommon_850::MCMV::Missing()) continue;
      if (fData.GetVariable(variable).IsString()) {
        AppendText(fData.GetStrings(variable).Decode(value), lines);
      } else {
        AppendNumber(value, lines);
      }
    }
    lines += '\n';
  }

  static constexpr std::uint64_t kStretchCases = 16384;

  DataSet& fData;
  std::ostream& fOut;
  const DataSet::Limits& fLimits;
  std::vector<int> fvAll;
  std::vector<std::string> fvStretches;
};

// False when the user wants to stop: there is no file then.
bool SaveCsv(DataSet& data, const std::filesystem::path& target, const DataSet::Limits& limits) {
  OutputFile file(target);
  if (!CsvWriter(data, file.Stream(), limits).Write()) return false;
  file.Commit();
  return true;
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
  if (!SaveCsv(data, csv, limits)) return;
  Engine engine({.fThreads = limits.fThreads,
                 .fMemoryBytes = limits.fMemoryBytes / 2,
                 .fTempFolder = GetTempFolder(),
                 .fvFiles = {csv, file.GetPath()},
                 .fStop = limits.fStop});
  engine.Run(
      fmt::format("COPY (FROM read_csv({}, auto_detect = false, hive_partitioning = false, header = true, "
                  "delim = ',', quote = '\"', "
                  "escape = '\"', nullstr = '', buffer_size = 4194304, columns = {{{}}})) TO {} "
                  "(FORMAT parquet, USE_TMP_FILE false)",
                  QuoteSource(csv), DeclareColumns(data), QuoteFile(file.GetPath())));
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
      SaveCsv(data, target.fPath, limits);
    }
  } catch (const std::system_error& error) {
    refuse(error.code().message() + ".");
  } catch (const EngineError& error) {
    if (limits.IsStopped()) return;
    refuse(MakeReadable(error.what()));
  }
}

}  // namespace BayesHost
