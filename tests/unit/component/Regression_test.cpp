// Linear regression and one-way analysis of variance through the component.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <set>
#include <tuple>

#include "component/numeric/Distribution.h"
#include "component/numeric/RegressionBayesFactor.h"
#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using BayesComponent::GaussLobatto;
using MCBSN_850::BayesEstimation;
using MCBSN_850::BayesFTest;
using Regression = MCBSN_850::BSNMultiRegOutputStats;

const GaussLobatto kQuadrature(1e-6, 2000);

// Category codes in ascending order of the values.
Column CodesOf(const json& values, int& levels) {
  const auto isLess = [](const json& left, const json& right) { return left < right; };
  std::set<json, decltype(isLess)> categories(values.begin(), values.end(), isLess);
  levels = static_cast<int>(categories.size());
  Column codes;
  for (const json& value : values) {
    codes.push_back(static_cast<double>(std::distance(categories.begin(), categories.find(value))));
  }
  return codes;
}

// A reference case as settings and columns: each variable has the slot at which it was met first.
class CaseSetup {
 public:
  CaseSetup(const json& input, BSNConst::ModelTypes model) : fInput(input) {
    const json& options = input.at("options");
    fSettings.SetModelType(model, true);
    fSettings.SetAnalysType(BSNConst::Both);
    fSettings.SetComputeVarianceInScoring(true);
    fSettings.SetRegrCompType(static_cast<BSNConst::RegrCompute>(options.value("RegrCompType", 0)));
    fSettings.SetRegrComPar(NumberOrMissing(options.value("RegrComPar", json())));
    fSettings.SetCompareType(static_cast<BSNConst::CompareTypes>(options.value("CompareType", 0)));
    fSettings.SetCILevel(options.value("CILevel", 95.0));
    fSettings.SetDependVar(SlotOf(input.at("dependent")));
    fSettings.SetFactors(SlotsOf("factors"));
    fSettings.SetFactorNCategs(LevelsOf("factors"));
    fSettings.SetCovariates(SlotsOf("covariates"));
    fSettings.SetFullModFactors(SlotsOf("full_factors"));
    fSettings.SetFullModFactorNCategs(LevelsOf("full_factors"));
    fSettings.SetFullModCovariates(SlotsOf("full_covariates"));
    if (input.contains("regression_weight")) {
      fSettings.SetRegrWeightVar(SlotOf(input["regression_weight"]));
    }
    SetPrior(options);
    SetTests();
    SetPredict();
  }

  BSNSettings fSettings;
  std::vector<Column> fvColumns;

 private:
  int SlotOf(const std::string& name) {
    const auto [entry, isNew] = fSlots.try_emplace(name, static_cast<int>(fvColumns.size()));
    if (isNew) {
      const json& values = fInput.at("data").at(name);
      const bool isFactor = IsFactor(name);
      fvColumns.push_back(isFactor ? CodesOf(values, fLevels[name]) : ColumnOf(values));
    }
    return entry->second;
  }
  bool IsFactor(const std::string& name) const {
    const json factors = fInput.value("factors", json::array());
    return std::find(factors.begin(), factors.end(), name) != factors.end();
  }
  std::vector<int> SlotsOf(const char* list) {
    std::vector<int> slots;
    for (const json& name : fInput.value(list, json::array())) slots.push_back(SlotOf(name));
    return slots;
  }
  std::vector<int> LevelsOf(const char* list) {
    std::vector<int> levels;
    for (const json& name : fInput.value(list, json::array())) levels.push_back(fLevels.at(name));
    return levels;
  }
  void SetPrior(const json& options) {
    fSettings.SetPriorType(static_cast<BSNConst::PriorTypes>(options.value("PriorType", 1)));
    if (fSettings.GetPriorType() != BSNConst::Conjugate) return;
    fSettings.SetPriorShape(options.at("PriorShape"));
    fSettings.SetPriorScale(options.at("PriorScale"));
    fSettings.SetPriorMeans(options.at("PriorMeans"));
    std::vector<double> triangle;
    for (std::size_t i = 0; i < fSettings.GetPriorMeans().size(); ++i) {
      for (std::size_t j = 0; j <= i; ++j) triangle.push_back(options.at("PriorCovMatrix").at(i).at(j));
    }
    fSettings.SetPriorCovMatrix(triangle);
  }
  void SetTests() {
    std::vector<BayesFTest> tests;
    for (const json& wanted : fInput.value("ftests", json::array())) {
      std::vector<int> slots;
      for (const json& name : wanted.at("variables")) slots.push_back(SlotOf(name));
      BayesFTest& test = tests.emplace_back();
      test.SetVariables(slots);
      test.SetIntercept(wanted.value("intercept", false));
      test.SetTestValues(wanted.value("values", std::vector<double>()));
    }
    fSettings.SetFTests(tests);
  }
  void SetPredict() {
    if (!fInput.contains("predict")) return;
    const json& values = fInput["predict"];
    const std::size_t nFactors = fSettings.GetFactors().size();
    std::vector<double> point;
    for (std::size_t i = 0; i < values.size(); ++i) {
      point.push_back(i < nFactors ? CodeOf(fInput.at("factors").at(i), values[i]) : values[i].get<double>());
    }
    fSettings.SetRegressors(point);
  }
  double CodeOf(const std::string& factor, const json& value) const {
    const json& values = fInput.at("data").at(factor);
    const auto position = std::find(values.begin(), values.end(), value) - values.begin();
    return fvColumns.at(static_cast<std::size_t>(fSlots.at(factor))).at(static_cast<std::size_t>(position));
  }

