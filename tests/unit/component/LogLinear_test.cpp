// Log-linear models: the reference cases, tables, statuses, interactions.
#include <algorithm>
#include <boost/math/special_functions/digamma.hpp>
#include <boost/math/special_functions/trigamma.hpp>
#include <cmath>

#include "component/numeric/RandomStream.h"
#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using Record = MCBSN_850::BSNLogLinearOutputStats;
using Table = std::vector<std::vector<double>>;

const json kNoOptions = json::object();

// The cells as weighted records: row code, column code, count.
std::vector<Column> RecordsOf(const Table& table) {
  std::vector<Column> columns(3);
  for (std::size_t i = 0; i < table.size(); ++i) {
    for (std::size_t j = 0; j < table[i].size(); ++j) {
      columns[0].push_back(static_cast<double>(i));
      columns[1].push_back(static_cast<double>(j));
      columns[2].push_back(table[i][j]);
    }
  }
  return columns;
}

std::vector<double> ShapesOf(const json& shapes) {
  if (!shapes.is_array()) return {shapes.get<double>()};
  std::vector<double> flat;
  for (const json& row : shapes) flat.insert(flat.end(), row.begin(), row.end());
  return flat;
}

BSNSettings TableSettings(std::size_t rows, std::size_t columns, const json& options) {
  BSNSettings settings;
  settings.SetModelType(BSNConst::LogLinear, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetFactors({0, 1});
  settings.SetFactorNCategs({static_cast<int>(rows), static_cast<int>(columns)});
  settings.SetFrequencyWeightVar(2);
  settings.SetLogLinModel(static_cast<BSNConst::DistTypes>(options.value("LogLinModel", 10)));
  settings.SetFixType(static_cast<BSNConst::FixType>(options.value("FixType", 0)));
  settings.SetLogLinPriorType(static_cast<BSNConst::LogLinPriorType>(options.value("LogLinPriorType", 0)));
  settings.SetLogLinShapes(ShapesOf(options.value("LogLinShapes", json(1.0))));
  settings.SetLambdas(options.value("Lambdas", std::vector<double>{}));
  settings.SetPriorScale(options.value("PriorScale", kMissing));
  settings.SetPosteriorSamples(options.value("PosteriorSamples", 1000L));
  settings.SetRandomSeed(3);
  return settings;
}

void ExpectTest(const std::string& name, const MCMath_850::MCTestStats& test, const json& expect,
                double tolerance) {
  ExpectNear(name, test.GetWald(), expect.at("value"), tolerance * expect.at("value").get<double>());
  EXPECT_EQ(test.GetDF(), expect.at("df"));
  ExpectNear(name + " significance", test.GetSig(), expect.at("sig"),
             tolerance * expect.at("sig").get<double>());
}

void ExpectClassical(const Record& record, const json& expect, double tolerance) {
  ExpectTest("chi-square", record.GetChiSquareResult(), expect.at("chisq"), tolerance);
  ExpectTest("likelihood ratio", record.GetLikeRatioResult(), expect.at("lr"), tolerance);
  const auto& contingency = record.GetContingencyMatrix();
  for (std::size_t i = 0; i < expect.at("expected").size(); ++i) {
    for (std::size_t j = 0; j < expect["expected"][i].size(); ++j) {
      EXPECT_NEAR(contingency.GetExpectedCounts().at(i).at(j), expect["expected"][i][j].get<double>(), 1e-9);
    }
  }
  EXPECT_EQ(contingency.GetNCellsExpLess5(), expect.at("cells_below_5"));
  EXPECT_NEAR(contingency.GetMinExpectedCount(), expect.at("min_expected").get<double>(), 1e-12);
  EXPECT_EQ(expect.contains("yates"), record.GetContCorrectResult().GetWald() != kMissing);
  if (!expect.contains("yates")) return;
  ExpectTest("continuity correction", record.GetContCorrectResult(), expect["yates"], tolerance);
  const json& fisher = expect.at("fisher");
  ExpectNear("two-sided", record.GetFisher2SidedSig(), fisher["two_sided"],
             tolerance * fisher["two_sided"].get<double>());
  ExpectNear("one-sided", record.GetFisher1SidedSig(), fisher["one_sided"],
             tolerance * fisher["one_sided"].get<double>());
}

// Simulation error in posterior standard deviations.
void ExpectInteractions(const Record& record, const json& expect, double samples) {
  ASSERT_EQ(record.GetPosteriorEstimations().size(), expect.size());
  for (std::size_t i = 0; i < expect.size(); ++i) {
    const MCBSN_850::BayesEstimation& actual = record.GetPosteriorEstimations()[i];
    const double variance = expect[i].at("variance");
    const double unit = std::sqrt(variance / samples);
    EXPECT_NEAR(actual.fMean, expect[i].at("mean").get<double>(), 5 * unit);
    EXPECT_NEAR(actual.fMedian, expect[i].at("median").get<double>(), 7 * unit);
    EXPECT_NEAR(actual.fLower, expect[i].at("lower").get<double>(), 20 * unit);
    EXPECT_NEAR(actual.fUpper, expect[i].at("upper").get<double>(), 20 * unit);
    EXPECT_NEAR(actual.fVariance, variance, 7 * variance / std::sqrt(samples));
  }
}

TEST(LogLinear, MatchesReferenceCases) {
  constexpr double kSamples = 40000;
  for (const json& row : ReferenceCases("loglinear")) {
    SCOPED_TRACE(row.at("name").get<std::string>());
    const json& input = row.at("input");
    const json& expect = row.at("expect");
    const Table table = input.at("table");
    json options = input.at("options");
    if (expect.contains("interactions")) options["PosteriorSamples"] = kSamples;
    Model<Record> model(TableSettings(table.size(), table[0].size(), options), RecordsOf(table));
    const Record& record = model.Record();
    Outcome outcome{{}, LogOf(record.GetBayesFactor(), record.IsLogBayesFactor()), {}, model.Codes()};
    if (record.IsLogBayesFactor()) {
      ASSERT_EQ(outcome.fvCodes, std::vector<int>{410041});
      outcome.fvCodes.clear();
    }
    ExpectOutcome(expect, outcome);
    if (expect.contains("classical")) ExpectClassical(record, expect["classical"], expect.at("tolerance"));
    if (expect.contains("interactions")) ExpectInteractions(record, expect["interactions"], kSamples);
  }
}

TEST(LogLinear, CountsCasesByTheirCodes) {
  const std::vector<Column> records = {{0, 1, 1, kMissing, 2, 1, -1, 0, 1},
                                       {2, 0, 0, 1, 1, kMissing, 0, 3, 0},
                                       {1, 2, 1, 5, 0.4, 5, 5, 5, 1.5}};
  Model<Record> model(TableSettings(3, 3, kNoOptions), records);
  const auto& table = model.Record().GetContingencyMatrix();
  EXPECT_EQ(table.GetAllCounts(), (Table{{0, 0, 1}, {5, 0, 0}, {0, 0, 0}}));
  EXPECT_EQ(table.GetRowTotals(), (Column{1, 5, 0}));
  EXPECT_EQ(table.GetColTotals(), (Column{5, 0, 1}));
  EXPECT_EQ(table.GetTotalWeight(), 6);
  EXPECT_EQ(table.GetNonEmptyRows(), (std::vector<int>{0, 1}));
  EXPECT_EQ(table.GetNonEmptyCols(), (std::vector<int>{0, 2}));
  EXPECT_EQ(table.GetNCellsExpLess5(), 4);
  EXPECT_EQ(table.GetPctCellsExpLess5(), 100);
  EXPECT_NEAR(table.GetMinExpectedCount(), 1.0 / 6, 1e-15);
  EXPECT_EQ(model.Record().GetPosteriorEstimations().size(), 4u);
}

const Table kTable = {{10, 3, 2}, {5, 8, 12}};

TEST(LogLinear, FixedColumnsAreTheRowsOfTheTransposedTable) {
  for (const int prior : {0, 1, 2}) {
    const json columns = {{"FixType", 1}, {"LogLinPriorType", prior}};
    const json rows = {{"FixType", 2}, {"LogLinPriorType", prior}};
    const Table transposed = {{10, 5}, {3, 8}, {2, 12}};
    Model<Record> model(TableSettings(2, 3, columns), RecordsOf(kTable));
    Model<Record> turned(TableSettings(3, 2, rows), RecordsOf(transposed));
    EXPECT_EQ(model.Record().GetBayesFactor(), turned.Record().GetBayesFactor()) << prior;
    EXPECT_EQ(model.Record().GetT(), 6);
    EXPECT_EQ(model.Record().GetT1(), 3);
    EXPECT_EQ(model.Record().GetT2(), 2);
  }
}

TEST(LogLinear, WithoutANamedMarginTheTotalIsFixedAndAPoissonModelIgnoresIt) {
  const auto bayesFactor = [](int model, int fix) {
    Model<Record> run(TableSettings(2, 3, {{"LogLinModel", model}, {"FixType", fix}}), RecordsOf(kTable));
    return run.Record().GetBayesFactor();
  };
  EXPECT_EQ(bayesFactor(10, 3), bayesFactor(10, 0));
  EXPECT_NE(bayesFactor(10, 1), bayesFactor(10, 0));
  EXPECT_EQ(bayesFactor(2, 1), bayesFactor(2, 3));
}

struct StatusRow {
  const char* fName;
  json fOptions;
  Table fTable;
  std::vector<int> fvCodes;
};

const StatusRow kStatuses[] = {
    {"no fault", kNoOptions, kTable, {}},
    {"one row", kNoOptions, {{0, 0}, {3, 4}}, {410051}},
    {"one column", kNoOptions, {{0, 5}, {0, 4}}, {410052}},
    {"one cell", kNoOptions, {{0, 5}, {0, 0}}, {410051, 410052}},
    {"intrinsic Poisson", {{"LogLinModel", 2}, {"LogLinPriorType", 2}}, kTable, {410053}},
    {"nonparametric mixture",
     {{"LogLinModel", 11}, {"LogLinPriorType", 1}, {"FixType", 2}},
     kTable,
     {410054}},
    {"nonparametric intrinsic", {{"LogLinModel", 11}, {"LogLinPriorType", 2}}, kTable, {410054}},
    {"nonparametric, no margin", {{"LogLinModel", 11}, {"FixType", 3}}, kTable, {410056}},
    {"small shapes", {{"LogLinShapes", 0.6}}, kTable, {410055}},
    {"small shapes that fixed rows allow", {{"LogLinShapes", 0.6}, {"FixType", 2}}, kTable, {}},
    {"small shapes of fixed columns", {{"LogLinShapes", 0.6}, {"FixType", 1}}, kTable, {410055}},
    {"logarithm", kNoOptions, {{40000, 0}, {0, 40000}}, {410041}},
};

TEST(LogLinear, SaysWhyTheBayesFactorIsMissingOrALogarithm) {
  for (const StatusRow& row : kStatuses) {
    SCOPED_TRACE(row.fName);
    BSNSettings settings = TableSettings(row.fTable.size(), row.fTable[0].size(), row.fOptions);
    Model<Record> model(settings, RecordsOf(row.fTable));
    EXPECT_EQ(model.Codes(), row.fvCodes);
    const bool isThere = row.fvCodes.empty() || row.fvCodes.front() == 410041;
    EXPECT_EQ(model.Record().GetBayesFactor() != kMissing, isThere);
    EXPECT_FALSE(model.Status().IsError());
    settings.SetAnalysType(BSNConst::Posterior);
    Model<Record> posterior(settings, RecordsOf(row.fTable));
    EXPECT_EQ(posterior.Record().GetBayesFactor(), kMissing);
    const bool isConstant =
        !row.fvCodes.empty() && row.fvCodes.front() <= 410052 && row.fvCodes.front() > 410041;
    EXPECT_EQ(posterior.Codes(), isConstant ? row.fvCodes : std::vector<int>());
  }
}

struct FailureRow {
  const char* fName;
  void (*fSpoil)(BSNSettings&);
  int fCode;
};

const FailureRow kFailures[] = {
    {"one factor",
     [](BSNSettings& s) {
       s.SetFactors({0});
       s.SetFactorNCategs({2});
     },
     410049},
    {"three factors",
     [](BSNSettings& s) {
       s.SetFactors({0, 1, 1});
       s.SetFactorNCategs({2, 3, 3});
     },
     410049},
    {"no case in the table",
     [](BSNSettings& s) {
       s.SetFactorNCategs({0, 0});
     },
     410003},
    {"shapes of another table",
     [](BSNSettings& s) {
       s.SetLogLinShapes({1, 2, 3, 4});
     },
     410000},
    {"a shape of 0", [](BSNSettings& s) { s.SetLogLinShapes({0}); }, 410000},
    {"a lambda of 0",
     [](BSNSettings& s) {
       s.SetLambdas({1, 0});
     },
     410000},
    {"a scale of 0", [](BSNSettings& s) { s.SetPriorScale(0); }, 410000},
    {"no such model", [](BSNSettings& s) { s.SetLogLinModel(BSNConst::Gamma); }, 410000},
};

TEST(LogLinear, FailsWithoutATableOrAModel) {
  for (const FailureRow& row : kFailures) {
    SCOPED_TRACE(row.fName);
    BSNSettings settings = TableSettings(2, 3, kNoOptions);
    row.fSpoil(settings);
    Model<Record> model(settings, RecordsOf(kTable));
    EXPECT_TRUE(model.Status().IsError());
    EXPECT_EQ(model.Codes(), std::vector<int>{row.fCode});
  }
}

// Moments from the logarithms of independent gamma variables.
TEST(LogLinear, InteractionsHaveTheMomentsOfLogGammas) {
  const double a[2][3] = {{11, 4, 3}, {6, 9, 13}};
  const json options = {{"PosteriorSamples", 50000}};
  Model<Record> model(TableSettings(2, 3, options), RecordsOf(kTable));
  for (std::size_t i = 0; i < 2; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      double mean = 0, variance = 0;
      for (std::size_t k = 0; k < 2; ++k) {
        for (std::size_t l = 0; l < 3; ++l) {
          const double weight = ((k == i) - 1.0 / 2) * ((l == j) - 1.0 / 3);
          mean += weight * boost::math::digamma(a[k][l]);
          variance += weight * weight * boost::math::trigamma(a[k][l]);
        }
      }
      const auto& estimation = model.Record().GetPosteriorEstimations().at(3 * i + j);
      EXPECT_NEAR(estimation.fMean, mean, 5 * std::sqrt(variance / 50000));
      EXPECT_NEAR(estimation.fVariance, variance, 5 * variance * std::sqrt(2.2 / 50000));
    }
  }
}

