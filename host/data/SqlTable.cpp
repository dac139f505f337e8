#include "host/data/SqlTable.h"

#include <fmt/format.h>

#include <map>
#include <numeric>

#include "host/data/DataError.h"
#include "host/data/EngineTable.h"
#include "host/data/SqlText.h"
#include "host/parser/Keywords.h"

namespace BayesHost {

SqlTable::SqlTable(DataFile file, std::unique_ptr<TableSource> base, std::string sql, Engine& engine)
    : fFile(std::move(file)), fpBase(std::move(base)), fSql(std::move(sql)), fEngine(engine) {
  fSql.resize(fSql.find_last_not_of("; \n\t") + 1);
  RequireDistinctNames();
  try {
    fEngine.Run(MakeView());
    fEngine.CheckSelect(fSql);
    // The query may end in a comment.
    for (const Engine::Column& column : fEngine.Describe("(" + fSql + "\n)")) {
      EngineVariable variable(column);
      Inherit(variable.fVariable);
      fvVariables.push_back(std::move(variable.fVariable));
      fvExpressions.push_back(std::move(variable.fExpression));
    }
  } catch (const EngineError& error) {
    if (fEngine.IsStopped()) throw;
    Explain({}, error.what());
  }
}

// The engine takes names that differ only in capitals for the same, and would read one variable for another.
void SqlTable::RequireDistinctNames() const {
  std::map<std::string, std::string> known;
  for (const VariableState& variable : fpBase->GetVariables()) {
    const auto [twin, isNew] = known.try_emplace(ToUpper(variable.fName), variable.fName);
    if (isNew) continue;
    throw DataError({fFile.fName, 0, 0, {}},
                    fmt::format("{} and {} are the same name in SQL, where capitals don't count. Rename one "
                                "of them in the file, or do without the query.",
                                twin->second, variable.fName));
  }
}

std::string SqlTable::MakeView() const {
  const std::vector<VariableState>& variables = fpBase->GetVariables();
  std::vector<std::string> names;
  names.reserve(variables.size());
  for (const VariableState& variable : variables) names.push_back(QuoteName(variable.fName));
  return fmt::format("CREATE OR REPLACE TEMP VIEW data({}) AS {}", fmt::join(names, ", "),
                     fpBase->MakeQuery(ListColumns()));
}

// Those of the file.
std::vector<int> SqlTable::ListColumns() const {
  std::vector<int> all(fpBase->GetVariables().size());
  std::iota(all.begin(), all.end(), 0);
  return all;
}

// A column that keeps its name and kind keeps its labels, format and user-missing values.
void SqlTable::Inherit(VariableState& variable) const {
  for (const VariableState& original : fpBase->GetVariables()) {
    if (original.fName == variable.fName && original.fIsString == variable.fIsString) variable = original;
  }
}

void SqlTable::Prepare() {
  if (fPrepared) return;
  std::vector<std::string> columns;
  for (std::size_t i = 0; i < fvExpressions.size(); ++i)
    columns.push_back(fmt::format("{} AS c{}", fvExpressions[i], i));
  fEngine.Run(
      fmt::format("CREATE TEMP TABLE result AS SELECT {} FROM ({}\n)", fmt::join(columns, ", "), fSql));
  fPrepared = true;
}

std::string SqlTable::MakeQuery(const std::vector<int>& columns) const {
  std::vector<std::string> wanted;
  wanted.reserve(columns.size());
  for (const int column : columns) wanted.push_back(fmt::format("c{}", column));
  return fmt::format("SELECT {} FROM result", fmt::join(wanted, ", "));
}

bool SqlTable::AllowLongerRecords() {
  if (!fpBase->AllowLongerRecords()) return false;
  fEngine.Run(MakeView());
  return true;
}

// In the file; what a query itself makes infinite is missing.
void SqlTable::CheckInfinite(const std::vector<int>& /*columns*/) const {
  fpBase->CheckInfinite(ListColumns());
}

// An error of the file itself is told by the table that knows the file.
void SqlTable::Explain(const std::vector<int>& /*columns*/, const std::string& engineText) const {
  if (engineText.find("CSV Error on Line") != std::string::npos) fpBase->Explain(ListColumns(), engineText);
  std::vector<std::string> names;
  for (const VariableState& variable : fpBase->GetVariables()) names.push_back(variable.fName);
  throw DataError(
      {fFile.fName, 0, 0, {}},
      fmt::format("The SQL query fails: {} Correct it: the only table is data, with the columns {}.",
                  MakeReadable(engineText), fmt::join(names, ", ")));
}

}  // namespace BayesHost