  const json& fInput;
  std::map<std::string, int> fSlots;
  std::map<std::string, int> fLevels;
};

void ExpectEstimation(const std::string& what, const BayesEstimation& actual, const json& expected,
                      double tolerance) {
  const json variance = expected.value("variance", json());
  const double sd = variance.is_null() ? 0 : std::sqrt(variance.get<double>());
  const std::tuple<const char*, double> rows[] = {{"mode", actual.fMode},
                                                  {"mean", actual.fMean},
                                                  {"variance", actual.fVariance},
                                                  {"lower", actual.fLower},
                                                  {"upper", actual.fUpper}};
  for (const auto& [name, value] : rows) {
    if (!expected.contains(name)) continue;
    const double size = std::abs(NumberOrMissing(expected[name]));
    const bool isLocation = std::string(name) != "variance";
    ExpectNear(what + ' ' + name, value, expected[name],
               tolerance * (isLocation ? std::max(size, sd) : size));
  }
}

void ExpectRelative(const std::string& what, double actual, const json& expected, double tolerance) {
  ExpectNear(what, actual, expected, tolerance * std::abs(NumberOrMissing(expected)));
}

BayesEstimation ScoreAtPredictionPoint(const Regression& record, const BSNSettings& settings,
                                       std::size_t size) {
  std::vector<double> values(size, kMissing);
  std::vector<int> slots = settings.GetFactors();
  slots.insert(slots.end(), settings.GetCovariates().begin(), settings.GetCovariates().end());
  for (std::size_t i = 0; i < slots.size(); ++i) {
    values.at(static_cast<std::size_t>(slots[i])) = record.GetPredictionPoint().at(i);
  }
  BayesEstimation estimation;
  EXPECT_TRUE(record.Score({values.data()}, estimation));
  return estimation;
}

void ExpectLnBF(double actual, const json& expect) {
  const double size = std::max(1.0, std::abs(NumberOrMissing(expect.at("lnBF"))));
  ExpectNear("lnBF", actual, expect.at("lnBF"), expect.at("tolerance").get<double>() * size);
}

void ExpectRecord(const json& expect, const Regression& record, const CaseSetup& setup) {
  const double tolerance = expect.at("tolerance");
  ExpectLnBF(LogOf(record.GetBayesFactor(), record.IsLogBayesFactor()), expect);
  for (std::size_t i = 0; i < expect.value("anova", json::array()).size(); ++i) {
    ExpectRelative("anova " + std::to_string(i), record.GetAnova().at(i), expect["anova"][i], tolerance);
  }
  if (!expect.contains("coefficients")) return;
  ExpectRelative("R2", record.GetRSquared(), expect.at("R2"), tolerance);
  ExpectRelative("adjusted R2", record.GetAdjRSquared(), expect.at("adj_R2"), tolerance);
  ExpectRelative("R2 of the full model", record.GetRSquaredFull(), expect.value("R2_full", json()),
                 tolerance);

  const json& coefficients = expect["coefficients"];
  ASSERT_EQ(record.GetVarCoeffBayesEstimations().size(), coefficients.size());
  for (std::size_t i = 0; i < coefficients.size(); ++i) {
    const std::string name = coefficients[i].at("name");
    EXPECT_EQ(record.GetRedundancy().IsIn(i), coefficients[i].at("redundant").get<bool>()) << name;
    ExpectEstimation(name, record.GetVarCoeffBayesEstimations()[i], coefficients[i], tolerance);
  }
  ExpectEstimation("error variance", record.GetErrorBayesEstimation(), expect.at("error_variance"),
                   tolerance);
  ExpectEstimation("predicted", record.GetPredictedBayesEstimation(),
                   expect.value("predicted", json::object()), tolerance);
  const BayesEstimation score = ScoreAtPredictionPoint(record, setup.fSettings, setup.fvColumns.size());
  // The score has the response's mean and variance, with the limits of the mean.
  json predicted = expect.value("predicted", json::object());
  predicted.update(expect.value("mean_prediction_at_x0", json::object()));
  ExpectEstimation("score", score, predicted, tolerance);

  const json tests = expect.value("ftests", json::array());
  ASSERT_EQ(record.GetFTestResults().size(), tests.size());
  for (std::size_t i = 0; i < tests.size(); ++i) {
    const auto& actual = record.GetFTestResults()[i];
    ExpectRelative("F", actual.GetWald(), tests[i].at("F"), tolerance);
    ExpectRelative("df1", actual.GetDF(), tests[i].at("df1"), tolerance);
    ExpectRelative("df2", actual.GetDF2(), tests[i].at("df2"), tolerance);
    ExpectRelative("Sig", actual.GetSig(), tests[i].at("sig"), tolerance);
  }
}

void CheckData(const json& row, BSNConst::ModelTypes model) {
  const json& expect = row.at("expect");
  const CaseSetup setup(row.at("input"), model);
  Model<Regression> run(setup.fSettings, setup.fvColumns);
  EXPECT_EQ(run.Codes(), expect.value("status", std::vector<int>()));
  if (run.Status().IsError()) {
    EXPECT_TRUE(expect.at("lnBF").is_null());
  } else {
    ExpectRecord(expect, run.Record(), setup);
  }
}