// Also the largest table, with draws in place of every recursion that it is too large for.
TEST(LogLinear, DoesNotDependOnTheThreads) {
  ReversedThreads threads;
  BayesComponent::RandomStream random(2);
  Table large(50, std::vector<double>(50));
  for (auto& row : large) {
    for (double& cell : row) cell = 1 + std::floor(9 * random.Uniform());
  }
  for (const Table& table : {kTable, large}) {
    BSNSettings settings = TableSettings(table.size(), table[0].size(), {{"PosteriorSamples", 200}});
    Model<Record> alone(settings, RecordsOf(table));
    settings.SetThreadFactory(&threads);
    Model<Record> together(settings, RecordsOf(table));
    const auto& a = alone.Record().GetPosteriorEstimations();
    const auto& b = together.Record().GetPosteriorEstimations();
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
      EXPECT_EQ(a[i].fMean, b[i].fMean);
      EXPECT_EQ(a[i].fLower, b[i].fLower);
      EXPECT_EQ(a[i].fUpper, b[i].fUpper);
    }
    EXPECT_EQ(alone.Record().GetBayesFactor(), together.Record().GetBayesFactor());
  }
}

// All interactions of a fourfold table are one number with two signs: no price for looking at four.
TEST(LogLinear, SimultaneousIntervalOfAFourfoldTableIsTheOrdinaryOne) {
  BSNSettings settings = TableSettings(2, 2, {{"PosteriorSamples", 10000}});
  settings.SetCILevel(90);
  Model<Record> model(settings, RecordsOf({{7, 2}, {3, 9}}));
  const auto& estimations = model.Record().GetPosteriorEstimations();
  // A quarter of the log odds ratio, nearly normal.
  const double variance = (boost::math::trigamma(8.0) + boost::math::trigamma(3.0) +
                           boost::math::trigamma(4.0) + boost::math::trigamma(10.0)) /
                          16;
  EXPECT_NEAR(estimations[0].fUpper - estimations[0].fLower, 2 * 1.645 * std::sqrt(variance), 0.05);
  EXPECT_NEAR(estimations[0].fLower, -estimations[1].fUpper, 1e-12);
}

