#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/data/DataError.h"
#include "host/data/DataSet.h"
#include "platform/component/Common.h"
#include "support/TempData.h"

namespace BayesHost {
namespace {

using testing::AllOf;
using testing::HasSubstr;

constexpr double M = MCCommon_850::MCMV::Missing();

// The whole table as text, for comparison in one line: "x:number y:string | 1 a | . b".
std::string Show(DataSet& data) {
  std::string text;
  std::vector<int> all;
  for (int i = 0; i < data.CountVariables(); ++i) {
    const ZARQ_Variable& variable = data.GetVariable(i);
    text += (i > 0 ? " " : "") + variable.GetName() + (variable.IsString() ? ":string" : ":number");
    all.push_back(i);
  }
  data.Require(all);
  data.Load();
  CaseCursor cursor = data.MakeCursor(all);
  cursor.SetRange(0, data.CountCases());
  while (cursor.Next()) {
    text += " |";
    for (const int i : all) {
      const double value = cursor.GetValues()[i];
      const OBS shown = data.Decode(i, value);
      if (value == M) {
        text += " .";
      } else {
        text += " " + (shown.IsString() ? shown.GetString() : fmt::format("{}", value));
      }
    }
  }
  return text;
}

struct GoodFile {
  const char* fFault;
  std::string fText;
  std::string fExpected;
};

const std::string kTwoRows = "x:number y:string | 1 a | 2.5 b";

const std::vector<GoodFile> kGoodFiles = {
    {"comma", "x,y\n1,a\n2.5,b\n", kTwoRows},
    {"semicolon", "x;y\n1;a\n2.5;b\n", kTwoRows},
    {"tab", "x\ty\n1\ta\n2.5\tb\n", kTwoRows},
    {"bar", "x|y\n1|a\n2.5|b\n", kTwoRows},
    {"decimal comma", "x;y\n1;a\n2,5;b\n", kTwoRows},
    {"Windows line ends", "x,y\r\n1,a\r\n2.5,b\r\n", kTwoRows},
    {"old Mac line ends", "x,y\r1,a\r2.5,b\r", kTwoRows},
    {"byte order mark", "\xEF\xBB\xBFx,y\n1,a\n2.5,b\n", kTwoRows},
    {"no line end at the end", "x,y\n1,a\n2.5,b", kTwoRows},
    {"empty lines", "x,y\n1,a\n\n2.5,b\n\n\n", kTwoRows},
    {"quoted everything", "\"x\",\"y\"\n\"1\",\"a\"\n\"2.5\",\"b\"\n", kTwoRows},
    {"blanks around", " x , y\n 1,a\n 2.5 ,b  \n", kTwoRows},
    {"delimiter, quote and line end in quotes", "x,y\n1,\"a,\"\"b\"\"\nc\"\n",
     "x:number y:string | 1 a,\"b\"\nc"},
    {"backslash before a quote", "x,y\n1,\"a \\\"b\\\"\"\n2,c\n", "x:number y:string | 1 a \"b\" | 2 c"},
    {"a backslash ends a cell", "x,y\n1,\"c:\\\"\n2,\"d:\\\"\n", "x:number y:string | 1 c:\\ | 2 d:\\"},
    {"a quote inside an unquoted cell", "x,y\n1,5\" pipe\n2,b\n", "x:number y:string | 1 5\" pipe | 2 b"},
    {"missing cells", "a,b,c,d,e\n1,NA,,.,NaN\nNA,2, NA, ,   \n",
     "a:number b:number c:number d:number e:number | 1 . . . . | . 2 . . ."},
    {"missing strings", "x,y\n1,\n2,NA\n3,b\n", "x:number y:string | 1 . | 2 . | 3 b"},
    {"not finite, or next to it", "x\ninf\n-Infinity\nnan\n1e-400\n-1e308\n",
     "x:number | . | . | . | 0 | -1e+308"},
    {"signs and exponents", "x\n+3\n-.5\n1e3\n2.5E-1\n7.\n", "x:number | 3 | -0.5 | 1000 | 0.25 | 7"},
    {"truth values", "x,y\nTRUE,a\nfalse,b\n,c\n", "x:number y:string | 1 a | 0 b | . c"},
    {"truth values and numbers are text", "x,y\nTRUE,1\n2,2\n", "x:string y:number | TRUE 1 | 2 2"},
    {"dates are strings", "d,x\n2024-01-31,1\n", "d:string x:number | 2024-01-31 1"},
    {"a column without a name", "\"\",x\n1,5\n2,6\n", "V1:number x:number | 1 5 | 2 6"},
    {"no names at all", "1,a\n2,b\n", "V1:number V2:string | 1 a | 2 b"},
    {"no names, decimal comma", "1,5;a\n2,5;b\n", "V1:number V2:string | 1.5 a | 2.5 b"},
    {"a number among the names", "id,2010,x\na,5,6\n", "id:string 2010:number x:number | a 5 6"},
    {"numbers alone", "1,2\n", "V1:number V2:number | 1 2"},
    {"names that differ in case", "x,X\n1,2\n", "x:number X:number | 1 2"},
    {"an empty line of one column", "x\n1\n\n3\n", "x:number | 1 | . | 3"},
    {"one column, no names but text", "name\nada\nbob\n", "name:string | ada | bob"},
    {"names only", "x,y\n", "x:number y:number"},
    {"names only, no line end", "x,y", "x:number y:number"},
    {"a comma in tabbed text", "last, first\tx\nLee, Ann\t1\nRay, Bob\t2\n",
     "last, first:string x:number | Lee, Ann 1 | Ray, Bob 2"},
    {"letters beyond ASCII", "größe,y\n1,ä€😀\n", "größe:number y:string | 1 ä€😀"},
};

TEST(CsvFile, ReadsEveryUsualDialect) {
  for (const GoodFile& file : kGoodFiles) {
    SCOPED_TRACE(file.fFault);
    const TempData temp(file.fText);
    DataSet data(temp.GetFile(), {});
    EXPECT_EQ(Show(data), file.fExpected);
  }
}

// What reading the table says, as the user sees it.
std::string ReadError(const DataFile& file) {
  try {
    DataSet data(file, {});
    Show(data);
  } catch (const DataError& error) {
    return error.what();
  }
  return "no error";
}

struct BadFile {
  const char* fFault;
  std::string fText;
  std::vector<std::string> fPieces;
};

// Rows behind the sample that settles the types.
std::string Late(const std::string& head, const std::string& good, const std::string& bad) {
  std::string text = head;
  for (int i = 0; i < 30000; ++i) text += good;
  return text + bad + good;
}

const std::vector<BadFile> kBadFiles = {
    {"empty", "", {"test.csv: ", "is empty", "variable names"}},
    {"empty first line", "\n\nx,y\n1,2\n", {"test.csv, line 1: ", "empty lines"}},
    {"repeated name", "x,y,x\n1,2,3\n", {"line 1, column 3 (x)", "column 1"}},
    {"short line", "x,y\n1,2\n3\n", {"line 3: ", "has 1 cell, but 2 are expected (x, y)", "comma"}},
    {"long line", "x;y\n1;2\n3;4;5\n", {"line 3: ", "has 3 cells, but 2 are expected", "semicolon"}},
    {"long line behind quoted line ends", "x,y\n1,\"a\nb\"\n3,4,5\n", {"line 4: ", "has 3 cells"}},
    {"late short line", Late("x,y\n", "1,2\n", "3\n"), {"line 30002: ", "has 1 cell"}},
    {"late text",
     Late("x,y\n", "1,2\n", "3,abc\n"),
     {"line 30002, column 2 (y)", "\"abc\" is not a number", "leave it empty"}},
    {"too large",
     "x,y\n1,inf\n2,1e400\n",
     {"line 3, column 2 (y)", "\"1e400\" is too large", "leave it empty"}},
    {"late and too large, decimal comma",
     Late("x;y\n", "1;2,5\n", "1;-1,5e308\n") + "1;-9,5e307\n1;-2,5e308\n",
     {"line 30005, column 2 (y)", "\"-2,5e308\" is too large"}},
    {"late number among truth values",
     Late("x,y\n", "true,2\n", "maybe,2\n"),
     {"line 30002, column 1 (x)", "true or false"}},
    {"not UTF-8", "x,y\n1,caf\xE9\n", {"line 2, column 2 (y)", "UTF-8"}},
    {"late not UTF-8", Late("x,y\n", "1,b\n", "1,caf\xE9\n"), {"line 30002, column 2 (y)", "UTF-8"}},
    {"name not UTF-8", "x,caf\xE9\n1,2\n", {"line 1, column 2", "UTF-8"}},
    {"open quote", "x,y\n1,\"abc\n3,4\n", {"line 2, column 2 (y)", "no closing quote"}},
    {"text behind a quote", "x,y\n1,\"ab\"c\n3,4\n", {"line 2: ", "closing quote and the next comma"}},
    {"mixed line ends", "x,y\n1,2\r\n3,4\n", {"line 2: ", "line end"}},
    {"late mixed line ends", Late("x,y\n", "1,2\n", "1,2\r\n"), {"line 30002: ", "line end"}},
    {"archive", "\x1F\x8B\x08rest", {"gzip", "damaged"}},
    {"workbook", "PK\x03\x04rest", {"workbook", "CSV"}},
    {"UTF-16", std::string("\xFF\xFEx\0", 4), {"UTF-16", "UTF-8"}},
    {"binary", std::string("x,y\n1,\0\n", 8), {"binary"}},
};

TEST(CsvFile, NamesPlaceAndRemedyOfEveryFault) {
  for (const BadFile& file : kBadFiles) {
    SCOPED_TRACE(file.fFault);
    const TempData temp(file.fText);
    const std::string text = ReadError(temp.GetFile());
    for (const std::string& piece : file.fPieces) EXPECT_THAT(text, testing::HasSubstr(piece));
  }
}

TEST(CsvFile, RefusesWhatIsNoFile) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  EXPECT_THAT(ReadError({folder / "no such file.csv", "f.csv"}),
              testing::HasSubstr("f.csv: There is no such file"));
  EXPECT_THAT(ReadError({folder, "tmp"}), testing::HasSubstr("tmp: This is a folder"));
  EXPECT_THAT(ReadError({"/dev/null", "null"}), testing::HasSubstr("regular file"));
}

// The engine takes such names for patterns, and for SQL.
TEST(CsvFile, TakesFileNamesLiterally) {
  for (const char* name : {"a[1].csv", "it's.csv", "b*.csv", "c?.csv", "d e.csv"}) {
    SCOPED_TRACE(name);
    const TempData temp("x\n1\n", name);
    DataSet data(temp.GetFile(), {});
    EXPECT_EQ(Show(data), "x:number | 1");
  }
}

// Longer than what the engine reads at a time, behind the sample that the columns' types are taken from.
TEST(CsvFile, ReadsLongRecordsByItselfAndThroughAQuery) {
  const auto tableWith = [](std::size_t bytes) {
    return Late("x,y\n", "1,a\n", "2," + std::string(bytes, 'b') + "\n");
  };
  const TempData temp(tableWith(5 << 20));
  for (const char* sql : {"", "SELECT x FROM data"}) {
    DataOptions options;
    options.fSql = sql;
    DataSet data(temp.GetFile(), {std::size_t{1} << 28, 2}, options);
    data.Require({0});
    data.Load();
    EXPECT_EQ(data.CountCases(), 30002) << sql;
  }
  const TempData tooLong(tableWith(17 << 20));
  EXPECT_THAT(ReadError(tooLong.GetFile()), AllOf(HasSubstr("line 30002"), HasSubstr("longer than 16 MB")));
}

TEST(CsvFile, DescribesVariables) {
  const TempData temp("a,b,c,d\n1,2.50,yes,true\n-10,3.1,no way,false\n,1e-9,NA,\n");
  DataSet data(temp.GetFile(), {});
  const auto format = [&](int i) { return data.GetVariable(i).GetFormat(); };
  EXPECT_EQ(format(0).fDecimals, 0);
  EXPECT_EQ(format(0).fType, 5);
  EXPECT_EQ(format(1).fDecimals, 2);
  EXPECT_EQ(data.GetVariable(2).GetWidth(), 6);
  EXPECT_EQ(data.GetVariable(0).GetWidth(), 8);
  EXPECT_EQ(data.GetVariable(3).GetValueLabel(OBS(1.0)), "true");
  EXPECT_EQ(data.GetVariable(3).GetValueLabel(OBS(2.0)), "");
  EXPECT_EQ(data.GetVariable(0).GetPreferredLabel(), "a");
}

TEST(CsvFile, ShowsAtMostSixDecimals) {
  const TempData temp("x\n0.123456789\n");
  EXPECT_EQ(DataSet(temp.GetFile(), {}).GetVariable(0).GetFormat().fDecimals, 6);
}

}  // namespace
}  // namespace BayesHost
