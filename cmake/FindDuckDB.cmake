# The data engine: a system-wide installation first, else the copy that tools/setup unpacks into .deps/duckdb.
find_path(DuckDB_INCLUDE_DIR duckdb.h PATHS ${CMAKE_SOURCE_DIR}/.deps/duckdb)
find_library(DuckDB_LIBRARY duckdb PATHS ${CMAKE_SOURCE_DIR}/.deps/duckdb)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(DuckDB REQUIRED_VARS DuckDB_LIBRARY DuckDB_INCLUDE_DIR)
if(DuckDB_FOUND AND NOT TARGET DuckDB::DuckDB)
  add_library(DuckDB::DuckDB SHARED IMPORTED)
  set_target_properties(DuckDB::DuckDB PROPERTIES IMPORTED_LOCATION ${DuckDB_LIBRARY}
                                                  INTERFACE_INCLUDE_DIRECTORIES ${DuckDB_INCLUDE_DIR})
endif()
