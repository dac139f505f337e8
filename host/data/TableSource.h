#pragma once

#include <string>
#include <vector>

#include "host/data/Variable.h"

namespace BayesHost {

// A table that the data engine can read: it knows the table's variables and how to ask the engine for
// columns. One class for each kind of file.
class TableSource {
 public:
  virtual ~TableSource() = default;
  virtual const std::vector<VariableState>& GetVariables() const = 0;
  // What has to happen once before the first query. Throws EngineError.
  virtual void Prepare() {}
  // A query for these columns in the order of the file: numbers as DOUBLE, strings as VARCHAR.
  virtual std::string MakeQuery(const std::vector<int>& columns) const = 0;
  // After the engine refused a query: asks it for longer records from now on. False: it can't take any longer
  // ones. Throws EngineError.
  virtual bool AllowLongerRecords() { return false; }
  // The engine met infinite numbers in these columns. Throws a DataError where the table can tell that they
  // were meant to be finite.
  virtual void CheckInfinite(const std::vector<int>& /*columns*/) const {}
  // Throws a DataError that says in the reader's terms why the engine refused these columns.
  [[noreturn]] virtual void Explain(const std::vector<int>& columns, const std::string& engineText) const = 0;
};

}  // namespace BayesHost
