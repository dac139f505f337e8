#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "host/data/DataSet.h"
#include "host/data/Variable.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "platform/component/VarList.h"
#include "platform/host/Adapter.h"
#include "platform/host/Output.h"
#include "platform/host/Run.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

constexpr double M = MCCommon_850::MCMV::Missing();

std::string ShowNumber(double value) {
  return value == M ? "." : fmt::format("{}", value);
}

// A module's adapter: notes in which order it is called, and rejects what the test wants rejected.
class Adapter : public ACAInputAdapter {
 public:
  Adapter(ACAVarValidSpecs& specs, ProcedureDataSource& source) : ACAInputAdapter(specs, source) {}
  bool PreprocessRecord(double* record) override {
    ++fRecords;
    fvSeen.push_back(record[0]);
    return !fReject || !fReject(record);
  }
  bool TakesCasesAsTheyAre() const override { return fTakesCasesAsTheyAre; }
  void PreprocessRun() override {
    std::vector<double> values{M};
    GetRunValues(0, values);
    fvSeen.insert(fvSeen.end(), values.begin(), values.end());
  }
  void PrepareNewPass() override { fCalls += fmt::format("pass{} ", GetCurrentPass()); }
  void PrepareNewSplit() override { fCalls += "split "; }

  std::function<bool(double*)> fReject;
  std::string fCalls;
  bool fTakesCasesAsTheyAre = false;
  int fRecords = 0;            // seen by PreprocessRecord
  std::vector<double> fvSeen;  // values of the first slot, told by records and by runs
};

// A session with one data file and one command under way.
class Adaptation : public testing::Test {
 protected:
  void Open(const std::string& text, std::size_t memory = std::size_t{1} << 26,
            const DataOptions& options = {}) {
    fpFile = std::make_unique<TempData>(text);
    fSession.SetData(std::make_shared<DataSet>(fpFile->GetFile(), DataSet::Limits{memory, 1}, options));
    fOutput = std::make_shared<CommandOutput>("BAYES ONESAMPLE", "", 1);
    fSession.BeginCommand({}, fOutput);
  }
  DataSet& GetData() { return *fSession.GetData(); }
  int Find(const char* name) { return GetData().FindVariable(name); }

  // The records of the iterator's current split, "1 2 | 3 4".
  static std::string ShowRecords(ACAProcDataSourceIter& iter, int size) {
    std::vector<std::string> records;
    for (; iter.HasRecord(); iter.Advance()) {
      std::vector<std::string> values;
      for (int i = 0; i < size; ++i) values.push_back(ShowNumber(iter.Current()->fValues[i]));
      records.push_back(fmt::format("{}", fmt::join(values, " ")));
    }
    return fmt::format("{}", fmt::join(records, " | "));
  }
  static std::string ShowCounts(const ACAInputAdapter& adapter) {
    return fmt::format("{} {} {} {}", adapter.GetValidCount(), adapter.GetWeightedValidCount(),
                       adapter.GetDroppedCount(), adapter.GetWeightedDroppedCount());
  }
  std::string ShowMessages() const {
    std::string text;
    for (const Item& item : fOutput->GetItems()) {
      if (const auto* message = std::get_if<Message>(&item.fContent)) {
        const std::string kind = message->fLevel == Message::Level::Error ? "error" : "warning";
        text +=
            kind + " " + (message->fText.fKey.empty() ? message->fText.fText : message->fText.fKey) + "\n";
      }
    }
    return text;
  }

  std::unique_ptr<TempData> fpFile;
  Session fSession{RunOptions{}};
  Session::Use fUse{fSession};
  std::shared_ptr<CommandOutput> fOutput;
  ProcedureDataSource fSource;
  ACAVarValidSpecs fSpecs{true, true, true};
};

