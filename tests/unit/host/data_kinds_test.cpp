#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "host/data/DataError.h"
#include "host/data/DataSet.h"
#include "host/data/Dictionary.h"
#include "host/data/Engine.h"
#include "host/data/SqlText.h"
#include "platform/component/Common.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

using testing::HasSubstr;

constexpr double kMissing = MCCommon_850::MCMV::Missing();

// The first case of each variable, "name=value" with the decimals that tables show.
std::string ShowFirst(DataSet& data) {
  std::vector<int> all;
  for (int i = 0; i < data.CountVariables(); ++i) all.push_back(i);
  data.Require(all);
  data.Load();
  CaseCursor cursor = data.MakeFileCursor(all);
  cursor.SetRange(0, 1);
  cursor.Next();
  std::string text;
  for (const int i : all) {
    const ZARQ_Variable& variable = data.GetVariable(i);
    const OBS value = data.Decode(i, cursor.GetValues()[i]);
    char number[40] = "";
    if (!value.IsString())
      std::snprintf(number, sizeof number, "%.*f", variable.GetFormat().fDecimals, value.GetNumber());
    text += variable.GetName() + "=" + (value.IsString() ? "'" + value.GetString() + "'" : number) + " ";
  }
  return text;
}

TEST(EngineTable, TurnsEveryTypeIntoNumbersOrText) {
  const TempData temp("", "types.parquet");
  Engine({1, std::size_t{1} << 28, temp.GetFolder(), {temp.GetFile().fPath}})
      .Run(
          "COPY (SELECT 7::TINYINT AS i, 1.25::DECIMAL(9,3) AS d, 0.5::FLOAT AS f, 3.0::DOUBLE AS w, true AS "
          "b, "
          "DATE '2024-01-31' AS t, 'x y' AS s, 18446744073709551615::UBIGINT AS u) TO " +
          QuoteFile(temp.GetFile().fPath) + " (FORMAT parquet, USE_TMP_FILE false)");
  DataSet data(temp.GetFile(), {});
  EXPECT_EQ(ShowFirst(data), "i=7 d=1.250 f=0.5 w=3 b=1 t='2024-01-31' s='x y' u=18446744073709551616 ");
  EXPECT_EQ(data.GetVariable(4).GetValueLabel(OBS(1.0)), "true");
}

// However many fields of one kind there are, they aren't the entries of one map.
TEST(EngineTable, ReadsRecordsOfManyFields) {
  std::string record = "{";
  for (int i = 0; i < 500; ++i)
    record += (i > 0 ? ",\"v" : "\"v") + std::to_string(i) + "\":" + std::to_string(i);
  const TempData temp(record + "}\n", "wide.ndjson");
  DataSet data(temp.GetFile(), {});
  EXPECT_EQ(data.CountVariables(), 500);
  EXPECT_THAT(ShowFirst(data), testing::EndsWith("v498=498 v499=499 "));
}

// In a column without any missing value of its own, among few rows and many.
TEST(EngineTable, TakesWhatIsNotFiniteForMissing) {
  constexpr int kRows = 3000;
  const TempData temp("", "wide.parquet");
  Engine({1, std::size_t{1} << 28, temp.GetFolder(), {temp.GetFile().fPath}})
      .Run(
          "COPY (SELECT CASE WHEN i = 5 THEN 'inf' WHEN i = 1999 THEN '-inf' WHEN i = 2999 THEN 'nan' "
          "ELSE '1' END::DOUBLE AS x FROM range(3000) t(i)) TO " +
          QuoteFile(temp.GetFile().fPath) + " (FORMAT parquet, USE_TMP_FILE false)");
  DataSet data(temp.GetFile(), {});
  data.Require({0});
  data.Load();
  CaseCursor cursor = data.MakeFileCursor({0});
  cursor.SetRange(0, kRows);
  std::vector<int> missing;
  for (int i = 0; cursor.Next(); ++i) {
    if (cursor.GetValues()[0] != 1) missing.push_back(i);
    EXPECT_EQ(cursor.GetValues()[0], missing.empty() || missing.back() != i ? 1.0 : kMissing);
  }
  EXPECT_THAT(missing, testing::ElementsAre(5, 1999, 2999));
}

TEST(EngineTable, JsonOfMixedKindsIsTextAndLateFieldsAreFound) {
  std::string text;
  for (int i = 0; i < 30000; ++i) text += "{\"a\": 1}\n";
  const TempData temp(text + "{\"a\": \"one\", \"late\": 2}\n", "late.ndjson");
  DataSet data(temp.GetFile(), {});
  ASSERT_EQ(data.CountVariables(), 2);
  EXPECT_TRUE(data.GetVariable(0).IsString());
  EXPECT_FALSE(data.GetVariable(1).IsString());
  EXPECT_EQ(data.CountCases(), 30001U);
}

