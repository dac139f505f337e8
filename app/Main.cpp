// The program `bayes`.
#include <sys/ioctl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <sstream>
#include <string>

#include "app/ChartFiles.h"
#include "app/CommandLine.h"
#include "app/Help.h"
#include "app/Runner.h"
#include "app/Version.h"
#include "host/data/DataError.h"
#include "host/files/OutputFile.h"
#include "host/output/CsvReport.h"
#include "host/output/HtmlReport.h"
#include "host/output/JsonReport.h"
#include "host/output/MarkdownReport.h"
#include "host/output/TextReport.h"
#include "host/session/Session.h"

namespace {

using namespace BayesApp;

constexpr std::size_t kDefaultMemory = std::size_t{1} << 30U;
constexpr int kDefaultWidth = 100;

std::atomic<BayesHost::Session*> interruptedSession = nullptr;
std::atomic<std::int64_t> interruptTime = 0;  // of the first signal, in ms

std::int64_t GetMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

// Asked again, the program ends at once. What comes on the heels of a signal is the same request: it goes to
// the program, and to the group of processes that it belongs to.
void OnInterrupt(int signal) {
  constexpr std::int64_t kSameRequest = 500;
  BayesHost::Session* const session = interruptedSession;
  if (session == nullptr) return;
  if (!session->IsInterrupted()) {
    interruptTime = GetMilliseconds();
    session->Interrupt();
  } else if (GetMilliseconds() - interruptTime > kSameRequest) {
    std::_Exit(128 + signal);
  }
}

// Handles the signals that ask a program to end, longer than the session lives, which has files to remove;
// one that the caller has it ignore stays ignored.
class InterruptHandling {
 public:
  InterruptHandling() { Set(OnInterrupt); }
  ~InterruptHandling() { Set(SIG_DFL); }
  InterruptHandling(const InterruptHandling&) = delete;
  InterruptHandling& operator=(const InterruptHandling&) = delete;

 private:
  static void Set(void (*handler)(int)) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      if (std::signal(signal, handler) == SIG_IGN) std::signal(signal, SIG_IGN);
    }
  }
};

// The session that they interrupt.
class InterruptTarget {
 public:
  explicit InterruptTarget(BayesHost::Session& session) { interruptedSession = &session; }
  ~InterruptTarget() { interruptedSession = nullptr; }
  InterruptTarget(const InterruptTarget&) = delete;
  InterruptTarget& operator=(const InterruptTarget&) = delete;
};

BayesHost::ChartUse FindChartUse(const Request& request) {
  if (!request.fChartFolder.empty() || request.fFormat == Format::Html) return BayesHost::ChartUse::Drawing;
  return request.fFormat == Format::Json ? BayesHost::ChartUse::Document : BayesHost::ChartUse::Title;
}

BayesHost::RunOptions MakeOptions(const Request& request) {
  BayesHost::RunOptions options;
  options.fSeed = request.fSeed;
  options.fThreads = request.fThreads;
  options.fMemoryBytes = request.fMemoryBytes == 0 ? kDefaultMemory : request.fMemoryBytes;
  options.fProgress = !request.fQuiet;
  options.fVersion = kVersion;
  options.fChartUse = FindChartUse(request);
  options.fChartStyle = request.fChartStyle;
  options.fParserMode =
      request.fAction == Action::Check ? BayesHost::ParserMode::Check : BayesHost::ParserMode::Run;
  return options;
}

bool IsUnicodeLocale() {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    const std::string text = value;
    return text.find("UTF-8") != std::string::npos || text.find("utf8") != std::string::npos;
  }
  return false;
}

// https://no-color.org
bool WantsColour(int stream) {
  const char* refused = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  const bool isDumb = terminal != nullptr && std::string(terminal) == "dumb";
  return isatty(stream) != 0 && !isDumb && (refused == nullptr || *refused == '\0');
}

// On a terminal the tables fit it; elsewhere they get a width that suits a page, and messages that standard
// error won't keep beside them.
BayesHost::TextReport::Options MakeTextOptions(bool toFile, int threads) {
  BayesHost::TextReport::Options options;
  winsize size{};
  const bool terminal = !toFile && isatty(STDOUT_FILENO) != 0;
  const bool known = terminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  options.fWidth = known ? size.ws_col : kDefaultWidth;
  options.fUnicode = toFile || IsUnicodeLocale();
  options.fColour = !toFile && WantsColour(STDOUT_FILENO);
  options.fMessages = toFile;
  options.fThreads = threads;
  return options;
}

void WriteReport(const Request& request, const BayesHost::Report& report, std::ostream& out) {
  switch (request.fFormat) {
    case Format::Json:
      return BayesHost::JsonReport::Write(report, out);
    case Format::Html:
      return BayesHost::HtmlReport::Write(report, out);
    case Format::Markdown:
      return BayesHost::MarkdownReport::Write(report, out);
    case Format::Csv:
      return BayesHost::CsvReport::Write(report, out);
    case Format::Text:
      return BayesHost::TextReport(MakeTextOptions(!request.fOutputFile.empty(), request.fThreads))
          .Write(report, out);
  }
}

void DeliverReport(const Request& request, const BayesHost::Report& report) {
  if (request.fOutputFile.empty()) {
    WriteReport(request, report, std::cout);
    std::cout.flush();
    if (!std::cout) throw std::runtime_error("Standard output can't take the results.");
    return;
  }
  BayesHost::OutputFile file(request.fOutputFile);
  WriteReport(request, report, file.Stream());
  file.Commit();
}

int RunCommands(const Request& request) {
  const InterruptHandling handling;
  BayesHost::Session session(MakeOptions(request));
  const BayesHost::Session::Use use(session);
  const InterruptTarget target(session);
  Runner runner(request, session, WantsColour(STDERR_FILENO));
  const bool ok = runner.Run();
  if (request.fAction == Action::Run && runner.HasRun()) {
    DeliverReport(request, runner.GetReport());
    if (!request.fChartFolder.empty()) WriteChartFiles(runner.GetReport(), request.fChartFolder);
  }
  if (request.fAction == Action::Check && ok) std::cout << "No problem found.\n";
  return ok ? kSuccess : kCommandFailed;
}

int Dispatch(const Request& request) {
  switch (request.fAction) {
    case Action::Run:
    case Action::Check:
      return RunCommands(request);
    case Action::DescribeData:
      DescribeData(request.fDataFile, std::cout);
      return kSuccess;
    case Action::Help:
      if (request.fMarkdown) {
        ShowReference(std::cout);
        return kSuccess;
      }
      return ShowHelp(request.fHelpTopic, std::cout) ? kSuccess : kUsageError;
    case Action::Done:
      break;
  }
  return request.fExitStatus;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Dispatch(ParseCommandLine(argc, argv));
  } catch (const std::exception& error) {
    std::cerr << "bayes: " << error.what() << '\n';
    return kCommandFailed;
  }
}