// A row of the reference with numbers in place of data; groups for analysis of variance.
double LogBF10(const json& input) {
  const json& options = input.at("options");
  const int method = options.value("RegrCompType", 0);
  const json parameter = options.value("RegrComPar", json());
  BayesComponent::RegressionFit fit{};
  if (input.contains("group_n")) {
    const Column n = input["group_n"];
    const auto effects = BayesComponent::OneWayEffects(n, input.at("group_means"), input.at("within_ss"),
                                                       std::accumulate(n.begin(), n.end(), 0.0));
    if (method == 3) return LogBF10Effects(effects, parameter, kQuadrature).fLogValue;
    fit = {effects.fN, static_cast<double>(n.size()) - 1, 1 - effects.fUnexplained, effects.fUnexplained};
  } else {
    const double unexplained = input.at("one_minus_R2");
    fit = {input.at("N"), input.at("p"), 1 - unexplained, unexplained};
  }
  if (method == 1) return LogBF10GivenG(fit, parameter.is_null() ? fit.fN : parameter.get<double>());
  if (method == 2) return LogBF10HyperG(fit, parameter, kQuadrature).fLogValue;
  return LogBF10Cauchy(fit, method == 3 ? parameter.get<double>() : 1, kQuadrature).fLogValue;
}

TEST(Regression, MatchesReferenceCases) {
  for (const auto& [file, model] :
       {std::pair("regression", BSNConst::Regression), std::pair("anova", BSNConst::Anova)}) {
    for (const json& row : ReferenceCases(file)) {
      SCOPED_TRACE(row.at("name").get<std::string>());
      if (row.at("input").contains("data")) {
        CheckData(row, model);
      } else {
        ExpectLnBF(LogBF10(row.at("input")), row.at("expect"));
      }
    }
  }
}

BSNSettings CovariateSettings(int covariates) {
  BSNSettings settings;
  settings.SetModelType(BSNConst::Regression, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetPriorType(BSNConst::Reference);
  settings.SetDependVar(0);
  std::vector<int> slots;
  for (int i = 1; i <= covariates; ++i) slots.push_back(i);
  settings.SetCovariates(slots);
  return settings;
}

// The certified coefficients of NIST's Statistical Reference Datasets, Longley, in the units of the paper.
TEST(Regression, KeepsTenDigitsOfLongley) {
  const std::pair<const char*, double> units[] = {
      {"employed", 1000},   {"deflator", 1},      {"gnp", 1000}, {"unemployed", 10},
      {"armed_forces", 10}, {"population", 1000}, {"year", 1}};
  std::vector<Column> columns;
  for (const json& row : ReferenceCases("regression")) {
    if (row.at("name") != "longley (ill-conditioned)") continue;
    for (const auto& [name, unit] : units) {
      Column column = ColumnOf(row.at("input").at("data").at(name));
      for (double& value : column) value = unit == 1 ? value : std::round(value * unit);
      columns.push_back(column);
    }
  }
  ASSERT_EQ(columns.size(), 7u);
  Model<Regression> run(CovariateSettings(6), columns);
  const double certified[] = {-3482258.63459582, 15.0618722713733,  -0.358191792925910E-01,
                              -2.02022980381683, -1.03322686717359, -0.511041056535807E-01,
                              1829.15146461355};
  const double deviations[] = {890420.383607373,  84.9149257747669,  0.334910077722432E-01, 0.488399681651699,
                               0.214274163161675, 0.226073200069370, 455.478499142212};
  for (std::size_t i = 0; i < 7; ++i) {
    const BayesEstimation& b = run.Record().GetVarCoeffBayesEstimations().at(i);
    EXPECT_NEAR(b.fMode / certified[i], 1, 1e-10) << i;
    // The posterior has 9 degrees of freedom.
    EXPECT_NEAR(std::sqrt(b.fVariance * 7 / 9) / deviations[i], 1, 1e-10) << i;
  }
  EXPECT_NEAR(std::sqrt(run.Record().GetAnova().at(7)) / 304.854073561965, 1, 1e-10);
}

// y = 1 + x + ... + x^5 (Wampler 1970, JASA 65:549-565): powers that are nearly collinear, and nothing left
// over.
TEST(Regression, FindsAPerfectFitOfPowers) {
  std::vector<Column> columns(6, Column(21, 1.0));
  for (std::size_t i = 0; i < 21; ++i) {
    for (std::size_t power = 1; power < 6; ++power) {
      columns[power][i] = std::pow(static_cast<double>(i), static_cast<double>(power));
      columns[0][i] += columns[power][i];
    }
  }
  Model<Regression> run(CovariateSettings(5), columns);
  EXPECT_EQ(run.Codes(), std::vector<int>{410014});
  EXPECT_EQ(run.Record().GetAnova().at(5), 0);
  EXPECT_EQ(run.Record().GetAnova().at(3), kMissing);
  EXPECT_EQ(run.Record().GetAnova().at(4), kMissing);
  for (const BayesEstimation& b : run.Record().GetVarCoeffBayesEstimations()) {
    EXPECT_NEAR(b.fMode, 1, 1e-8);
    EXPECT_EQ(b.fLower, b.fUpper);
    EXPECT_EQ(b.fVariance, 0);
  }
  columns[0][3] += 1e-6;
  EXPECT_EQ(Model<Regression>(CovariateSettings(5), columns).Codes(), std::vector<int>());
}

// Columns of a design with two factors (3 and 2 levels) and a covariate, the response in front.
const std::vector<Column> kDesign = {{3.1, 4.7, 5.2, 9.9, 7.4, 8.8, 2.5, 6.1, 7.7, 10.2, 4.4, 5.9},
                                     {0, 1, 2, 2, 1, 0, 0, 1, 2, 2, 1, 0},
                                     {0, 0, 0, 1, 1, 1, 0, 1, 0, 1, 0, 1},
                                     {1.5, 2.5, 0.5, 4.1, 3.3, 6.2, 1.1, 2.8, 4.9, 3.7, 2.2, 3.1}};

BSNSettings FactorSettings() {
  BSNSettings settings = CovariateSettings(0);
  settings.SetFactors({1, 2});
  settings.SetFactorNCategs({3, 2});
  settings.SetCovariates({3});
  return settings;
}

Column IndicatorOf(const Column& codes, double code) {
  Column indicator;
  for (const double value : codes) indicator.push_back(value == code ? 1 : 0);
  return indicator;
}

std::vector<double> ModesOf(const Regression& record) {
  std::vector<double> modes;
  for (const BayesEstimation& b : record.GetVarCoeffBayesEstimations()) {
    if (b.fMode != kMissing) modes.push_back(b.fMode);
  }
  return modes;
}

void ExpectSameModel(const Regression& left, const Regression& right) {
  const auto near = [](const std::vector<double>& a, const std::vector<double>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i)
      EXPECT_NEAR(a[i], b[i], 1e-11 * std::max(1.0, std::abs(b[i]))) << i;
  };
  near(ModesOf(left), ModesOf(right));
  near(left.GetAnova(), right.GetAnova());
  near({left.GetBayesFactor(), left.GetErrorBayesEstimation().fUpper},
       {right.GetBayesFactor(), right.GetErrorBayesEstimation().fUpper});
}