TEST_F(Adaptation, GivesEachVariableOneSlot) {
  Open("a,b,w\n1,2,3\n");
  GetData().SetWeight(2);
  EXPECT_EQ(fSpecs.AddVariable(1, false, true, true, true), 0);
  EXPECT_EQ(fSpecs.SetWeightVar(), 1);
  std::vector<int> slots = {0, 1, 0};
  fSpecs.AddVariables(slots, slots, false, true, true, true);
  EXPECT_THAT(slots, testing::ElementsAre(2, 0, 2));
  EXPECT_EQ(fSpecs.AddFreeVariable(false), 3);
  EXPECT_EQ(fSpecs.AddVariable(2, true, true, true, true), 4) << "the weight as a variable of its own";
  EXPECT_EQ(fSpecs.GetNRecordVars(), 5);
  EXPECT_EQ(fSpecs.GetRecVarIndex(0), 2);
  EXPECT_EQ(fSpecs.GetRecVarIndex(2), 4);
  EXPECT_LT(fSpecs.GetRecVarIndex(7), 0);
  EXPECT_EQ(fSpecs.GetZARQVarIndex(1), 2);
  EXPECT_LT(fSpecs.GetZARQVarIndex(3), 0);
  EXPECT_LT(fSpecs.GetZARQVarIndex(9), 0);
  EXPECT_THAT(fSpecs.GetRecCatVars(), testing::ElementsAre(4));
  EXPECT_THROW(fSpecs.AddVariable(0, true, true, true, true), std::logic_error);
}

TEST_F(Adaptation, SortsTheValuesOfFactors) {
  Open("a,s\n1,x\n");
  const std::vector<OBS> numbers{OBS(10.0), OBS(-2.0), OBS(9.0)};
  const std::vector<OBS> texts{OBS("b"), OBS("B"), OBS("ab")};
  for (const bool ascending : {true, false}) {
    ObsVecMap map(ObsVecMap::MakeKeySpec({0, 1}, fSource, ascending));
    for (const OBS& number : numbers) map.Insert(0, &number);
    for (const OBS& text : texts) map.Insert(1, &text);
    EXPECT_TRUE(map.Contains(0, OBS(9.0)));
    EXPECT_FALSE(map.Contains(1, OBS("a")));
    map.Sort();
    std::string shown;
    for (const OBS* value : map.GetValues(0)) shown += ShowNumber(value->GetNumber()) + " ";
    for (const OBS* value : map.GetValues(1)) shown += value->GetString() + " ";
    EXPECT_EQ(shown, ascending ? "-2 9 10 B ab b " : "10 9 -2 b ab B ");
  }
}

struct MissingCase {
  const char* fName;
  bool fPassesA;
  bool fPassesB;
  const char* fRecords;
  const char* fCounts;
};

// The weights round to 1, 2 (halves away from zero), 0, missing, negative, 3, 1, 2.
TEST_F(Adaptation, AppliesWeightsThenMissingRules) {
  const MissingCase cases[] = {
      {"missing passes", true, true, "1 1 10 . | 2 2 20 . | 3 3 . . | 4 1 50 . | . 2 60 .", "5 9 0 0"},
      {"a must be there", false, true, "1 1 10 . | 2 2 20 . | 3 3 . . | 4 1 50 .", "4 7 1 2"},
      {"b must be there", true, false, "1 1 10 . | 2 2 20 . | 4 1 50 . | . 2 60 .", "4 6 1 3"},
      {"both must be there", false, false, "1 1 10 . | 2 2 20 . | 4 1 50 .", "3 4 2 5"},
  };
  Open("a,w,b\n1,0.6,10\n2,1.5,20\n9,0.4,\n9,,30\n9,-2,40\n3,3,\n4,1,50\n,2,60\n");
  GetData().SetWeight(1);
  for (const MissingCase& c : cases) {
    SCOPED_TRACE(c.fName);
    ACAVarValidSpecs specs(true, true, true);
    specs.AddVariable(0, false, c.fPassesA, true, c.fPassesA);
    specs.SetWeightVar();
    specs.AddVariable(2, false, c.fPassesB, true, c.fPassesB);
    specs.AddFreeVariable(false);
    Adapter adapter(specs, fSource);
    ACAProcDataSourceIter iter(adapter, true);
    ASSERT_TRUE(iter.NewSplit());
    EXPECT_EQ(ShowRecords(iter, 4), c.fRecords);
    EXPECT_EQ(ShowCounts(adapter), c.fCounts);
    EXPECT_FALSE(iter.NewSplit());
  }
}

