// What the data engine needs alone for the work that a run begins with, as a process of its own:
//
//   engine_baseline THREADS shortest
//   engine_baseline THREADS stream SOURCE COLUMN...   a table of the columns, streamed back once
//   engine_baseline THREADS query SOURCE COLUMN...    count, avg and stddev of each column
//
// SOURCE is SQL, such as read_parquet('f').
#include <duckdb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void Check(duckdb_state state, const char* step) {
  if (state != DuckDBSuccess) throw std::runtime_error(step);
}

// Sums what comes, so that every value is touched.
double Stream(duckdb_connection connection, const std::string& sql) {
  duckdb_prepared_statement statement = nullptr;
  duckdb_pending_result pending = nullptr;
  duckdb_result result;
  Check(duckdb_prepare(connection, sql.c_str(), &statement), sql.c_str());
  Check(duckdb_pending_prepared_streaming(statement, &pending), sql.c_str());
  Check(duckdb_execute_pending(pending, &result), sql.c_str());
  double sum = 0;
  while (duckdb_data_chunk chunk = duckdb_fetch_chunk(result)) {
    const idx_t rows = duckdb_data_chunk_get_size(chunk);
    for (idx_t column = 0; column < duckdb_data_chunk_get_column_count(chunk); ++column) {
      const auto* data =
          static_cast<double*>(duckdb_vector_get_data(duckdb_data_chunk_get_vector(chunk, column)));
      for (idx_t i = 0; i < rows; ++i) sum += data[i];
    }
    duckdb_destroy_data_chunk(&chunk);
  }
  duckdb_destroy_result(&result);
  duckdb_destroy_pending(&pending);
  duckdb_destroy_prepare(&statement);
  return sum;
}

std::string Join(const std::vector<std::string>& columns, const std::string& before,
                 const std::string& after) {
  std::string text;
  for (const std::string& column : columns) text += (text.empty() ? "" : ", ") + before + column + after;
  return text;
}

double Work(duckdb_connection connection, const std::string& kind, const std::string& source,
            const std::vector<std::string>& columns) {
  if (kind == "shortest") return Stream(connection, "SELECT 1.0::DOUBLE");
  if (kind == "query") {
    return Stream(connection, "SELECT count(*)::DOUBLE, " + Join(columns, "avg(", ")") + ", " +
                                  Join(columns, "stddev(", ")") + " FROM " + source);
  }
  const std::string table =
      "CREATE TABLE kept AS SELECT " + Join(columns, "", "::DOUBLE AS c") + " FROM " + source;
  Check(duckdb_query(connection, table.c_str(), nullptr), table.c_str());
  return Stream(connection, "FROM kept");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  try {
    duckdb_config config = nullptr;
    Check(duckdb_create_config(&config), "config");
    Check(duckdb_set_config(config, "threads", argv[1]), "threads");
    duckdb_database database = nullptr;
    duckdb_connection connection = nullptr;
    Check(duckdb_open_ext(nullptr, &database, config, nullptr), "open");
    duckdb_destroy_config(&config);
    Check(duckdb_connect(database, &connection), "connect");
    const std::vector<std::string> columns(argv + std::min(argc, 4), argv + argc);
    std::printf("%.17g\n", Work(connection, argv[2], argc > 3 ? argv[3] : "", columns));
    duckdb_disconnect(&connection);
    duckdb_close(&database);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
