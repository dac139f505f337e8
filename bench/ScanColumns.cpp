// The data engine alone: one whole scan of some columns of a text table, the yardstick for the program that
// reads the same columns and computes with them. The engine settles dialect and types itself and sums each
// column, which is the least it can do with every value.
#include <duckdb.h>

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::string Quote(const std::string& text, char quote) {
  std::string quoted(1, quote);
  for (const char c : text) quoted += c == quote ? std::string(2, c) : std::string(1, c);
  return quoted + quote;
}

std::string MakeQuery(const std::string& file, const std::vector<std::string>& columns) {
  std::string query = "SELECT count(*)";
  for (const std::string& column : columns) query += ", sum(CAST(" + Quote(column, '"') + " AS DOUBLE))";
  return query + " FROM read_csv(" + Quote(file, '\'') + ")";
}

class Database {
 public:
  explicit Database(const std::string& threads) {
    duckdb_config config = nullptr;
    duckdb_create_config(&config);
    bool opened = duckdb_set_config(config, "threads", threads.c_str()) == DuckDBSuccess;
    opened = opened && duckdb_open_ext(nullptr, &fDatabase, config, nullptr) == DuckDBSuccess;
    duckdb_destroy_config(&config);
    if (!opened || duckdb_connect(fDatabase, &fConnection) != DuckDBSuccess)
      throw std::runtime_error("the data engine can't be opened with " + threads + " threads");
  }
  ~Database() {
    duckdb_destroy_result(&fResult);
    duckdb_disconnect(&fConnection);
    duckdb_close(&fDatabase);
  }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Prints the one row of the result.
  void Run(const std::string& query) {
    if (duckdb_query(fConnection, query.c_str(), &fResult) != DuckDBSuccess)
      throw std::runtime_error(duckdb_result_error(&fResult));
    duckdb_data_chunk row = duckdb_fetch_chunk(fResult);
    std::printf("%lld", static_cast<long long>(*GetCell<std::int64_t>(row, 0)));
    for (idx_t i = 1; i < duckdb_column_count(&fResult); ++i) std::printf(" %.6g", *GetCell<double>(row, i));
    std::printf("\n");
    duckdb_destroy_data_chunk(&row);
  }

 private:
  template <class Type>
  static const Type* GetCell(duckdb_data_chunk row, idx_t column) {
    return static_cast<const Type*>(duckdb_vector_get_data(duckdb_data_chunk_get_vector(row, column)));
  }

  duckdb_database fDatabase = nullptr;
  duckdb_connection fConnection = nullptr;
  duckdb_result fResult{};
};

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() < 3) {
    std::fprintf(stderr, "usage: scan-columns FILE THREADS COLUMN...\n");
    return 2;
  }
  try {
    Database(words[1]).Run(MakeQuery(words[0], {words.begin() + 2, words.end()}));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "scan-columns: %s\n", error.what());
    return 1;
  }
}