TEST_F(Adaptation, LearnsCategoriesAndRangesFromAcceptedCases) {
  Open("g,x\nb,1\na,5\n,2\nc,-7\nd,\na,3\n");
  const int g = fSpecs.AddVariable(0, true, true, true, true);
  const int x = fSpecs.AddVariable(1, false, false, true, false);
  Adapter adapter(fSpecs, fSource);
  adapter.fReject = [x](const double* record) { return record[x] == -7; };
  ACAProcDataSourceIter iter(adapter, true);
  ASSERT_TRUE(iter.NewSplit());
  EXPECT_EQ(ShowRecords(iter, 2), "0 1 | 1 5 | . 2 | 1 3") << "codes in order of appearance";
  EXPECT_EQ(adapter.GetRecordCatVarSize(g), 2) << "c was rejected, d dropped";
  EXPECT_EQ(adapter.GetRecordVarMin(x), 1);
  EXPECT_EQ(adapter.GetRecordVarMax(x), 5);
  EXPECT_EQ(ShowCounts(adapter), "4 4 1 1");
  EXPECT_EQ(adapter.GetSplitSize(), 4);

  bool notFound = true;
  adapter.ReorderRecordCats(g, true);
  EXPECT_EQ(adapter.EncodeRecordCatValue(g, OBS("a  "), notFound, false), 0);
  EXPECT_FALSE(notFound);
  EXPECT_LT(adapter.EncodeRecordCatValue(g, OBS("c"), notFound, false), 0);
  EXPECT_TRUE(notFound);
  EXPECT_LT(adapter.EncodeRecordCatValue(g, OBS(1.0), notFound, false), 0) << "a number for a string";
  EXPECT_EQ(adapter.DecodeRecordCatValue(g, 1)->GetString(), "b");
  EXPECT_EQ(adapter.DecodeRecordCatValue(g, 2), nullptr);

  adapter.fReject = nullptr;
  iter.Restart();
  ASSERT_TRUE(iter.NewSplit());
  EXPECT_EQ(ShowRecords(iter, 2), "1 1 | 0 5 | . 2 | -1 -7 | 0 3") << "final codes; c was never seen";
  adapter.ReorderRecordCats(g, false);
  EXPECT_EQ(adapter.DecodeRecordCatValue(g, 0)->GetString(), "b");
}

TEST_F(Adaptation, OrdersNumericCategoriesBySize) {
  Open("g\n10\n9\n-1\n-0\n0\n");
  const int g = fSpecs.AddVariable(0, true, true, true, true);
  Adapter adapter(fSpecs, fSource);
  ACAProcDataSourceIter iter(adapter, true);
  ASSERT_TRUE(iter.NewSplit());
  ShowRecords(iter, 1);
  adapter.ReorderRecordCats(g, true);
  ASSERT_EQ(adapter.GetRecordCatVarSize(g), 4) << "-0 is 0";
  EXPECT_EQ(adapter.DecodeRecordCatValue(g, 0)->GetNumber(), -1);
  EXPECT_EQ(adapter.DecodeRecordCatValue(g, 3)->GetNumber(), 10);
}

TEST_F(Adaptation, WalksSplitsPassByPass) {
  Open("s,x\nv,1\nu,2\nv,3\n,4\nu,\n");
  GetData().SetSplit({0});
  fSpecs.AddVariable(1, false, false, true, false);
  Adapter adapter(fSpecs, fSource);
  BpProcedure procedure("title", 10);
  adapter.SetSplitFile(&procedure, true, true, true);
  ACAProcDataSourceIter iter(adapter, true);
  std::string shown;
  for (int pass = 0; pass < 2; ++pass) {
    while (iter.NewSplit()) {
      const Split& split = fOutput->GetSplit();
      shown += fmt::format("{}={} [{}] {}: ", split[0].fVariable, split[0].fText,
                           adapter.GetSplitValues()[0]->GetString(), adapter.GetCurrentPass());
      shown += ShowRecords(iter, 1);
      shown += " (" + ShowCounts(adapter) + "); ";
    }
    EXPECT_TRUE(fOutput->GetSplit().empty()) << "what follows the splits belongs to none";
    if (pass == 0) iter.Restart();
  }
  EXPECT_EQ(shown,
            "s=. [] 0: 4 (1 1 0 0); s=u [u] 0: 2 (1 1 1 1); s=v [v] 0: 1 | 3 (2 2 0 0); "
            "s=. [] 1: 4 (1 1 0 0); s=u [u] 1: 2 (1 1 1 1); s=v [v] 1: 1 | 3 (2 2 0 0); ");
  EXPECT_EQ(adapter.fCalls, "pass0 split split split pass1 split split split ");
}

struct StateCase {
  const char* fName;
  const char* fText;
  bool fSplit;
  ACAProcDataSourceIter::State fAtFirst;
  std::vector<ACAProcDataSourceIter::State> fvSplits;  // one for each split that NewSplit gives
};

