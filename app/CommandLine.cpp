#include "app/CommandLine.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <map>

#include "app/Version.h"

namespace BayesApp {

namespace {

constexpr int kMostThreads = 1024;
constexpr double kLeastMemory = 1e6;
constexpr double kMostMemory = 1e18;

constexpr const char* kDescription =
    "Bayesian inference from the command line.\n\n"
    "  bayes run study.bay                     results in the terminal\n"
    "  bayes run study.bay -o report.html      results as one HTML file\n"
    "  bayes run -d data.csv -c 'BAYES ONESAMPLE /INFERENCE DISTRIBUTION=NORMAL VARIABLES=height.'\n"
    "  bayes help ONESAMPLE                    the grammar of a command";

const std::map<std::string, Format> kFormats{{"text", Format::Text},
                                             {"json", Format::Json},
                                             {"html", Format::Html},
                                             {"md", Format::Markdown},
                                             {"csv", Format::Csv}};

// In any case of letters; empty: the format is known.
std::string ReadFormat(const std::string& name, Format& format) {
  const auto found = kFormats.find(CLI::detail::to_lower(name));
  if (found == kFormats.end()) return name + " is no format: expected text, json, html, md or csv";
  format = found->second;
  return "";
}

// Without --format, the output file's ending decides.
Format GuessFormat(const std::string& file) {
  Format format = Format::Text;
  const std::string ending = std::filesystem::path(file).extension();
  if (!ending.empty()) ReadFormat(ending == ".htm" ? "html" : ending.substr(1), format);
  return format;
}

// The library's own check, which returns its complaint or throws it, under a message in our words.
CLI::Validator Expect(const CLI::Validator& check, const std::string& expected) {
  const auto verdict = [check, expected](std::string& value) {
    std::string message = value + " is not allowed: expected " + expected;
    try {
      return check(value).empty() ? std::string() : message;
    } catch (const CLI::ValidationError&) {
      return message;
    }
  };
  return {verdict, ""};
}

void AddSource(CLI::App& command, Request& request) {
  command.add_option("file", request.fCommandFile, "command file (.bay)");
  command.add_option("-d,--data", request.fDataFile, "data file for the commands of -c");
  command.add_option("-c,--command", request.fCommands, "commands, each ended by a period");
}

void AddLimits(CLI::App& command, Request& request) {
  command.add_option("--threads", request.fThreads, "threads to use (0: all cores)")
      ->check(Expect(CLI::Range(0, kMostThreads), fmt::format("a whole number from 0 to {}", kMostThreads)));
  command.add_option("--memory", request.fMemoryBytes, "memory to stay within, such as 500MB or 2GB")
      ->transform(Expect(CLI::AsSizeValue(false), "a size such as 500MB or 2GB"))
      ->check(Expect(CLI::Range(kLeastMemory, kMostMemory), "1MB to 1000000TB"));
  command.add_flag("-q,--quiet", request.fQuiet, "no progress and no warnings on standard error");
}

// Exactly one source: a file, or data and commands.
std::optional<std::string> CheckSource(const Request& request) {
  const bool inLine = !request.fCommands.empty();
  if (!request.fCommandFile.empty() && (inLine || !request.fDataFile.empty())) {
    return "Give a command file, or -d and -c, not both.";
  }
  if (request.fCommandFile.empty() && !inLine) {
    return "Nothing to run: give a command file, or -d FILE and -c 'COMMAND.'.";
  }
  return std::nullopt;
}

Request Finish(Request request, int status) {
  request.fAction = Action::Done;
  request.fExitStatus = status;
  return request;
}

}  // namespace

Request ParseCommandLine(int argc, char** argv) {
  Request request;
  CLI::App app(kDescription, "bayes");
  app.set_version_flag("--version", std::string("bayes ") + kVersion);
  app.require_subcommand(1);

  CLI::App* run = app.add_subcommand("run", "run the commands of a file");
  AddSource(*run, request);
  AddLimits(*run, request);
  run->add_option("-o,--output", request.fOutputFile,
                  "file for the results (.html, .json, .md, .csv, else text)");
  CLI::Option* format = run->add_option_function<std::string>(
      "--format",
      [&request](const std::string& name) {
        const std::string problem = ReadFormat(name, request.fFormat);
        if (!problem.empty()) throw CLI::ValidationError("--format", problem);
      },
      "form of the results: text, json, html, md or csv");
  run->add_option("--charts", request.fChartFolder,
                  "folder for the charts, each as a drawing (.svg) and as a Vega-Lite document (.vl.json)");
  run->add_option("--style", request.fChartStyle, "file of the charts' colours")->check(CLI::ExistingFile);
  run->add_option("--seed", request.fSeed, "seed of everything drawn at random (> 0)")
      ->check(Expect(CLI::PositiveNumber, "a whole number above 0"));

  run->add_flag("--fingerprint", request.fFingerprint, "show the data file's XXH3-128 in the report's head");

  CLI::App* check = app.add_subcommand("check", "check the commands of a file without running them");
  AddSource(*check, request);
  AddLimits(*check, request);

  CLI::App* describe = app.add_subcommand("describe", "show the variables of a data file");
  describe->add_option("data", request.fDataFile, "data file")->required();
  AddLimits(*describe, request);

  CLI::App* help = app.add_subcommand("help", "show the grammar of a command");
  help->add_flag("--markdown", request.fMarkdown, "all commands, as Markdown");
  help->add_option("command", request.fHelpTopic, "name of a command, such as ONESAMPLE");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const bool asked = error.get_exit_code() == 0;
    app.exit(error);
    return Finish(request, asked ? kSuccess : kUsageError);
  }
  if (run->parsed() || check->parsed()) {
    if (const auto problem = CheckSource(request)) {
      std::cerr << "bayes: " << *problem << "\nRun with --help for more information.\n";
      return Finish(request, kUsageError);
    }
  }
  if (format->count() == 0) request.fFormat = GuessFormat(request.fOutputFile);
  request.fAction = run->parsed()        ? Action::Run
                    : check->parsed()    ? Action::Check
                    : describe->parsed() ? Action::DescribeData
                                         : Action::Help;
  return request;
}

}  // namespace BayesApp