TEST(Regression, TreatsFactorsAsTheirIndicators) {
  Model<Regression> factors(FactorSettings(), kDesign);
  Model<Regression> indicators(CovariateSettings(4),
                               {kDesign[0], IndicatorOf(kDesign[1], 0), IndicatorOf(kDesign[1], 1),
                                IndicatorOf(kDesign[2], 0), kDesign[3]});
  EXPECT_EQ(factors.Codes(), std::vector<int>());
  ExpectSameModel(factors.Record(), indicators.Record());
  const auto& parameters = factors.Record().GetRegrParameters();
  ASSERT_EQ(parameters.size(), 7u);
  EXPECT_TRUE(parameters[0].IsIntercept());
  EXPECT_EQ(parameters[5].GetFactors(), std::vector<int>{2});
  EXPECT_EQ(parameters[5].GetCategories(), std::vector<int>{1});
  EXPECT_EQ(parameters[6].GetCovariates(), std::vector<int>{3});
  EXPECT_EQ(factors.Record().GetPredictionPoint().at(0), 2);
  EXPECT_EQ(factors.Record().GetPredictionPoint().at(1), 1);
  EXPECT_NEAR(factors.Record().GetPredictionPoint().at(2), 35.9 / 12, 1e-14);
}

TEST(Regression, CountsCasesByFrequencyAndVarianceByRegressionWeight) {
  std::vector<Column> repeated = kDesign;
  for (Column& column : repeated) column.insert(column.end(), {column[0], column[0], column[5]});
  std::vector<Column> counted = kDesign;
  counted.push_back({3, 1, 1, 1, 1, 2, 1, 1, 1, 1, 1, 1});
  BSNSettings settings = FactorSettings();
  settings.SetFrequencyWeightVar(4);
  Model<Regression> byFrequency(settings, counted);
  ExpectSameModel(byFrequency.Record(), Model<Regression>(FactorSettings(), repeated).Record());

  // As precisions, the same numbers give the same coefficients with fewer cases.
  settings.SetFrequencyWeightVar(-1);
  settings.SetRegrWeightVar(4);
  Model<Regression> byPrecision(settings, counted);
  EXPECT_EQ(byPrecision.Record().GetAnova().at(9), 11);
  EXPECT_NEAR(byPrecision.Record().GetAnova().at(5), byFrequency.Record().GetAnova().at(5), 1e-12);
  for (double& weight : counted[4]) weight *= 4;
  Model<Regression> scaled(settings, counted);
  EXPECT_NEAR(
      scaled.Record().GetErrorBayesEstimation().fMode / byPrecision.Record().GetErrorBayesEstimation().fMode,
      4, 1e-12);
  EXPECT_NEAR(scaled.Record().GetBayesFactor() / byPrecision.Record().GetBayesFactor(), 1, 1e-10);
}

TEST(Regression, LeavesOutCasesThatLackAValue) {
  std::vector<Column> spoilt = kDesign;
  spoilt.push_back(Column(12, 1.0));
  const std::vector<double> cases[] = {{kMissing, 1, 1, 2, 1}, {5, -1, 1, 2, 1},       {5, 3, 1, 2, 1},
                                       {5, 1, kMissing, 2, 1}, {5, 1, 1, kMissing, 1}, {5, 1, 1, 2, kMissing},
                                       {5, 1, 1, 2, 0},        {5, 1, 1, 2, -3}};
  for (const auto& values : cases) {
    for (std::size_t i = 0; i < spoilt.size(); ++i) spoilt[i].insert(spoilt[i].begin() + 4, values[i]);
  }
  BSNSettings settings = FactorSettings();
  settings.SetRegrWeightVar(4);
  ExpectSameModel(Model<Regression>(settings, spoilt).Record(),
                  Model<Regression>(FactorSettings(), kDesign).Record());
}

struct RedundancyRow {
  const char* fName;
  std::vector<Column> fvCovariates;
  std::vector<bool> fvRedundant;  // intercept first
};

