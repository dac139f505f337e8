#pragma once

#include <string>
#include <vector>

#include "host/data/DataFile.h"
#include "host/data/Dictionary.h"
#include "host/data/Engine.h"
#include "host/data/TableSource.h"

namespace BayesHost {

// A table whose columns have types that the engine knows: a Parquet or JSON file. Numbers of any kind become
// doubles, BOOLEAN 0 and 1, everything else (dates, too) the text that the engine shows for it.
class EngineTable : public TableSource {
 public:
  // Parquet by the file's first bytes, whatever its name.
  static bool IsParquet(const DataFile& file);
  // JSON by the name's ending: .json, .ndjson or .jsonl, or one of these and .gz.
  static bool IsJson(const DataFile& file);

  // The dictionary is null for none. Throws DataError for a file that the engine can't read.
  static EngineTable OpenParquet(DataFile file, Engine& engine, const Dictionary* dictionary);
  static EngineTable OpenJson(DataFile file, Engine& engine, const Dictionary* dictionary);

  const std::vector<VariableState>& GetVariables() const override { return fvVariables; }
  std::string MakeQuery(const std::vector<int>& columns) const override;
  void CheckInfinite(const std::vector<int>& columns) const override;
  [[noreturn]] void Explain(const std::vector<int>& columns, const std::string& engineText) const override;

 private:
  bool HasInfinite(const std::string& expression) const;
  EngineTable(DataFile file, std::string relation, Engine& engine, const Dictionary* dictionary);

  DataFile fFile;
  std::string fRelation;
  Engine& fEngine;
  bool fIsFinite = false;                  // infinite numbers are none of the file's own, but were too large
  std::vector<std::string> fvExpressions;  // of each column
  std::vector<VariableState> fvVariables;
};

// The variable that stands for a column of the engine, and the SQL expression for its values: DOUBLE or
// VARCHAR.
struct EngineVariable {
  explicit EngineVariable(const Engine::Column& column);
  VariableState fVariable;
  std::string fExpression;
};

}  // namespace BayesHost
