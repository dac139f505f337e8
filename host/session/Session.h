// What one run shares: its options, the active data set, the command under way and the document it writes.
//
// The module's host objects carry no pointer to the run; they find it through Session::Current(), which the
// program sets before it calls an entry point.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/Visibility.h"

namespace BayesHost {

class DataSet;        // host/data
class CommandOutput;  // host/output: the document of one command
struct ParserRun;     // host/parser: what the parser remembers of the command under way

enum class ParserMode {
  Run,      // parse and go on
  Check,    // parse, read, then stop before any case is read
  Describe  // take the grammar and stop
};

// What the report makes of a chart. Making its document takes as long as an analysis of a thousand cases,
// drawing it three times that: with many splits it is all of a run's time and memory.
enum class ChartUse { Title, Document, Drawing };

struct RunOptions {
  unsigned long fSeed = 0;  // seeds the source of random seeds; 0: taken from the machine's entropy
  int fThreads = 0;         // 0: all cores
  std::size_t fMemoryBytes = std::size_t{1} << 30;
  bool fProgress = false;  // a progress line on standard error
  bool fDebug = false;     // the debug channel on standard error
  ParserMode fParserMode = ParserMode::Run;
  std::string fVersion;  // of the program, for files that name who wrote them
  ChartUse fChartUse = ChartUse::Drawing;
  std::string fChartStyle;  // the file of the chart colours; empty: the one of share/

  bool Wants(ChartUse use) const { return fChartUse >= use; }
};

// A command and its place in the file it came from.
struct CommandText {
  std::string fFile;    // as the user named it; empty for a command from the command line
  std::string fSource;  // the whole file
  std::size_t fBegin = 0;
  std::size_t fEnd = 0;  // one past the terminating period

  std::string GetText() const { return fSource.substr(fBegin, fEnd - fBegin); }
};

struct SourcePlace {
  int fLine = 0;    // 1-based, in the file
  int fColumn = 0;  // 1-based, in characters
  std::string fLineText;
};

// Place of a byte offset that is relative to the command's beginning.
BAYES_PLATFORM SourcePlace FindPlace(const CommandText& command, std::size_t position);

// A file that the command names: paths are relative to the folder of the command's file.
BAYES_PLATFORM std::filesystem::path ResolvePath(const CommandText& command, const std::string& name);

class BAYES_PLATFORM Session {
 public:
  explicit Session(const RunOptions& options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // The session in use on this thread; there must be one.
  static Session& Current();

  // Makes a session the current one of this thread for as long as it lives.
  class BAYES_PLATFORM Use {
   public:
    explicit Use(Session& session);
    ~Use();
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    Session* fpPrevious;
  };

  const RunOptions& GetOptions() const { return fOptions; }

  // The active data set; null before the first DATA statement.
  DataSet* GetData() const { return fpData.get(); }
  void SetData(std::shared_ptr<DataSet> data) { fpData = std::move(data); }
  // For a DATA statement, which may fail before it has others.
  void DropData();
  // The message for whoever needs data when there are none.
  const char* GetNoDataKey() const;

  // Starts a command: what the module does next belongs to it.
  void BeginCommand(CommandText command, std::shared_ptr<CommandOutput> output);
  const CommandText& GetCommand() const { return fCommand; }
  CommandOutput& GetOutput() const { return *fpOutput; }

  // What the parser remembers of the current command; the parser makes it when it first needs it.
  const std::shared_ptr<ParserRun>& GetParserRun() const { return fpParserRun; }
  void SetParserRun(std::shared_ptr<ParserRun> run) { fpParserRun = std::move(run); }

  // Texts of files that the run reads again and again, by path.
  std::map<std::string, std::string>& GetFileTexts() { return fFileTexts; }

  // The seed of the run: the option, or what entropy gave in its place. Never 0.
  unsigned long GetSeed() const { return fSeed; }
  // Uniform on [0, 1), from one stream for the whole run.
  double DrawUniform();
  // Draws so far: what was computed between two equal counts doesn't depend on the seed.
  std::uint64_t CountDraws() const { return fDraws; }

  // Ends the procedure at its next question; set by host services whose error leaves nothing to go on with.
  void SetFatal() { fFatal = true; }
  bool IsFatal() const { return fFatal || IsInterrupted(); }

  // What went wrong in a service that can't show it at once; ends the procedure. Shown when the run comes to
  // its end.
  void StoreError(std::string text) {
    fvStoredErrors.push_back(std::move(text));
    SetFatal();
  }
  std::vector<std::string> TakeStoredErrors() { return std::exchange(fvStoredErrors, {}); }

  // The user's wish to stop; may be set from any thread or a signal handler.
  void Interrupt() { fInterrupted.store(true, std::memory_order_relaxed); }
  bool IsInterrupted() const { return fInterrupted.load(std::memory_order_relaxed); }

 private:
  RunOptions fOptions;
  std::shared_ptr<DataSet> fpData;
  bool fHadDataStatement = false;
  CommandText fCommand;
  std::shared_ptr<CommandOutput> fpOutput;
  std::shared_ptr<ParserRun> fpParserRun;
  std::map<std::string, std::string> fFileTexts;
  unsigned long fSeed;
  std::mt19937_64 fSeedSource;
  std::vector<std::string> fvStoredErrors;
  std::uint64_t fDraws = 0;
  bool fFatal = false;
  std::atomic<bool> fInterrupted{false};
};

}  // namespace BayesHost