Column Mapped(const Column& column, double (*function)(double)) {
  Column mapped(column.size());
  std::transform(column.begin(), column.end(), mapped.begin(), function);
  return mapped;
}

Column Sum(const Column& left, const Column& right) {
  Column sum(left.size());
  std::transform(left.begin(), left.end(), right.begin(), sum.begin(), std::plus<>());
  return sum;
}

TEST(Regression, FlagsWhatEarlierParametersDetermine) {
  const Column& x = kDesign[3];
  const Column z = {0.1, 0.7, 0.2, 0.9, 0.4, 0.8, 0.5, 0.1, 0.7, 0.2, 0.4, 0.9};
  const Column far = Mapped(x, [](double v) { return v + 1e9; });
  const RedundancyRow rows[] = {
      {"independent", {x, z}, {false, false, false}},
      {"a constant of decimals", {Column(12, 0.1), x}, {false, true, false}},
      {"twice the same", {x, z, x}, {false, false, false, true}},
      {"another unit", {x, Mapped(x, [](double v) { return 32 + 1.8 * v; }), z}, {false, false, true, false}},
      {"a sum", {x, z, Sum(x, z)}, {false, false, false, true}},
      {"a sum before its part", {Sum(x, z), x, z}, {false, false, false, true}},
      {"a sum of units far apart",
       {Mapped(x, [](double v) { return 1e6 * v; }), z, Sum(Mapped(x, [](double v) { return 1e6 * v; }), z)},
       {false, false, false, true}},
      {"a small difference of large columns",
       {Sum(Mapped(x, [](double v) { return 1e6 * v; }), z), Mapped(x, [](double v) { return 1e6 * v; }), z},
       {false, false, false, true}},
      {"a small difference",
       {x, Mapped(x, [](double v) { return v + 1e-9 * v * v; })},
       {false, false, false}},
      {"far from zero", {far, Mapped(far, [](double v) { return v - 7; }), z}, {false, false, true, false}},
      {"indicators of all levels",
       {IndicatorOf(kDesign[1], 0), IndicatorOf(kDesign[1], 1), IndicatorOf(kDesign[1], 2)},
       {false, false, false, true}},
  };
  for (const RedundancyRow& row : rows) {
    SCOPED_TRACE(row.fName);
    std::vector<Column> columns = {kDesign[0]};
    columns.insert(columns.end(), row.fvCovariates.begin(), row.fvCovariates.end());
    Model<Regression> run(CovariateSettings(static_cast<int>(row.fvCovariates.size())), columns);
    std::vector<bool> flags;
    for (std::size_t i = 0; i < run.Record().GetRedundancy().Size(); ++i) {
      flags.push_back(run.Record().GetRedundancy().IsIn(i));
      EXPECT_EQ(run.Record().GetVarCoeffBayesEstimations().at(i).fMode == kMissing, flags.back()) << i;
    }
    EXPECT_EQ(flags, row.fvRedundant);
    const bool isAny = std::count(flags.begin(), flags.end(), true) > 0;
    EXPECT_EQ(run.Codes(), isAny ? std::vector<int>{410023} : std::vector<int>());
  }
}

TEST(Regression, TakesTheLastLevelThatOccursForAnUnusedOne) {
  BSNSettings settings = FactorSettings();
  settings.SetFactorNCategs({4, 2});
  Model<Regression> run(settings, kDesign);
  EXPECT_EQ(run.Codes(), std::vector<int>{410023});
  ExpectSameModel(run.Record(), Model<Regression>(FactorSettings(), kDesign).Record());
}

using Change = void (*)(BSNSettings&);

// A conjugate prior of the five parameters that FactorSettings leaves.
void MakeConjugate(BSNSettings& settings) {
  settings.SetPriorType(BSNConst::Conjugate);
  settings.SetPriorShape(2);
  settings.SetPriorScale(3);
  settings.SetPriorMeans({5, 0, 0, -1, 0.5});
}

BayesFTest TestOf(std::vector<int> variables, std::vector<double> values) {
  BayesFTest test;
  test.SetVariables(std::move(variables));
  test.SetTestValues(std::move(values));
  return test;
}

struct StatusRow {
  const char* fName;
  Change fChange;
  int fCases;
  std::vector<int> fvCodes;
  int fDatum0 = 0, fDatum1 = 0;
};