TEST_F(Adaptation, TellsDataWithoutCasesFromSplitsWithout) {
  using State = ACAProcDataSourceIter;
  const StateCase cases[] = {
      {"no case", "s,x\n", false, State::kNoCase, {}},
      {"no case in splits", "s,x\n", true, State::kNoCase, {}},
      {"no valid case", "s,x\n1,\n2,\n", false, State::kNoValidCase, {}},
      {"a valid case", "s,x\n1,\n2,3\n", false, State::kReady, {State::kReady}},
      {"the first split has none",
       "s,x\n1,\n2,3\n",
       true,
       State::kReady,
       {State::kNoValidCase, State::kReady}},
      {"no split has one", "s,x\n1,\n2,\n", true, State::kReady, {State::kNoValidCase, State::kNoValidCase}},
  };
  for (const StateCase& c : cases) {
    SCOPED_TRACE(c.fName);
    Open(c.fText);
    if (c.fSplit) GetData().SetSplit({0});
    ACAVarValidSpecs specs(true, true, true);
    specs.AddVariable(1, false, false, true, false);
    Adapter adapter(specs, fSource);
    ACAProcDataSourceIter iter(adapter, true);
    EXPECT_EQ(iter.GetState(), c.fAtFirst);
    std::vector<ACAProcDataSourceIter::State> states;
    while (iter.NewSplit()) {
      EXPECT_EQ(iter.HasRecord(), iter.GetState() == State::kReady);
      EXPECT_EQ(ACADataFileIter(adapter, {}, 0).GetState(), iter.GetState());
      states.push_back(iter.GetState());
      while (iter.HasRecord()) iter.Advance();
      EXPECT_EQ(iter.Current(), nullptr);
    }
    EXPECT_EQ(states, c.fvSplits);
  }
}

// Values of the data file, "1 2 | 3 4", read block by block.
std::string ShowFile(ACADataFileIter& file) {
  std::string text;
  std::size_t count = 0;
  file.Restart();
  while (const double* block = file.NextBlock(count)) {
    for (std::size_t i = 0; i < count * static_cast<std::size_t>(file.GetRecordSize()); ++i) {
      text += ShowNumber(block[i]) + " ";
    }
  }
  EXPECT_EQ(count, 0U);
  return text;
}

TEST_F(Adaptation, DescribesTheSlotsToTheComponent) {
  Open("g,x,t\nb,1,true\na,5,false\n");
  const int g = fSpecs.AddVariable(0, true, true, true, true);
  fSpecs.AddVariable(1, false, true, true, true);
  fSpecs.AddVariable(2, true, true, true, true);
  const int free = fSpecs.AddFreeVariable(false);
  Adapter adapter(fSpecs, fSource);
  ACAProcDataSourceIter iter(adapter, true);
  ASSERT_TRUE(iter.NewSplit());
  ShowRecords(iter, 4);
  adapter.ReorderRecordCats(g, true);
  MCXML_850::MCVarList list;
  ACAVarListMetaData meta(list, fSpecs, fSource, adapter, true);
  meta.SetFreeVarName(free, "$Group_g");
  meta.Fill();
  std::string shown;
  for (const MCXML_850::MCVariable& variable : list.GetVariables()) {
    shown += fmt::format("{} {}{}{}:", variable.fSlot, variable.fName,
                         variable.fCategorical ? " categorical" : "", variable.fString ? " string" : "");
    for (const MCXML_850::MCCategory& category : variable.fvCategories) {
      shown += category.fIsString ? " " + category.fText
                                  : fmt::format(" {}={}", category.fNumber, category.fLabel);
    }
    shown += " | ";
  }
  EXPECT_EQ(shown, "0 g categorical string: a b | 1 x: | 2 t categorical: 1=true 0=false | 3 $Group_g: | ");
}

TEST_F(Adaptation, KeepsOneSplitsRecordsForTheComponent) {
  Open("s,x\n2,1\n1,2\n2,3\n1,\n");
  GetData().SetSplit({0});
  fSpecs.AddVariable(0, false, true, true, true);
  fSpecs.AddVariable(1, false, true, true, true);
  Adapter adapter(fSpecs, fSource);
  ACAProcDataSourceIter iter(adapter, true);
  for (const char* expected : {"1 2 1 . ", "2 1 2 3 "}) {
    ASSERT_TRUE(iter.NewSplit());
    ACADataFileIter file(adapter, {}, 0);
    ASSERT_TRUE(file.FillDataFile(iter));
    EXPECT_EQ(ShowFile(file), expected);
    EXPECT_EQ(ShowFile(file), expected) << "readable again";
    file.CloseDataFile();
    EXPECT_EQ(ShowFile(file), "");
  }
  EXPECT_THROW(ACADataFileIter(adapter, {0}, 0), std::invalid_argument);
}

