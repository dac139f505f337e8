#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/data/DataFile.h"
#include "host/data/Engine.h"
#include "host/data/TableSource.h"

namespace BayesHost {

// What else is said of a data file.
struct DataOptions {
  std::optional<DataFile> fDictionary;  // none: the one beside the data file, if there is one
  std::string fSql;                     // a query over the table `data`; empty: the table itself
};

// The table in a file of any kind. Throws DataError. The engine must outlive it.
std::unique_ptr<TableSource> OpenTable(const DataFile& file, const DataOptions& options, Engine& engine);

}  // namespace BayesHost