const StatusRow kStatuses[] = {
    {"fine", [](BSNSettings&) {}, 12, {}},
    {"no residual degree of freedom", [](BSNSettings&) {}, 5, {410057, 410013, 410024}},
    {"as many cases, informative prior", MakeConjugate, 5, {410057}},
    {"too large a full model",
     [](BSNSettings& s) {
       s.SetCompareType(BSNConst::FullModel);
       s.SetFullModFactors({1, 2});
       s.SetFullModFactorNCategs({3, 2});
       s.SetFullModCovariates({3});
       s.SetFactors({2});
       s.SetFactorNCategs({2});
       s.SetCovariates({});
     },
     5,
     {410058, 410013}},
    {"Gonen's is no method for regression",
     [](BSNSettings& s) { s.SetRegrCompType(BSNConst::Gonen); },
     12,
     {410059}},
    {"a hyper-g beyond 4",
     [](BSNSettings& s) {
       s.SetRegrCompType(BSNConst::Hyper);
       s.SetRegrComPar(4.5);
     },
     12,
     {410059}},
    {"a g of 0",
     [](BSNSettings& s) {
       s.SetRegrCompType(BSNConst::Zellner);
       s.SetRegrComPar(0);
     },
     12,
     {410059}},
    {"a negative scale",
     [](BSNSettings& s) {
       s.SetRegrCompType(BSNConst::Rouder);
       s.SetRegrComPar(-1);
     },
     12,
     {410059}},
    {"no refinements", [](BSNSettings& s) { s.SetMaxIterations(0); }, 12, {901}},
    {"prior means of all levels",
     [](BSNSettings& s) {
       MakeConjugate(s);
       s.SetPriorMeans({0, 0, 0, 0, 0, 0, 0});
     },
     12,
     {410020},
     5,
     7},
    {"prior means of all levels, and no posterior to say more of",
     [](BSNSettings& s) {
       MakeConjugate(s);
       s.SetPriorMeans({0, 0, 0, 0, 0, 0, 0});
     },
     6,
     {410020},
     5,
     7},
    {"a diagonal for a matrix",
     [](BSNSettings& s) {
       MakeConjugate(s);
       s.SetPriorCovMatrix({1, 1, 1, 1, 1});
     },
     12,
     {410021},
     15,
     5},
    {"a matrix that is no covariance",
     [](BSNSettings& s) {
       MakeConjugate(s);
       s.SetPriorCovMatrix({1, 2, 1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 1});
     },
     12,
     {410017}},
    {"no prior shape",
     [](BSNSettings& s) {
       MakeConjugate(s);
       s.SetPriorShape(kMissing);
     },
     12,
     {410017}},
    {"a prior that regression hasn't got",
     [](BSNSettings& s) { s.SetPriorType(BSNConst::Custom); },
     12,
     {410017}},
    {"an F-test's values",
     [](BSNSettings& s) {
       s.SetFTests({TestOf({3}, {1}), TestOf({1, 3}, {1, 2})});
     },
     12,
     {410043},
     1,
     3},
    {"an F-test that names a variable twice",
     [](BSNSettings& s) {
       s.SetFTests({TestOf({3, 3}, {1})});
     },
     12,
     {}},
    {"an F-test of nothing", [](BSNSettings& s) { s.SetFTests({TestOf({0}, {})}); }, 12, {410048}},
    {"one predictor value for three", [](BSNSettings& s) { s.SetRegressors({1}); }, 12, {410000}},
    {"analysis of variance with a covariate",
     [](BSNSettings& s) { s.SetModelType(BSNConst::Anova, true); },
     12,
     {410000}},
    {"one case", [](BSNSettings&) {}, 1, {410011}},
};

TEST(Regression, SaysWhyAResultIsMissing) {
  for (const StatusRow& row : kStatuses) {
    SCOPED_TRACE(row.fName);
    BSNSettings settings = FactorSettings();
    row.fChange(settings);
    std::vector<Column> columns = kDesign;
    for (Column& column : columns) column.resize(static_cast<std::size_t>(row.fCases));
    Model<Regression> run(settings, columns);
    EXPECT_EQ(run.Codes(), row.fvCodes);
    if (row.fDatum1 != 0) {
      EXPECT_EQ(run.Statuses().at(0).GetDatum(0), row.fDatum0);
      EXPECT_EQ(run.Statuses().at(0).GetDatum(1), row.fDatum1);
    }
    if (run.Status().IsError()) continue;
    const std::set<int> noBayesFactor = {410057, 410058, 410059};
    const bool isLost = !row.fvCodes.empty() && noBayesFactor.count(row.fvCodes.front()) > 0;
    EXPECT_EQ(run.Record().GetBayesFactor() == kMissing, isLost);
  }
}

TEST(Regression, FailsWithoutVariation) {
  const std::vector<Column> constantPredictors = {{1, 2, 4, 3}, {5, 5, 5, 5}, {0.1, 0.1, 0.1, 0.1}};
  Model<Regression> run(CovariateSettings(2), constantPredictors);
  EXPECT_EQ(run.Status().GetCode(), 410012);
  EXPECT_TRUE(run.Status().IsError());
  EXPECT_EQ(Model<Regression>(CovariateSettings(1), {{kMissing, 2}, {1, kMissing}}).Status().GetCode(),
            410003);
  Model<Regression> overflow(CovariateSettings(1), {{1e200, -1e200, 3, 4, 7, 9, 1}, {1, 2, 3, 4, 6, 5, 9}});
  EXPECT_EQ(overflow.Codes(), std::vector<int>{410059});
  for (const double value : overflow.Record().GetAnova()) EXPECT_TRUE(std::isfinite(value));
  for (const BayesEstimation& b : overflow.Record().GetVarCoeffBayesEstimations()) {
    for (const double value : {b.fMode, b.fMean, b.fVariance, b.fLower, b.fUpper}) {
      EXPECT_TRUE(std::isfinite(value));
    }
  }
}

// BF(model : full) = BF(model : null) / BF(full : null), each model by itself.
TEST(Regression, ComparesWithTheFullModelThroughTheNullModel) {
  const auto methods = {BSNConst::JZS, BSNConst::Zellner, BSNConst::Hyper, BSNConst::Rouder};
  for (const auto method : methods) {
    BSNSettings full = FactorSettings();
    full.SetRegrCompType(method);
    BSNSettings part = full;
    part.SetFactors({2});
    part.SetFactorNCategs({2});
    BSNSettings both = part;
    both.SetCompareType(BSNConst::FullModel);
    both.SetFullModFactors({1, 2});
    both.SetFullModFactorNCategs({3, 2});
    both.SetFullModCovariates({3});
    Model<Regression> compared(both, kDesign);
    Model<Regression> alone(full, kDesign);
    EXPECT_NEAR(compared.Record().GetBayesFactor() * alone.Record().GetBayesFactor() /
                    Model<Regression>(part, kDesign).Record().GetBayesFactor(),
                1, 1e-9)
        << method;
    EXPECT_NEAR(compared.Record().GetRSquaredFull(), alone.Record().GetRSquared(), 1e-14);
  }
}