TEST(LogLinear, SimultaneousIntervalsWidenWithTheTable) {
  Model<Record> model(TableSettings(2, 3, {{"PosteriorSamples", 20000}}), RecordsOf(kTable));
  for (const auto& estimation : model.Record().GetPosteriorEstimations()) {
    const double halfWidth = (estimation.fUpper - estimation.fLower) / 2;
    EXPECT_GT(halfWidth, 2.05 * std::sqrt(estimation.fVariance));
    // Three pairs of opposite numbers: no wider than Bonferroni.
    EXPECT_LT(halfWidth, 2.45 * std::sqrt(estimation.fVariance));
  }
}

class Cancel : public MCCommon_850::MCCancelQuery {
 public:
  bool IsCancelled() const override { return ++fQuestions > 3; }

 private:
  mutable int fQuestions = 0;
};

TEST(LogLinear, StopsAmongTheDraws) {
  Cancel cancel;
  BSNSettings settings = TableSettings(2, 3, {{"PosteriorSamples", 1000}});
  settings.SetCancelPointer(&cancel);
  Model<Record> model(settings, RecordsOf(kTable));
  EXPECT_EQ(model.Codes(), std::vector<int>{410001});
  EXPECT_THROW(model.Record(), std::logic_error);
}

}  // namespace
