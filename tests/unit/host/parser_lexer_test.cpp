#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>

#include "host/output/HostKeys.h"
#include "host/parser/Lexer.h"

namespace BayesHost {
namespace {

// Tokens in one line: w word, n number, q text, o operator with its code; ! marks a leading token.
std::string Show(const LexedText& lexed) {
  std::string text;
  for (const ZARQ_Token& token : lexed.fvTokens) {
    text += (text.empty() ? "" : " ") + std::string(token.IsLeading() ? "!" : "");
    switch (token.GetKind()) {
      case ZARQ_Token::Kind::Identifier:
        text += "w:" + token.GetText();
        break;
      case ZARQ_Token::Kind::Number:
        text += fmt::format("n:{}", token.GetNumber());
        break;
      case ZARQ_Token::Kind::QuotedText:
        text += "q:" + token.GetText();
        break;
      case ZARQ_Token::Kind::Operator:
        text += fmt::format("o{}", token.GetOperatorCode());
        break;
    }
  }
  return text;
}

struct GoodText {
  const char* fText;
  const char* fTokens;
  std::size_t fEnd = std::string::npos;  // npos: the whole text
};

const GoodText kGoodTexts[] = {
    {"", ""},
    {"abc _x $y @z a#b A.B x1", "w:abc w:_x w:$y w:@z w:a#b w:A.B w:x1"},
    {"größe 身長 µ_g", "w:größe w:身長 w:µ_g"},
    // numbers and signs
    {"1 1.5 .5 5. 1e3 1E-3 2.5e+2 007", "n:1 n:1.5 n:0.5 n:5 n:1000 n:0.001 n:250 n:7"},
    {"-1 +1 -.5 (-1 ,-1 =-1 ;-1 {-1", "n:-1 n:1 n:-0.5 o4 n:-1 o3 n:-1 o1 n:-1 o17 n:-1 o6 n:-1"},
    {"a-1 2-1 )-1 'x'-1 - 1 a - b", "w:a o9 n:1 n:2 o9 n:1 o5 o9 n:1 q:x o9 n:1 o9 n:1 w:a o9 w:b"},
    {"-1e-3-2", "n:-0.001 o9 n:2"},
    {"1e-300 9007199254740993", "n:1e-300 n:9007199254740992"},
    // operators
    {"= / , ( ) { } + - * < > ;", "o1 o2 o3 o4 o5 o6 o7 o8 o9 o10 o11 o12 o17"},
    // quotes
    {"'a b' \"c d\" 'it''s' \"say \"\"x\"\"\" '' '\"'", "q:a b q:c d q:it's q:say \"x\" q: q:\""},
    {"'a.'\n'b' 'x.\n", "q:a. q:b q:x", 12},  // the open text is a fault; its line's period still ends
    // the end of the statement
    {"a.", "w:a"},
    {"a .\nb.", "w:a", 3},
    {"a.b.\nc", "w:a.b", 4},
    {"a. \t\r\nb", "w:a", 2},
    {"95.\nb", "n:95", 3},
    {"1e5.\n", "n:100000", 4},
    {"a.  # comment\nb", "w:a", 2},
    {"a.# b", "w:a.# w:b"},
    {"'x'.", "q:x"},
    {"a. b", "w:a. w:b"},
    {"a\n\nb.", "w:a w:b"},
    // comments
    {"# one.\na # two.\n# three\nb", "w:a w:b"},
    {"\xEF\xBB\xBF# first\na", "w:a"},
    {"'# no comment' x", "q:# no comment w:x"},
    // leading words
    {"/CRIT SEED=1 x", "o2 !w:CRIT !w:SEED o1 n:1 w:x"},
    {"a = b", "!w:a o1 w:b"},
};

TEST(ParserLexer, ReadsTokensUpToTheEndOfTheStatement) {
  for (const GoodText& row : kGoodTexts) {
    const LexedText lexed = LexStatement(row.fText);
    EXPECT_EQ(Show(lexed), row.fTokens) << row.fText;
    const std::size_t end = row.fEnd == std::string::npos ? std::string(row.fText).size() : row.fEnd;
    EXPECT_EQ(lexed.fEnd, end) << row.fText;
  }
}

struct BadText {
  const char* fText;
  const char* fKey;
  std::size_t fPosition;
  const char* fArgument;
};

const BadText kBadTexts[] = {
    {"a 'b", kHostOpenQuote, 2, ""},
    {"a 'b\n' c.", kHostOpenQuote, 2, ""},
    {"x = \"it''s.", kHostOpenQuote, 4, ""},
    {"a 12abc", kHostBadNumber, 2, "12abc"},
    {"1.2.3", kHostBadNumber, 0, "1.2.3"},
    {"1e", kHostBadNumber, 0, "1e"},
    {"x=1e999", kHostBadNumber, 2, "1e999"},
    {"x=-1_000", kHostBadNumber, 2, "-1_000"},
    {"a ! b", kHostBadCharacter, 2, "!"},
    {"a [b]", kHostBadCharacter, 2, "["},
    {"a . b", kHostBadCharacter, 2, "."},
    {"x=\xE2\x80\x9Cq\xE2\x80\x9D", kHostBadCharacter, 2, "\xE2\x80\x9C (U+201C)"},
    {"a\xC2\xA0"
     "b",
     kHostBadCharacter, 1, "U+00A0"},
    {"a \xFF", kHostBadCharacter, 2, "0xFF"},
    {"a \xC3", kHostBadCharacter, 2, "0xC3"},
    {"a \xC0\x80", kHostBadCharacter, 2, "0xC0"},
    {"a \x01", kHostBadCharacter, 2, "U+0001"},
};

TEST(ParserLexer, NamesTheFirstFaultWithItsPlace) {
  for (const BadText& row : kBadTexts) {
    const LexedText lexed = LexStatement(row.fText);
    ASSERT_TRUE(lexed.fFault) << row.fText;
    EXPECT_EQ(lexed.fFault->fKey, row.fKey) << row.fText;
    EXPECT_EQ(lexed.fFault->fPosition, row.fPosition) << row.fText;
    const std::string argument =
        lexed.fFault->fvArguments.empty() ? "" : lexed.fFault->fvArguments.front().GetText();
    EXPECT_EQ(argument, row.fArgument) << row.fText;
  }
}

TEST(ParserLexer, TokensCarryTheirBytePlaces) {
  const LexedText lexed = LexStatement("größe\n ='x' 5 .");
  ASSERT_EQ(lexed.fvTokens.size(), 4U);
  EXPECT_EQ(lexed.fvTokens[1].GetPosition(), 9U);
  EXPECT_EQ(lexed.fvTokens[2].GetPosition(), 10U);
  EXPECT_EQ(lexed.fvTokens[3].GetPosition(), 14U);
  EXPECT_EQ(lexed.fStop, 15U);
  EXPECT_FALSE(lexed.fFault);
}

}  // namespace
}  // namespace BayesHost