TEST(Regression, ShowsALogarithmWhereAnalysisOfVarianceClamps) {
  Column y;
  Column group;
  for (int i = 0; i < 2000; ++i) {
    group.push_back(i % 2);
    y.push_back(100 * (i % 2) + std::sin(i));
  }
  BSNSettings settings = CovariateSettings(1);
  Model<Regression> regression(settings, {y, group});
  EXPECT_EQ(regression.Codes(), std::vector<int>{410041});
  EXPECT_TRUE(regression.Record().IsLogBayesFactor());
  EXPECT_GT(regression.Record().GetBayesFactor(), 700);
  settings.SetModelType(BSNConst::Anova, true);
  settings.SetCovariates({});
  settings.SetFactors({1});
  settings.SetFactorNCategs({2});
  Model<Regression> anova(settings, {y, group});
  EXPECT_EQ(anova.Codes(), std::vector<int>());
  EXPECT_FALSE(anova.Record().IsLogBayesFactor());
  EXPECT_EQ(anova.Record().GetBayesFactor(), std::numeric_limits<double>::max());
}

// One covariate: everything in closed form.
TEST(Regression, ScoresByDefinition) {
  const Column x = {1, 2, 4, 3.5, 6, 7.5, 9};
  const Column y = {2.1, 1.7, 4.4, 4.0, 5.2, 8.8, 7.3};
  const double n = 7, xMean = 33.0 / 7, yMean = 33.5 / 7;
  double sxx = 0, sxy = 0, syy = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    sxx += (x[i] - xMean) * (x[i] - xMean);
    sxy += (x[i] - xMean) * (y[i] - yMean);
    syy += (y[i] - yMean) * (y[i] - yMean);
  }
  const double s2 = (syy - sxy * sxy / sxx) / (n - 2);
  const double at = 5.5;
  const double leverage = 1 / n + (at - xMean) * (at - xMean) / sxx;
  const double expected = yMean + sxy / sxx * (at - xMean);

  BSNSettings settings = CovariateSettings(1);
  settings.SetAnalysType(BSNConst::BayesFactor);
  settings.SetCILevel(90);
  const double record[] = {kMissing, at};
  BayesEstimation score;
  ASSERT_TRUE((Model<Regression>(settings, {y, x}).Record().Score({record}, score)));
  EXPECT_EQ(score.fVariance, kMissing);
  settings.SetComputeVarianceInScoring(true);
  ASSERT_TRUE((Model<Regression>(settings, {y, x}).Record().Score({record}, score)));
  EXPECT_NEAR(score.fMode, expected, 1e-13);
  EXPECT_NEAR(score.fMean, expected, 1e-13);
  EXPECT_NEAR(score.fVariance, s2 * (1 + leverage) * 5 / 3, 1e-12);
  const double halfWidth =
      std::sqrt(s2 * leverage) * BayesComponent::StudentDistribution(5, 0, 1).UpperQuantile(0.05);
  EXPECT_NEAR(score.fLower, expected - halfWidth, 1e-12);
  EXPECT_NEAR(score.fUpper, expected + halfWidth, 1e-12);
}

TEST(Regression, ScoresOnlyCasesWithAllPredictors) {
  Model<Regression> run(FactorSettings(), kDesign);
  const std::pair<std::vector<double>, bool> records[] = {
      {{kMissing, 0, 1, 2.5}, true}, {{1, kMissing, 1, 2.5}, false}, {{1, -1, 1, 2.5}, false},
      {{1, 3, 1, 2.5}, false},       {{1, 0, 1, kMissing}, false},
  };
  for (const auto& [values, isScored] : records) {
    BayesEstimation score;
    score.fMode = 77;
    EXPECT_EQ(run.Record().Score({values.data()}, score), isScored);
    EXPECT_EQ(score.fMode == 77, !isScored);
  }
  BayesEstimation score;
  const double first[] = {0, 0, 1, 2.5};
  run.Record().Score({first}, score);
  const std::vector<double> b = ModesOf(run.Record());
  EXPECT_NEAR(score.fMode, b.at(0) + b.at(1) + 2.5 * b.at(4), 1e-12);
}

double AreaUnder(const std::vector<double>& arguments, const std::vector<double>& values) {
  double area = 0;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    area += (arguments[i] - arguments[i - 1]) * (values[i] + values[i - 1]) / 2;
  }
  return area;
}

struct CurveRow {
  const Column &fLikelihoodArguments, &fLikelihood, &fPosteriorArguments, &fPosterior, &fPriorArguments,
      &fPrior;
};

