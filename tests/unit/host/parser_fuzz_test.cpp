// Commands damaged at random: the parser must end, say one thing at a place inside the text, and accept
// nothing that its own account of it would not give again.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "host/output/StringTable.h"
#include "host/parser/GrammarCheck.h"
#include "support/ParserDump.h"
#include "support/ParserGrammar.h"

namespace BayesHost {
namespace {

const char* const kCorpus[] = {
    "BAYES TEST y BY f1 f2 WITH x1 /INFERENCE VARIABLES=a TO d GROUP='g h' /CRITERIA CILEVEL=95 SEED=RANDOM.",
    "BAYES TEST /INF VAR=ALL /PRIOR TYPE=CONJUGATE(1 2.5e-3) KAPPA VMATRIX={1;0,1;-1 .5 3} MEANVECTOR=1, 2.",
    "BAYES TEST /INF VAR=a /PAIR VARIABLES=a WITH b VARIANCE=(2) /PAIR VARIABLES=c d /TABLE r BY c.",
    "BAYES TEST /INF VAR=größe # comment\n /SAVE MEANPRED VARIANCE=v MODE\n /OUTFILE MODEL='it''s.xml'.",
    "BAYES TEST /INF VAR=a /PRINT CELLS=ROW, OBS STATISTICS /PRIOR TYPE=LEVEL('x' \"y\") /CRI METHOD=AGL.",
};

const char* const kPieces[] = {
    "(",  ")",        "{",  "}",   ";",     ",",      "=",      "/", "'",     "\"",
    ".",  ".\n",      "#",  " ",   "\n",    "-",      "+",      "1", "1e999", "99999999999999999999",
    "BY", "WITH",     "TO", "ALL", "TYPE=", "CELLS=", "/PRIOR", "/", "\xC3",  "\xE2\x80\x9C",
    "ä",  "VMATRIX={"};

class Damager {
 public:
  std::string Damage(std::string text) {
    for (int i = Pick(4); i >= 0; --i) DamageOnce(text);
    return text;
  }

 private:
  // The library's distributions differ between platforms; the remainder of the engine's numbers doesn't.
  int Pick(std::size_t count) { return static_cast<int>(fRandom() % count); }

  void DamageOnce(std::string& text) {
    const auto at = static_cast<std::size_t>(Pick(text.size() + 1));
    const auto length = static_cast<std::size_t>(Pick(12));
    switch (Pick(4)) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, kPieces[Pick(std::size(kPieces))]);
        break;
      case 2:
        text.insert(at, text.substr(static_cast<std::size_t>(Pick(text.size() + 1)), length));
        break;
      default:
        if (at < text.size()) text[at] = static_cast<char>(Pick(256));
    }
  }

  std::mt19937 fRandom{20240229};
};

TEST(ParserFuzz, DamagedCommandsAreAcceptedOrRefusedInOrder) {
  const CommandDescriptor grammar = MakeTestGrammar();
  const StringTable& texts = StringTable::English();
  Damager damager;
  int accepted = 0;
  constexpr int kRounds = 20000;
  for (int i = 0; i < kRounds; ++i) {
    const std::string text = damager.Damage(kCorpus[static_cast<std::size_t>(i) % std::size(kCorpus)]);
    std::vector<SubComObj> subcommands;
    const auto fault = CheckCommand(LexStatement(text), true, grammar, subcommands);
    if (fault) {
      ASSERT_LE(fault->fPosition, text.size()) << text;
      ASSERT_TRUE(texts.Has(fault->fKey)) << fault->fKey;
      continue;
    }
    ++accepted;
    const std::string dump = DumpCommand("BAYES TEST", subcommands);
    std::vector<SubComObj> again;
    ASSERT_FALSE(CheckCommand(LexStatement(dump), true, grammar, again)) << text << "\n" << dump;
    ASSERT_EQ(DumpCommand("BAYES TEST", again), dump) << text;
  }
  EXPECT_GT(accepted, kRounds / 50) << "the damage is so great that nothing is tested";
  EXPECT_LT(accepted, kRounds / 2) << "the damage is so small that nothing is tested";
}

}  // namespace
}  // namespace BayesHost