TEST(Engine, ReadsAndWritesNothingButItsFiles) {
  const TempData mine("x\n1\n");
  const TempData other("x\n1\n");
  Engine engine({1, std::size_t{1} << 28, mine.GetFolder(), {mine.GetFile().fPath}});
  const std::string secret = QuoteFile(other.GetFile().fPath);
  engine.Run("FROM " + QuoteFile(mine.GetFile().fPath));
  for (const std::string& sql :
       {"FROM " + secret, "FROM read_text(" + secret + ")", "COPY (SELECT 1) TO " + secret,
        "ATTACH " + secret, std::string("SET enable_external_access = true"),
        "SET allowed_paths = [" + secret + "]", std::string("INSTALL httpfs")}) {
    EXPECT_THROW(engine.Run(sql), EngineError) << sql;
  }
}

TEST(Dictionary, SettlesFormatLevelLabelsAndMissing) {
  const TempData temp(R"({"fields": [
    {"name": "x", "type": "number", "decimals": 3, "title": "The x", "missingValues": [-9, {"value": "-8", "label": "no"}]},
    {"name": "s", "type": "string", "categories": ["a", {"value": 1, "label": "one"}], "categoriesOrdered": true}]})",
                      "d.json");
  const Dictionary dictionary(temp.GetFile());
  VariableState x;
  x.fName = "x";
  dictionary.Complete(x);
  EXPECT_EQ(x.fFormat.fDecimals, 3);
  EXPECT_EQ(x.fLabel, "The x");
  EXPECT_THAT(x.fvUserMissing, testing::ElementsAre(OBS(-9.0), OBS(-8.0)));
  VariableState s;
  s.fName = "s";
  s.fIsString = true;
  dictionary.Complete(s);
  EXPECT_EQ(s.fLevel, VariableState::Level::Ordinal);
  ASSERT_EQ(s.fvValueLabels.size(), 1U);
  EXPECT_EQ(s.fvValueLabels[0].first, OBS(std::string("1"))) << "a text variable's categories are texts";
  s.fName = "x";
  EXPECT_THROW(dictionary.Complete(s), DataError) << "text in place of numbers";
}

TEST(Dictionary, ColumnsWithWordsForMissingKeepTheDecimalComma) {
  const TempData temp("x;b;y\n1,5;0;n/a\nno;yes;2\n");
  std::ofstream(temp.GetFolder() / "test.json")
      << R"({"fields": [{"name": "x", "type": "number", "missingValues": ["no"]}, {"name": "b", "type": "boolean"},
                        {"name": "y", "type": "integer", "missingValues": ["n/a"]}]})";
  DataSet data(temp.GetFile(), {});
  EXPECT_THAT(ShowFirst(data), HasSubstr("x=1.5 b=0 "));
  EXPECT_EQ(data.CountCases(), 2U);
}

struct Shown {
  const char* fEngine;
  const char* fReader;
};

TEST(SqlText, ErrorsBecomeOneLine) {
  for (const Shown& text :
       {Shown{"Binder Error: No column \"z\"!\nCandidates: \"x\"\n\nLINE 1: SELECT z\n ^",
              "No column \"z\"! Candidates: \"x\"."},
        Shown{"Out of Memory Error: too much\n\nPossible solutions:\n* SET threads", "too much."},
        Shown{"something else", "something else."}}) {
    EXPECT_EQ(MakeReadable(text.fEngine), text.fReader);
  }
  EXPECT_EQ(QuoteText("it's"), "'it''s'");
  EXPECT_EQ(QuoteName("a\"b"), "\"a\"\"b\"");
}

// More cases than sorting holds in memory at a time, and a column that lies in a file.
TEST(DataSet, UnsortedSplitsKeepTheirOrderBeyondMemory) {
  constexpr int kCases = 600000;
  constexpr int kGroups = 7;
  std::string text = "g,x\n";
  for (int i = 0; i < kCases; ++i) text += std::to_string(i * 5 % kGroups) + "," + std::to_string(i) + "\n";
  const TempData temp(text);
  for (const int threads : {1, 3}) {
    SCOPED_TRACE(threads);
    DataSet data(temp.GetFile(), {std::size_t{8} << 20, threads});
    data.SetSplit({0});
    data.Require({1});
    data.Load();
    ASSERT_EQ(data.GetGroups().size(), static_cast<std::size_t>(kGroups));
    CaseCursor cursor = data.MakeCursor({0, 1});
    std::uint64_t cases = 0;
    for (int group = 0; group < kGroups; ++group) {
      const SplitIndex::Group& range = data.GetGroups()[static_cast<std::size_t>(group)];
      cursor.SetRange(range.fBegin, range.fEnd);
      for (double previous = -1; cursor.Next(); previous = cursor.GetValues()[1], ++cases) {
        ASSERT_EQ(cursor.GetValues()[0], group);
        ASSERT_GT(cursor.GetValues()[1], previous);
        ASSERT_EQ(static_cast<int>(cursor.GetValues()[1]) * 5 % kGroups, group);
      }
    }
    EXPECT_EQ(cases, static_cast<std::uint64_t>(kCases));
  }
}

}  // namespace
}  // namespace BayesHost
