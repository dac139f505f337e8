#include "host/data/OpenTable.h"

#include "host/data/CsvFile.h"
#include "host/data/Dictionary.h"
#include "host/data/EngineTable.h"
#include "host/data/SqlTable.h"

namespace BayesHost {

namespace {

std::unique_ptr<TableSource> OpenFile(const DataFile& file, Engine& engine, const Dictionary* dictionary) {
  if (EngineTable::IsParquet(file))
    return std::make_unique<EngineTable>(EngineTable::OpenParquet(file, engine, dictionary));
  if (EngineTable::IsJson(file))
    return std::make_unique<EngineTable>(EngineTable::OpenJson(file, engine, dictionary));
  return std::make_unique<CsvFile>(file, dictionary);
}

}  // namespace

std::unique_ptr<TableSource> OpenTable(const DataFile& file, const DataOptions& options, Engine& engine) {
  CheckFile(file);
  const std::optional<Dictionary> dictionary =
      options.fDictionary ? Dictionary(*options.fDictionary) : Dictionary::FindBeside(file);
  auto table = OpenFile(file, engine, dictionary ? &*dictionary : nullptr);
  if (options.fSql.empty()) return table;
  return std::make_unique<SqlTable>(file, std::move(table), options.fSql, engine);
}

}  // namespace BayesHost
