#include <gtest/gtest.h>

#include "host/parser/GrammarHelp.h"
#include "support/Approved.h"
#include "support/ParserGrammar.h"

namespace BayesHost {
namespace {

TEST(ParserHelp, TextAndMarkdownShowTheWholeGrammar) {
  ExpectApproved("parser/help.txt", RenderHelpText(MakeTestGrammar()));
  ExpectApproved("parser/help.md", RenderHelpMarkdown(MakeTestGrammar()));
}

}  // namespace
}  // namespace BayesHost
