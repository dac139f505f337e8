#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/data/DataFile.h"
#include "host/data/Engine.h"
#include "host/data/TableSource.h"

namespace BayesHost {

// The result of a query over another table, which it calls `data`. The query is carried out once and its rows
// are kept, so that columns read at different times belong to the same rows.
class SqlTable : public TableSource {
 public:
  // Throws DataError when this is no query over the table. The engine must outlive the table, and must have
  // one thread: with more the order of a query's rows, and the last digits of its sums, change from run to
  // run.
  SqlTable(DataFile file, std::unique_ptr<TableSource> base, std::string sql, Engine& engine);

  const std::vector<VariableState>& GetVariables() const override { return fvVariables; }
  void Prepare() override;
  std::string MakeQuery(const std::vector<int>& columns) const override;
  bool AllowLongerRecords() override;
  void CheckInfinite(const std::vector<int>& columns) const override;
  [[noreturn]] void Explain(const std::vector<int>& columns, const std::string& engineText) const override;

 private:
  void RequireDistinctNames() const;
  std::string MakeView() const;
  std::vector<int> ListColumns() const;
  void Inherit(VariableState& variable) const;

  DataFile fFile;
  std::unique_ptr<TableSource> fpBase;
  std::string fSql;
  Engine& fEngine;
  bool fPrepared = false;
  std::vector<std::string> fvExpressions;
  std::vector<VariableState> fvVariables;
};

}  // namespace BayesHost
