// What the program takes from its command line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/CommandLine.h"

namespace {

using namespace BayesApp;

Request Parse(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "bayes");
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  return ParseCommandLine(static_cast<int>(pointers.size()), pointers.data());
}

TEST(CommandLine, FormatComesFromItsNameElseFromTheFile) {
  struct Case {
    std::vector<std::string> fvArguments;
    Format fFormat;
  };
  const Case cases[] = {
      {{}, Format::Text},
      {{"-o", "out.txt"}, Format::Text},
      {{"-o", "a.json/md"}, Format::Text},
      {{"-o", "out.html"}, Format::Html},
      {{"-o", "out.htm"}, Format::Html},
      {{"-o", "out.json"}, Format::Json},
      {{"-o", "out.md"}, Format::Markdown},
      {{"-o", "my.out.CSV"}, Format::Csv},
      {{"-o", "out.csv", "--format", "md"}, Format::Markdown},
      {{"--format", "JSON"}, Format::Json},
      {{"--format", "text", "-o", "out.html"}, Format::Text},
  };
  for (const Case& each : cases) {
    std::vector<std::string> arguments = {"run", "study.bay"};
    arguments.insert(arguments.end(), each.fvArguments.begin(), each.fvArguments.end());
    const Request request = Parse(arguments);
    EXPECT_EQ(request.fAction, Action::Run) << testing::PrintToString(arguments);
    EXPECT_EQ(request.fFormat, each.fFormat) << testing::PrintToString(arguments);
  }
}

TEST(CommandLine, BadValuesAreToldInWords) {
  const struct {
    const char* fOption;
    const char* fValue;
    const char* fMessage;
  } cases[] = {
      {"--format", "xml", "--format: xml is no format: expected text, json, html, md or csv\n"},
      {"--threads", "-1", "--threads: -1 is not allowed: expected a whole number from 0 to 1024\n"},
      {"--threads", "100000", "--threads: 100000 is not allowed: expected a whole number from 0 to 1024\n"},
      {"--memory", "-5", "--memory: -5 is not allowed: expected 1MB to 1000000TB\n"},
      {"--seed", "0", "--seed: 0 is not allowed: expected a whole number above 0\n"},
      {"--memory", "much", "--memory: much is not allowed: expected a size such as 500MB or 2GB\n"},
  };
  for (const auto& each : cases) {
    testing::internal::CaptureStderr();
    const Request request = Parse({"run", "study.bay", each.fOption, each.fValue});
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_EQ(request.fAction, Action::Done) << each.fOption;
    EXPECT_EQ(request.fExitStatus, kUsageError) << each.fOption;
    EXPECT_THAT(shown, testing::StartsWith(each.fMessage));
  }
  EXPECT_EQ(Parse({"run", "study.bay", "--memory", "2MB"}).fMemoryBytes, std::size_t{2} << 20);
}

TEST(CommandLine, NeedsOneSource) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"run"},
                                                    {"run", "-d", "x.csv"},
                                                    {"check", "a.bay", "-c", "BAYES ONESAMPLE."}}) {
    testing::internal::CaptureStderr();
    const Request request = Parse(arguments);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::StartsWith("bayes: "));
    EXPECT_EQ(request.fExitStatus, kUsageError) << testing::PrintToString(arguments);
  }
}

}  // namespace
