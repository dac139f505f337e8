#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace BayesHost {

// What the engine says of a query that it can't carry out.
class EngineError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The data engine: SQL over files, a stream of rows back. The only class that knows its programming
// interface. Opening it takes some 20 ms: on request that is done at once, beside whatever comes before the
// first query, else with it.
class Engine {
 public:
  struct Options {
    int fThreads = 1;
    std::size_t fMemoryBytes = std::size_t{1} << 29;
    std::filesystem::path fTempFolder;           // the engine's own files lie in a folder of this one
    std::vector<std::filesystem::path> fvFiles;  // all that queries may read or write
    bool fOpensAhead = false;                    // on a thread of its own
    // Asked again and again, on another thread: true ends the query under way with an EngineError.
    std::function<bool()> fStop = {};
  };

  // The rows of a query in order, some 2,000 at a time: the engine keeps a small number of them in memory,
  // not the whole result. Must not outlive its engine.
  class Stream {
   public:
    struct State;
    explicit Stream(std::unique_ptr<State> state);
    ~Stream();
    Stream(Stream&&) noexcept;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    // To the next rows; false at the end. Throws EngineError.
    bool Next();
    std::size_t CountRows() const;
    // Values of rows [from, from + count) of a DOUBLE column. Missing and non-finite values become the
    // missing value. False: an infinite one was among them.
    bool GetNumbers(std::size_t column, std::size_t from, std::size_t count, double* values) const;
    // The same for a VARCHAR column; a missing string has a null data pointer. The texts are valid until
    // Next.
    void GetStrings(std::size_t column, std::size_t from, std::size_t count, std::string_view* values) const;

   private:
    std::unique_ptr<State> fpState;
  };

  explicit Engine(Options options);
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  // Throws EngineError.
  Stream Query(const std::string& sql);
  // Carries out a query that gives no rows. Throws EngineError.
  void Run(const std::string& sql);
  // Throws EngineError unless this is one query that can be carried out and changes nothing.
  void CheckSelect(const std::string& sql);
  // Name and type of each column of a relation, such as read_parquet('f').
  struct Column {
    std::string fName;
    std::string fType;
  };
  std::vector<Column> Describe(const std::string& relation);
  // Its errors may come of this.
  bool IsStopped() const { return fOptions.fStop && fOptions.fStop(); }

 private:
  struct State;
  State& GetState();
  std::unique_ptr<State> Open() const;
  void Lock(const State& state) const;
  void StartWatch(State& state) const;

  Options fOptions;
  std::future<std::unique_ptr<State>> fOpening;
  std::unique_ptr<State> fpState;
};

}  // namespace BayesHost