std::vector<CurveRow> CurvesOf(const Regression& r, std::size_t parameter) {
  return {{r.GetParamsArgumentsPlots4Likelihoods().at(parameter), r.GetLikelihoodParamPlots().at(parameter),
           r.GetParamsArgumentsPlots4Posterior().at(parameter), r.GetPosteriorParamPlots().at(parameter),
           r.GetParamsArgumentsPlots4Prior().at(parameter), r.GetPriorParamPlots().at(parameter)},
          {r.GetArgumentErrorVarPlot4Likelihoods(), r.GetLikelihoodErrorVarPlot(),
           r.GetArgumentErrorVarPlot4Posterior(), r.GetPosteriorErrorVarPlot(),
           r.GetArgumentErrorVarPlot4Prior(), r.GetPriorErrorVarPlot()},
          {r.GetArgumentPredictedPlot4Likelihoods(), r.GetLikelihoodPredictedPlot(),
           r.GetArgumentPredictedPlot4Posterior(), r.GetPosteriorPredictedPlot(),
           r.GetArgumentPredictedPlot4Prior(), r.GetPriorPredictedPlot()}};
}

TEST(Regression, DrawsCurvesOnOneRange) {
  for (const bool isConjugate : {false, true}) {
    BSNSettings settings = FactorSettings();
    if (isConjugate) MakeConjugate(settings);
    Model<Regression> run(settings, kDesign);
    const Regression& record = run.Record();
    const double peaks[] = {
        Model<Regression>(FactorSettings(), kDesign).Record().GetVarCoeffBayesEstimations().at(6).fMode,
        record.GetAnova().at(5) / 12,
        Model<Regression>(FactorSettings(), kDesign).Record().GetPredictedBayesEstimation().fMode};
    const std::vector<CurveRow> curves = CurvesOf(record, 6);
    for (std::size_t i = 0; i < curves.size(); ++i) {
      SCOPED_TRACE(i);
      const Column& arguments = curves[i].fPosteriorArguments;
      ASSERT_EQ(arguments.size(), 201u);
      EXPECT_EQ(arguments, curves[i].fLikelihoodArguments);
      EXPECT_EQ(arguments, curves[i].fPriorArguments);
      EXPECT_NEAR(AreaUnder(arguments, curves[i].fPosterior), 0.9995, 0.003);
      const auto top = std::max_element(curves[i].fLikelihood.begin(), curves[i].fLikelihood.end());
      EXPECT_NEAR(*top, 0, 0.05);
      EXPECT_NEAR(arguments.at(static_cast<std::size_t>(top - curves[i].fLikelihood.begin())), peaks[i],
                  (arguments[1] - arguments[0]) / 2 * 1.001);
      const Column flat(201, 1.0);
      EXPECT_EQ(curves[i].fPrior == flat, !isConjugate && i != 1);
    }
    const double firstVariance = curves[1].fPriorArguments.front();
    const double priorDensity = isConjugate
                                    ? BayesComponent::InverseGammaDistribution(2, 3).Density(firstVariance)
                                    : 1 / firstVariance;
    EXPECT_NEAR(curves[1].fPrior.front() / priorDensity, 1, 1e-14);
  }
}

// The density under a flat prior and the likelihood know the same sum of squares, variance * (df - 2).
TEST(Regression, DrawsTheProfileLikelihood) {
  Model<Regression> run(FactorSettings(), kDesign);
  const Regression& record = run.Record();
  const std::tuple<BayesEstimation, CurveRow, double> rows[] = {
      {record.GetVarCoeffBayesEstimations().at(6), CurvesOf(record, 6).at(0), 12},
      {record.GetPredictedBayesEstimation(), CurvesOf(record, 6).at(2), 13},
  };
  for (const auto& [posterior, curves, cases] : rows) {
    for (const std::size_t i : {std::size_t{0}, std::size_t{60}, std::size_t{180}}) {
      const double distance = curves.fLikelihoodArguments.at(i) - posterior.fMode;
      const double expected = -cases / 2 * std::log1p(distance * distance / (posterior.fVariance * 5));
      EXPECT_NEAR(curves.fLikelihood.at(i), expected, 1e-11 * std::abs(expected)) << cases;
    }
  }
}

struct PlotRow {
  const char* fName;
  Change fChange;
  std::vector<int> fvPlotted;  // parameters: intercept, 1-3 and 4-5 the levels, 6 the covariate
};

const PlotRow kPlots[] = {
    {"everything", [](BSNSettings&) {}, {0, 1, 2, 4, 6}},
    {"a covariate", [](BSNSettings& s) { s.SetPlotCovars({3}); }, {0, 6}},
    {"a factor of two levels", [](BSNSettings& s) { s.SetPlotFactors({2}); }, {0, 4}},
    {"a factor of more levels than allowed",
     [](BSNSettings& s) {
       s.SetPlotFactors({1, 2});
     },
     {0, 4}},
    {"a factor of three levels, allowed",
     [](BSNSettings& s) {
       s.SetPlotFactors({1});
       s.SetPlotCovars({3});
       s.SetMaxNPlotCategories(3);
     },
     {0, 1, 2, 6}},
    {"means of one level",
     [](BSNSettings& s) {
       s.SetModelType(BSNConst::Anova, true);
       s.SetFactors({1});
       s.SetFactorNCategs({3});
       s.SetCovariates({});
       s.SetPlotFactorCats({1, 2});
     },
     {0, 2}},
};

TEST(Regression, PlotsTheParametersAskedFor) {
  for (const PlotRow& row : kPlots) {
    BSNSettings settings = FactorSettings();
    row.fChange(settings);
    Model<Regression> run(settings, kDesign);
    const auto& curves = run.Record().GetPosteriorParamPlots();
    std::vector<int> plotted;
    for (std::size_t i = 0; i < curves.size(); ++i) {
      if (!curves[i].empty()) plotted.push_back(static_cast<int>(i));
    }
    EXPECT_EQ(plotted, row.fvPlotted) << row.fName;
  }
}

}  // namespace