struct FileCase {
  const char* fName;
  std::function<bool(double*)> fReject;  // may recode the record, too
};

// Cases as they are, records that differ from them and cases left out, in long and short stretches, each with
// blocks in memory and in a file.
TEST_F(Adaptation, KeepsTheRecordsWhateverMemoryHolds) {
  constexpr int kRows = 20000;
  const FileCase cases[] = {
      {"cases", [](const double*) { return false; }},
      {"some left out", [](const double* r) { return static_cast<int>(r[0]) % 5000 == 77; }},
      {"some recoded",
       [](double* r) {
         if (static_cast<int>(r[0]) % 7 == 3) r[2] = -1;
         return false;
       }},
      {"recoded, then not",
       [](double* r) {
         if (r[0] < 6000) r[0] = -r[0];
         return false;
       }},
      {"every second left out, others recoded",
       [](double* r) {
         if (r[0] > 3000) r[2] = 2;
         return static_cast<int>(r[0]) % 2 == 1;
       }},
  };
  std::string text = "x,s\n";
  for (int i = 0; i < kRows; ++i) text += fmt::format("{},{}\n", i, i * 7 % 3);
  for (const FileCase& c : cases) {
    for (const int hint : {0, 100, kRows}) {
      SCOPED_TRACE(fmt::format("{}, {} records expected", c.fName, hint));
      Open(text);
      GetData().GetBudget().Reserve((std::size_t{1} << 25) - 300000);
      GetData().SetSplit({1});
      ACAVarValidSpecs specs(true, true, true);
      specs.AddVariable(0, false, true, true, true);
      specs.AddVariable(1, true, true, true, true);
      specs.AddFreeVariable(false);
      Adapter adapter(specs, fSource);
      adapter.fReject = c.fReject;
      ACAProcDataSourceIter iter(adapter, true);
      std::vector<std::string> expected;
      while (iter.NewSplit()) expected.push_back(ShowRecords(iter, 3));
      iter.Restart();
      for (const std::string& records : expected) {
        ASSERT_TRUE(iter.NewSplit());
        ACADataFileIter file(adapter, {}, hint);
        ASSERT_TRUE(file.FillDataFile(iter));
        const std::string plain = std::regex_replace(records, std::regex(" \\|"), "") + " ";
        EXPECT_EQ(ShowFile(file), plain);
        EXPECT_EQ(ShowFile(file), plain) << "readable again";
      }
    }
  }
}

struct RunCase {
  const char* fName;
  std::function<std::string(int)> fValue;  // of the case with this number
  const char* fWeights[3];                 // in turn; null: none
  bool fPasses;                            // a missing value doesn't drop the case
  bool fSplit;
};

class RunsOfCases : public Adaptation {
 protected:
  static constexpr int kRows = 9000;

  void OpenRuns(const RunCase& c, std::size_t memory) {
    std::string text = "x,s,w,g\n";
    for (int i = 0; i < kRows; ++i) {
      text += fmt::format("{},{},{},{}\n", c.fValue(i), i * 7 % 3,
                          c.fWeights[1] == nullptr ? "1" : c.fWeights[i % 3], "cab"[i / 10 % 3]);
    }
    const TempData dictionary(R"({"fields": [{"name": "x", "missingValues": [-999]}]})", "d.json");
    Open(text, memory, {dictionary.GetFile(), {}});
    if (c.fSplit) GetData().SetSplit({1});
    if (c.fWeights[1] != nullptr) GetData().SetWeight(2);
  }

