#include <gtest/gtest.h>

#include "host/output/Diagnostic.h"
#include "host/output/TextWidth.h"

namespace {

using BayesHost::Align;
using BayesHost::Diagnostic;
using BayesHost::Message;

struct Case {
  Diagnostic fDiagnostic;
  const char* fShown;
};

const Case kCases[] = {
    {{"study.bay", 3, 5, Message::Level::Error, "No such thing.", "  /WHAT=1."},
     "study.bay:3:5: error: No such thing.\n  /WHAT=1.\n    ^\n"},
    {{"study.bay", 3, 0, Message::Level::Warning, "Careful.", ""}, "study.bay:3: warning: Careful.\n"},
    {{"", 0, 0, Message::Level::Error, "Broken.", ""}, "error: Broken.\n"},
    {{"", 1, 2, Message::Level::Error, "Broken.", "ab"}, "1:2: error: Broken.\nab\n ^\n"},
    {{"f", 1, 3, Message::Level::Error, "After a tab.", "\tab"}, "f:1:3: error: After a tab.\n\tab\n\t ^\n"},
    {{"f", 1, 3, Message::Level::Error, "Wide.", "\u6F22\u00E9x"},
     "f:1:3: error: Wide.\n\u6F22\u00E9x\n   ^\n"},
    {{"f", 1, 4, Message::Level::Error, "At the end.", "ab"}, "f:1:4: error: At the end.\nab\n   ^\n"},
};

TEST(OutputDiagnostic, ShowsPlaceLineAndCaret) {
  for (const Case& row : kCases) EXPECT_EQ(row.fDiagnostic.Format(false), row.fShown);
}

TEST(OutputDiagnostic, ColoursTheLevelOnly) {
  EXPECT_EQ(kCases[1].fDiagnostic.Format(true), "study.bay:3: \x1b[1;33mwarning: \x1b[0mCareful.\n");
}

TEST(OutputDiagnostic, MessageWithoutPlaceGetsTheCommandsLine) {
  Message message;
  message.fText.fText = "Text.";
  EXPECT_EQ(Diagnostic::Of(message, "f", 7).Format(false), "f:7: error: Text.\n");
  message.fLine = 9;
  message.fColumn = 2;
  EXPECT_EQ(Diagnostic::Of(message, "f", 7).Format(false), "f:9:2: error: Text.\n");
}

TEST(OutputTextWidth, CountsColumnsNotBytes) {
  const std::pair<const char*, int> cases[] = {{"", 0},        {"abc", 3},          {"\u00E9\u03C1", 2},
                                               {"e\u0301", 1}, {"\u6F22\u5B57", 4}, {"\U0001F600", 2},
                                               {"\xFF", 1}};
  for (const auto& [text, width] : cases) EXPECT_EQ(BayesHost::DisplayWidth(text), width) << text;
}

TEST(OutputTextWidth, NothingSteersTheTerminal) {
  const std::pair<const char*, const char*> cases[] = {{"a\tb\nc", "a\tb\nc"},
                                                       {"\x1b[2J\a", "?[2J?"},
                                                       {"\xC2\x9B"
                                                        "2J",
                                                        "?2J"},
                                                       {"\xC2\xA0\xC3\x9F", "\xC2\xA0\xC3\x9F"},
                                                       {"\x7F\r", "??"},
                                                       {"\xC2", "\xC2"}};
  for (const auto& [text, plain] : cases) EXPECT_EQ(BayesHost::PlainText(text), plain);
  const Diagnostic diagnostic{"f", 1, 2, Message::Level::Error, "no \x1b[31m", "a\x1b[31mb"};
  EXPECT_EQ(diagnostic.Format(false), "f:1:2: error: no ?[31m\na?[31mb\n ^\n");
}

TEST(OutputTextWidth, WrapsAtBlanksAndKeepsLongWords) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(BayesHost::WrapText("one two  three", 7), (Lines{"one two", "three"}));
  EXPECT_EQ(BayesHost::WrapText("unbreakable word", 5), (Lines{"unbreakable", "word"}));
  EXPECT_EQ(BayesHost::WrapText("", 5), (Lines{""}));
}

TEST(OutputTextWidth, PadsByDisplayWidth) {
  EXPECT_EQ(BayesHost::PadText("\u00E9", 4, Align::Left), "\u00E9   ");
  EXPECT_EQ(BayesHost::PadText("\u6F22", 4, Align::Right), "  \u6F22");
  EXPECT_EQ(BayesHost::PadText("ab", 5, Align::Centre), " ab  ");
  EXPECT_EQ(BayesHost::PadText("abc", 2, Align::Right), "abc");
}

}  // namespace
