#include "host/data/Engine.h"

#include <duckdb.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <random>
#include <stop_token>
#include <thread>
#include <utility>

#include "host/data/SqlText.h"
#include "platform/component/Common.h"

namespace BayesHost {

namespace {

constexpr std::size_t kLeastBufferBytes = std::size_t{1} << 20;
constexpr std::size_t kMostBufferBytes = std::size_t{16} << 20;

std::string TakeText(const char* text) {
  return text == nullptr ? "unknown error" : text;
}

bool IsValid(const std::uint64_t* validity, std::size_t row) {
  return validity == nullptr || ((validity[row / 64] >> (row % 64)) & 1U) != 0;
}

// A zero has no sign: -0 and 0 are the same value of a variable, and one label.
double Unsigned(double value) {
  return value + 0.0;
}

// By 0 times each: not 0 where one is infinite or no number. Lanes side by side, as each addition by itself
// would wait for the one before.
bool AreFinite(const double* values, std::size_t count) {
  std::array<double, 8> lanes{};
  const std::size_t whole = count - count % lanes.size();
  for (std::size_t i = 0; i < whole; i += lanes.size()) {
    for (std::size_t lane = 0; lane < lanes.size(); ++lane) lanes[lane] += 0 * values[i + lane];
  }
  return std::all_of(lanes.begin(), lanes.end(), [](double lane) { return lane == 0; }) &&
         std::all_of(values + whole, values + count, [](double value) { return std::isfinite(value); });
}

// The engine makes the folder when it first needs it and removes it when it is closed. Two engines must not
// share one: the names of their files are the same.
std::string NameFolder(const std::filesystem::path& parent) {
  std::random_device entropy;
  return (parent / fmt::format("bayes_{:08x}{:08x}", entropy(), entropy())).string();
}

// A sort or a join asks nobody before it is done: what ends it is a call from beside.
void Watch(const std::stop_token& end, duckdb_connection connection, const std::function<bool()>& stop) {
  constexpr std::chrono::milliseconds kPause{50};
  std::mutex mutex;
  std::condition_variable_any pause;
  std::unique_lock<std::mutex> lock(mutex);
  while (!end.stop_requested()) {
    if (stop()) duckdb_interrupt(connection);
    pause.wait_for(lock, end, kPause, [] { return false; });
  }
}

}  // namespace

struct Engine::State {
  ~State() {
    fWatch = {};
    duckdb_disconnect(&fConnection);
    duckdb_close(&fDatabase);
  }
  duckdb_database fDatabase = nullptr;
  duckdb_connection fConnection = nullptr;
  std::jthread fWatch;
};

Engine::Engine(Options options) : fOptions(std::move(options)) {
  if (!fOptions.fOpensAhead) return;
  try {
    fOpening = std::async(std::launch::async, [this] { return Open(); });
  } catch (const std::system_error&) {
    // No thread is to be had: it is opened when it is needed.
  }
}

Engine::~Engine() = default;

Engine::State& Engine::GetState() {
  if (!fpState) fpState = fOpening.valid() ? fOpening.get() : Open();
  return *fpState;
}

// The engine neither reaches for the network nor writes outside the temporary folder, and nothing that runs
// in it later can change that.
std::unique_ptr<Engine::State> Engine::Open() const {
  const std::array<std::pair<const char*, std::string>, 5> settings = {{
      {"autoinstall_known_extensions", "false"},
      {"autoload_known_extensions", "false"},
      {"temp_directory", NameFolder(fOptions.fTempFolder)},
      {"memory_limit", std::to_string(fOptions.fMemoryBytes / 1000) + "kB"},
      {"threads", std::to_string(fOptions.fThreads)},
  }};
  duckdb_config config = nullptr;
  duckdb_create_config(&config);
  for (const auto& [name, value] : settings) duckdb_set_config(config, name, value.c_str());
  auto state = std::make_unique<State>();
  char* error = nullptr;
  const bool opened = duckdb_open_ext(nullptr, &state->fDatabase, config, &error) == DuckDBSuccess;
  duckdb_destroy_config(&config);
  const std::string text = opened ? std::string() : TakeText(error);
  duckdb_free(error);
  if (!opened) throw EngineError(text);
  if (duckdb_connect(state->fDatabase, &state->fConnection) != DuckDBSuccess)
    throw EngineError("no connection");
  Lock(*state);
  StartWatch(*state);
  return state;
}

void Engine::StartWatch(State& state) const {
  if (!fOptions.fStop) return;
  try {
    state.fWatch = std::jthread([stop = fOptions.fStop, connection = state.fConnection](
                                    const std::stop_token& end) { Watch(end, connection, stop); });
  } catch (const std::system_error&) {
    // No thread is to be had: the stop is heeded between the rows.
  }
}

// The streaming buffer belongs to the connection: among the engine's own settings it has no effect. While its
// default of 1 MB is full all threads but one wait; beyond 16 MB new memory costs more than that. The files
// come before the access: once that is off the list can't grow.
void Engine::Lock(const State& state) const {
  std::string files;
  for (const auto& file : fOptions.fvFiles) {
    files += (files.empty() ? "" : ", ") + QuoteFile(file) + ", " + QuoteSource(file);
  }
  const std::size_t buffer = std::clamp(fOptions.fMemoryBytes / 16, kLeastBufferBytes, kMostBufferBytes);
  for (const std::string& setting :
       {"streaming_buffer_size = '" + std::to_string(buffer / 1000) + "kB'",
        "allowed_paths = [" + files + "]", std::string("enable_external_access = false"),
        std::string("lock_configuration = true")}) {
    if (duckdb_query(state.fConnection, ("SET " + setting).c_str(), nullptr) != DuckDBSuccess)
      throw EngineError("The setting " + setting + " is refused.");
  }
}

struct Engine::Stream::State {
  ~State() {
    duckdb_destroy_data_chunk(&fChunk);
    duckdb_destroy_result(&fResult);
    duckdb_destroy_pending(&fPending);
    duckdb_destroy_prepare(&fStatement);
  }
  duckdb_prepared_statement fStatement = nullptr;
  duckdb_pending_result fPending = nullptr;
  duckdb_result fResult{};
  duckdb_data_chunk fChunk = nullptr;
};

// The streaming calls: a result asked for in any other way is first made whole in memory.
Engine::Stream Engine::Query(const std::string& sql) {
  auto state = std::make_unique<Stream::State>();
  if (duckdb_prepare(GetState().fConnection, sql.c_str(), &state->fStatement) != DuckDBSuccess) {
    throw EngineError(TakeText(duckdb_prepare_error(state->fStatement)));
  }
  if (duckdb_pending_prepared_streaming(state->fStatement, &state->fPending) != DuckDBSuccess) {
    throw EngineError(TakeText(duckdb_pending_error(state->fPending)));
  }
  if (duckdb_execute_pending(state->fPending, &state->fResult) != DuckDBSuccess) {
    throw EngineError(TakeText(duckdb_result_error(&state->fResult)));
  }
  return Stream(std::move(state));
}

void Engine::Run(const std::string& sql) {
  for (Stream stream = Query(sql); stream.Next();) {
  }
}

// A preparation takes one statement only, and names the places of its errors in the caller's own text.
void Engine::CheckSelect(const std::string& sql) {
  Stream::State state;
  if (duckdb_prepare(GetState().fConnection, sql.c_str(), &state.fStatement) != DuckDBSuccess)
    throw EngineError(TakeText(duckdb_prepare_error(state.fStatement)));
  if (duckdb_prepared_statement_type(state.fStatement) != DUCKDB_STATEMENT_TYPE_SELECT)
    throw EngineError("This is not a query: it doesn't begin with SELECT, FROM or WITH.");
}

std::vector<Engine::Column> Engine::Describe(const std::string& relation) {
  std::vector<Column> columns;
  std::vector<std::string_view> names;
  std::vector<std::string_view> types;
  for (Stream stream = Query("SELECT column_name, column_type FROM (DESCRIBE FROM " + relation + ")");
       stream.Next();) {
    names.resize(stream.CountRows());
    types.resize(stream.CountRows());
    stream.GetStrings(0, 0, names.size(), names.data());
    stream.GetStrings(1, 0, types.size(), types.data());
    for (std::size_t i = 0; i < names.size(); ++i)
      columns.push_back({std::string(names[i]), std::string(types[i])});
  }
  return columns;
}

Engine::Stream::Stream(std::unique_ptr<State> state) : fpState(std::move(state)) {}
Engine::Stream::~Stream() = default;
Engine::Stream::Stream(Stream&&) noexcept = default;

bool Engine::Stream::Next() {
  duckdb_destroy_data_chunk(&fpState->fChunk);
  fpState->fChunk = duckdb_fetch_chunk(fpState->fResult);
  if (fpState->fChunk != nullptr) return true;
  // An error in the middle of the rows looks like their end.
  const char* error = duckdb_result_error(&fpState->fResult);
  if (error != nullptr && *error != '\0') throw EngineError(error);
  return false;
}

std::size_t Engine::Stream::CountRows() const {
  return duckdb_data_chunk_get_size(fpState->fChunk);
}

bool Engine::Stream::GetNumbers(std::size_t column, std::size_t from, std::size_t count,
                                double* values) const {
  duckdb_vector vector = duckdb_data_chunk_get_vector(fpState->fChunk, column);
  const auto* data = static_cast<const double*>(duckdb_vector_get_data(vector)) + from;
  const std::uint64_t* validity = duckdb_vector_get_validity(vector);
  if (validity == nullptr && AreFinite(data, count)) {
    std::transform(data, data + count, values, Unsigned);
    return true;
  }
  bool isInfinite = false;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isValid = validity == nullptr || IsValid(validity, from + i);
    isInfinite |= isValid && std::isinf(data[i]);
    values[i] = isValid && std::isfinite(data[i]) ? Unsigned(data[i]) : MCCommon_850::MCMV::Missing();
  }
  return !isInfinite;
}

void Engine::Stream::GetStrings(std::size_t column, std::size_t from, std::size_t count,
                                std::string_view* values) const {
  duckdb_vector vector = duckdb_data_chunk_get_vector(fpState->fChunk, column);
  auto* data = static_cast<duckdb_string_t*>(duckdb_vector_get_data(vector)) + from;
  const std::uint64_t* validity = duckdb_vector_get_validity(vector);
  for (std::size_t i = 0; i < count; ++i) {
    values[i] = {};
    if (IsValid(validity, from + i))
      values[i] = {duckdb_string_t_data(&data[i]), duckdb_string_t_length(data[i])};
  }
}

}  // namespace BayesHost