  // All that the two passes tell of the splits and their records.
  std::string Walk(bool asTheyAre, bool passes) {
    ACAVarValidSpecs specs(true, true, true);
    specs.AddVariable(0, false, passes, true, true);
    specs.AddFreeVariable(false);
    if (GetData().GetWeight() >= 0) specs.SetWeightVar();
    const int g = specs.AddVariable(3, true, true, true, true);
    Adapter adapter(specs, fSource);
    adapter.fTakesCasesAsTheyAre = asTheyAre;
    ACAProcDataSourceIter iter(adapter, true);
    std::string shown;
    while (iter.NewSplit()) {
      while (iter.HasRecord()) iter.AdvanceRun();
      shown += fmt::format("{}: {} to {}, ", ShowCounts(adapter), adapter.GetRecordVarMin(0),
                           adapter.GetRecordVarMax(0));
      for (int i = 0; i < adapter.GetRecordCatVarSize(g); ++i) {
        shown += adapter.DecodeRecordCatValue(g, i)->GetString();
      }
      adapter.ReorderRecordCats(g, true);
    }
    for (iter.Restart(); iter.NewSplit();) {
      ACADataFileIter file(adapter, {}, 0);
      EXPECT_TRUE(file.FillDataFile(iter));
      shown += fmt::format("; {}: {}", ShowCounts(adapter), ShowFile(file));
    }
    EXPECT_EQ(adapter.fRecords < 100, asTheyAre) << adapter.fRecords;
    return fmt::format("{}\n{}", shown, fmt::join(adapter.fvSeen, " "));
  }
};

TEST_F(RunsOfCases, TellTheSameAsCasesOneByOne) {
  const auto number = [](int i) { return fmt::format("{}", 7 * i % 1000 - 3); };
  const auto gaps = [&](int i) { return i % 5 == 2 ? "" : number(i); };
  const auto lateGaps = [&](int i) { return i > 4000 && i < 7000 ? "" : number(i); };
  const auto userMissing = [&](int i) { return i == 5000 ? "-999" : number(i); };
  const auto extremes = [](int i) { return i == 0 ? "-50" : i == kRows - 1 ? "60" : "1"; };
  const RunCase cases[] = {
      {"numbers", number, {}, false, false},
      {"numbers in splits", number, {}, false, true},
      {"missing values drop cases", gaps, {}, false, true},
      {"missing values pass", gaps, {}, true, false},
      {"one block has none but missing values", lateGaps, {}, false, false},
      {"a user-missing value", userMissing, {}, false, true},
      {"weights", gaps, {"2.6", "0", ""}, false, false},
      {"the extremes come first and last", extremes, {"1", "2", "0"}, false, false},
  };
  for (const RunCase& c : cases) {
    for (const std::size_t memory : {std::size_t{1} << 26, std::size_t{1} << 10}) {
      OpenRuns(c, memory);
      EXPECT_EQ(Walk(true, c.fPasses), Walk(false, c.fPasses)) << c.fName << ", memory " << memory;
    }
  }
}

TEST_F(Adaptation, StopsWhenInterrupted) {
  Open("x\n1\n2\n3\n");
  fSpecs.AddVariable(0, false, true, true, true);
  Adapter adapter(fSpecs, fSource);
  ACAProcDataSourceIter iter(adapter, true);
  ASSERT_TRUE(iter.NewSplit());
  ACADataFileIter file(adapter, {}, 0);
  fSession.Interrupt();
  EXPECT_FALSE(file.FillDataFile(iter));
  EXPECT_TRUE(fSource.FatalError());
  EXPECT_TRUE(ACAStopProcessor(0.0).IsCancelled());
}

TEST_F(Adaptation, ReportsADamagedFileOnceAndEndsTheRun) {
  std::string text = "x,y\n";
  for (int i = 0; i < 30000; ++i) text += "1,2\n";
  Open(text + "abc,3\n");
  fSpecs.AddVariable(0, false, true, true, true);
  BEPesRepos::BEPesClear();
  Adapter adapter(fSpecs, fSource);
  ACAProcDataSourceIter iter(adapter, true);
  EXPECT_EQ(iter.GetState(), ACAProcDataSourceIter::kReady) << "no word of missing cases";
  EXPECT_FALSE(iter.NewSplit());
  EXPECT_TRUE(fSource.FatalError());
  BEPesRepos::BEPesCheckError();
  BEPesRepos::BEPesCheckError();
  EXPECT_THAT(ShowMessages(),
              testing::StartsWith("error test.csv, line 30002, column 1 (x): \"abc\" is not"));
  EXPECT_EQ(fOutput->GetItems().size(), 1U);
  EXPECT_TRUE(fOutput->IsFailed());
}

TEST_F(Adaptation, SaysThatThereAreNoValidCases) {
  Open("x\n1\n");
  ACAInpAdaptMsg message(fSource);
  message.NoValidCasesForSelect();
  message.NoValidCases();
  message.NoValidCasesSplit();
  EXPECT_EQ(ShowMessages(),
            "error Host no cases for select ...\nerror Host no valid cases ...\n"
            "warning Host no valid cases, split [%1 = %2:,^1 = ^2:]1 ...\n");
}

}  // namespace
}  // namespace BayesHost
