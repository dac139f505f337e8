// What the person at the keyboard asked for.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace BayesApp {

enum class Action { Run, Check, DescribeData, Help, Done };

enum class Format { Text, Json, Html, Markdown, Csv };

struct Request {
  Action fAction = Action::Done;
  int fExitStatus = 0;  // of Action::Done: the text was shown already

  // Run and Check: a command file, or commands and a data file from the command line.
  std::string fCommandFile;
  std::string fCommands;
  std::string fDataFile;  // also of DescribeData

  std::string fOutputFile;  // empty: standard output
  Format fFormat = Format::Text;
  std::string fChartFolder;  // empty: charts stay in the report
  std::string fChartStyle;   // empty: the one of share/
  unsigned long fSeed = 0;
  int fThreads = 0;
  std::size_t fMemoryBytes = 0;  // 0: the machine's default
  bool fQuiet = false;
  bool fFingerprint = false;

  bool fMarkdown = false;  // help as Markdown
  std::string fHelpTopic;  // a command's name; empty: all of them
};

// Exit statuses.
inline constexpr int kSuccess = 0;
inline constexpr int kCommandFailed = 1;
inline constexpr int kUsageError = 2;

// Reads the command line; wrong usage and --help are answered here (Action::Done).
Request ParseCommandLine(int argc, char** argv);

}  // namespace BayesApp
