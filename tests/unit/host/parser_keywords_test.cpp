#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/parser/Keywords.h"

namespace BayesHost {
namespace {

using Words = std::vector<std::string>;

const Words kNames{"CILEVEL", "METHOD", "SEED", "TOL", "MAXITER", "MCSAMPLES", "POSTSAMPLES"};

struct NearCase {
  const char* fWord;
  Words fNearest;
};

const NearCase kNearCases[] = {
    {"METHDO", {"METHOD"}},   // a swap is one slip
    {"CLEVEL", {"CILEVEL"}},  // a letter left out
    {"SEEED", {"SEED"}},      // one too many
    {"toll", {"TOL"}},        // any case
    {"METJ", {"METHOD"}},     // a misspelt abbreviation
    {"SAMPLES", {"MCSAMPLES"}}, {"MCSAMPLE", {"MCSAMPLES"}}, {"ALPHA", {}}, {"X", {}}, {"", {}},
};

TEST(ParserKeywords, SuggestsOnlyWhatIsNear) {
  for (const NearCase& row : kNearCases) EXPECT_EQ(FindNearest(row.fWord, kNames), row.fNearest) << row.fWord;
}

TEST(ParserKeywords, SuggestsTwoAtMost) {
  EXPECT_EQ(FindNearest("ab1", {"ab2", "ab3", "ab4"}), (Words{"ab2", "ab3"}));
}

TEST(ParserKeywords, MatchesWholeWordsBeforeAbbreviations) {
  const Words names{"MODEL", "MODE", "MODERN", "BY"};
  EXPECT_THAT(MatchKeyword("mode", names), testing::ElementsAre(1U));
  EXPECT_THAT(MatchKeyword("MODER", names), testing::ElementsAre(2U));
  EXPECT_THAT(MatchKeyword("MOD", names), testing::ElementsAre(0U, 1U, 2U));
  EXPECT_THAT(MatchKeyword("MO", names), testing::IsEmpty());
  EXPECT_THAT(MatchKeyword("by", names), testing::ElementsAre(3U));
  EXPECT_THAT(MatchKeyword("MODELS", names), testing::IsEmpty());
}

}  // namespace
}  // namespace BayesHost
