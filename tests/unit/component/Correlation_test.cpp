// Correlations: the reference cases, pairs, statuses, threads.
#include <algorithm>
#include <cmath>

#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using Record = MCBSN_850::BSNPearsonCorrelationOutputStats;

const json kNoOptions = json::object();

BSNSettings CorrelationSettings(std::size_t nVariables, const json& options) {
  BSNSettings settings;
  settings.SetModelType(BSNConst::Correlation, true);
  settings.SetAnalysType(BSNConst::Both);
  std::vector<int> slots;
  for (std::size_t i = 0; i < nVariables; ++i) slots.push_back(static_cast<int>(i));
  settings.SetCovariates(slots);
  settings.SetEstBFType(static_cast<BSNConst::EstBFTypes>(options.value("EstBFType", 0)));
  settings.SetCorrTest(static_cast<BSNConst::CorrTests>(options.value("CorrTest", 0)));
  settings.SetNullValue(options.value("NullValue", 0.0));
  settings.SetRegrComPar(options.value("RegrComPar", kMissing));
  settings.SetCorrCValue(options.value("CorrCValue", 0.0));
  settings.SetCILevel(options.value("CILevel", 95.0));
  settings.SetPosteriorSamples(options.value("PosteriorSamples", -1L));
  settings.SetRandomSeed(1);
  return settings;
}

// n cases of three kinds whose correlation is r: x is a contrast of the kinds, y a mixture of x and of the
// contrast that is orthogonal to it.
std::vector<Column> CasesWith(double r, double n) {
  const double third = std::floor(n / 3);
  const Column weights = {third, third, n - 2 * third};
  const double last = -2 * third / weights[2];
  const double normX = std::sqrt(2 * third + weights[2] * last * last);
  const double normE = std::sqrt(2 * third);
  Column x = {1 / normX, 1 / normX, last / normX};
  const Column e = {1 / normE, -1 / normE, 0};
  Column y;
  for (std::size_t i = 0; i < 3; ++i) y.push_back(r * x[i] + std::sqrt((1 - r) * (1 + r)) * e[i]);
  return {x, y, weights};
}

std::vector<Column> ColumnsOf(const json& input) {
  if (input.contains("r")) return CasesWith(input.at("r"), input.at("n"));
  std::vector<Column> columns;
  for (const auto& [name, values] : input.at("data").items()) columns.push_back(ColumnOf(values));
  columns.emplace_back(columns.at(0).size(), 1.0);
  return columns;
}

Outcome OutcomeOf(Model<Record>& model) {
  const Record& record = model.Record();
  const double coefficient = record.GetPearsonCorrelation().at(0);
  return {{{"n", record.GetVarPairN().at(0)},
           {"r", coefficient},
           {"tau", coefficient},
           {"spearman", coefficient}},
          LogOf(record.GetBayesFactor().at(0), record.GetIsLogBayesFactor().at(0)),
          {{"mode", record.GetPosteriorMode().at(0)},
           {"mean", record.GetPosteriorMean().at(0)},
           {"variance", record.GetPosteriorVariance().at(0)},
           {"lower", record.GetPosteriorLowerBound().at(0)},
           {"upper", record.GetPosteriorUpperBound().at(0)}},
          model.Codes()};
}

// What the file doesn't say: a Bayes factor that is a logarithm, or that isn't defined, is announced.
json WithAnnouncements(json expect) {
  if (expect.contains("status") || !expect.contains("lnBF")) return expect;
  const json lnBF = expect["lnBF"];  // a copy: adding a member moves the others
  if (lnBF.is_null()) expect["status"] = {410059};
  if (!lnBF.is_null() && std::abs(lnBF.get<double>()) > 700) expect["status"] = {410041};
  return expect;
}

TEST(Correlation, MatchesReferenceCases) {
  for (const json& row : ReferenceCases("correlation")) {
    SCOPED_TRACE(row.at("name").get<std::string>());
    json expect = WithAnnouncements(row.at("expect"));
    // z and T* are not in the record.
    if (expect.contains("stats")) expect["stats"].erase("T");
    if (expect.contains("posterior_rho_s")) {
      // A simulation: the tolerance is absolute and in posterior standard deviations.
      const double tolerance = expect.at("tolerance");
      const double sd = std::sqrt(expect["posterior_rho_s"]["variance"].get<double>());
      expect["posterior"] = expect["posterior_rho_s"];
      expect["tolerances"] = {
          {"posterior location, absolute", tolerance * sd}, {"spearman", 1e-12}, {"n", 0}};
    }
    const std::vector<Column> columns = ColumnsOf(row.at("input"));
    BSNSettings settings = CorrelationSettings(columns.size() - 1, row.at("input").at("options"));
    settings.SetFrequencyWeightVar(static_cast<int>(columns.size()) - 1);
    Model<Record> model(settings, columns);
    ExpectOutcome(expect, OutcomeOf(model));
    EXPECT_FALSE(model.Record().GetIndIntegralFailed().at(0));
  }
}

const std::vector<Column> kFourColumns = {{1, 2, 3, 4, 5, 6, 7, 8},
                                          {2, 1, 4, 3, kMissing, 5, 8, 6},
                                          {5, kMissing, 1, 7, 2, 2, kMissing, 3},
                                          {0, 1, 1, 0, 1, 0, 1, 1}};

TEST(Correlation, CountsEachPairByItself) {
  BSNSettings settings = CorrelationSettings(4, kNoOptions);
  Model<Record> model(settings, kFourColumns);
  const Record& record = model.Record();
  using Pairs = std::vector<std::pair<int, int>>;
  EXPECT_EQ(record.GetVarPairIndices(), (Pairs{{0, 1}, {0, 2}, {0, 3}, {1, 2}, {1, 3}, {2, 3}}));
  EXPECT_EQ(record.GetVarN(), (Column{8, 7, 6, 8}));
  EXPECT_EQ(record.GetVarPairN(), (Column{7, 6, 8, 5, 7, 6}));
  settings.SetMissScope(BSNConst::Listwise);
  Model<Record> listwise(settings, kFourColumns);
  EXPECT_EQ(listwise.Record().GetVarN(), Column(4, 5));
  EXPECT_EQ(listwise.Record().GetVarPairN(), Column(6, 5));

  std::vector<Column> weighted = kFourColumns;
  weighted.push_back({3, 1, 1, 1, 2, 1, 0, 1});
  settings.SetMissScope(BSNConst::ByTest);
  settings.SetFrequencyWeightVar(4);
  Model<Record> withWeights(settings, weighted);
  EXPECT_EQ(withWeights.Record().GetVarN(), (Column{10, 8, 9, 10}));
  EXPECT_EQ(withWeights.Record().GetVarPairN(), (Column{8, 9, 10, 7, 8, 9}));
}

bool AreEqual(const Record& a, const Record& b) {
  return a.GetPearsonCorrelation() == b.GetPearsonCorrelation() && a.GetBayesFactor() == b.GetBayesFactor() &&
         a.GetPosteriorMode() == b.GetPosteriorMode() && a.GetPosteriorMean() == b.GetPosteriorMean() &&
         a.GetPosteriorLowerBound() == b.GetPosteriorLowerBound() &&
         a.GetPlotPosterior() == b.GetPlotPosterior();
}

TEST(Correlation, DoesNotDependOnTheThreads) {
  ReversedThreads threads;
  for (const int test : {0, 1, 2}) {
    BSNSettings settings = CorrelationSettings(4, {{"CorrTest", test}, {"PosteriorSamples", 1000}});
    if (test == 0) settings.SetMethodType(BSNConst::MCA);
    Model<Record> alone(settings, kFourColumns);
    Model<Record> again(settings, kFourColumns);
    settings.SetThreadFactory(&threads);
    Model<Record> together(settings, kFourColumns);
    EXPECT_TRUE(AreEqual(alone.Record(), again.Record())) << test;
    EXPECT_TRUE(AreEqual(alone.Record(), together.Record())) << test;
    EXPECT_EQ(alone.Codes(), together.Codes());
    settings.SetRandomSeed(2);
    Model<Record> otherwise(settings, kFourColumns);
    EXPECT_EQ(AreEqual(alone.Record(), otherwise.Record()), test == 2) << test;
  }
}

TEST(Correlation, PairsDrawTheirOwnRandomNumbers) {
  // The same pair twice: equal data, different draws.
  const std::vector<Column> columns = {kFourColumns[0], kFourColumns[1], kFourColumns[0]};
  Model<Record> model(CorrelationSettings(3, {{"CorrTest", 1}, {"PosteriorSamples", 1000}}), columns);
  EXPECT_NE(model.Record().GetPosteriorMean().at(0), model.Record().GetPosteriorMean().at(2));
}

TEST(Correlation, EstimatesWhatTheQuadratureCannot) {
  for (const json& options : {json{{"EstBFType", 0}}, json{{"EstBFType", 2}}, json{{"CorrTest", 2}}}) {
    BSNSettings settings = CorrelationSettings(2, options);
    Model<Record> exact(settings, kFourColumns);
    settings.SetMaxIterations(1);
    settings.SetTolValue(1e-12);
    Model<Record> estimate(settings, kFourColumns);
    EXPECT_TRUE(estimate.Record().GetIndIntegralFailed().at(0));
    EXPECT_EQ(estimate.Codes(), std::vector<int>{901});
    EXPECT_NEAR(std::log(estimate.Record().GetBayesFactor().at(0)),
                std::log(exact.Record().GetBayesFactor().at(0)), 0.1);
  }
}

struct StatusRow {
  const char* fName;
  json fOptions;
  std::vector<Column> fvColumns;
  std::vector<int> fvCodes;
  bool fHasCoefficient;
};

const StatusRow kStatuses[] = {
    {"no fault", kNoOptions, {{1, 2, 3, 4}, {2, 1, 4, 3}}, {}, true},
    {"two cases", kNoOptions, {{1, 2, 3}, {2, 1, kMissing}}, {410006}, false},
    {"constant", kNoOptions, {{0.1, 0.1, 0.1}, {2, 1, 3}}, {410008}, false},
    {"constant ranks", {{"CorrTest", 1}}, {{0.1, 0.1, 0.1}, {2, 1, 3}}, {410008}, false},
    {"perfect up to rounding", kNoOptions, {{0.1, 0.2, 0.3, 0.7}, {0.3, 0.6, 0.9, 2.1}}, {410009}, true},
    {"perfect ranks", {{"CorrTest", 2}}, {{1, 2, 3, 9}, {4, 3, 2, 1}}, {410009}, true},
    {"overflow", kNoOptions, {{1e200, -1e200, 3}, {1e200, -1e200, 4}}, {410059}, false},
    {"improper posterior", {{"CorrCValue", -3.0}}, {{1, 2, 3, 4}, {2, 1, 4, 3}}, {410038}, true},
    {"improper prior of ranks",
     {{"CorrCValue", -1.0}, {"CorrTest", 1}},
     {{1, 2, 3, 4}, {2, 1, 4, 3}},
     {410038, 410059},
     true},
    {"improper prior of tau",
     {{"CorrCValue", -1.0}, {"CorrTest", 2}},
     {{1, 2, 3, 4}, {2, 1, 4, 3}},
     {410038, 410059},
     true},
    {"fraction too small",
     {{"EstBFType", 2}, {"RegrComPar", 0.2}},
     {{1, 2, 3, 4}, {2, 1, 4, 3}},
     {410059},
     true},
};

TEST(Correlation, SaysWhyAResultIsMissing) {
  for (const StatusRow& row : kStatuses) {
    SCOPED_TRACE(row.fName);
    Model<Record> model(CorrelationSettings(2, row.fOptions), row.fvColumns);
    EXPECT_EQ(model.Codes(), row.fvCodes);
    EXPECT_EQ(model.Record().GetPearsonCorrelation().at(0) != kMissing, row.fHasCoefficient);
  }
}

TEST(Correlation, RefusesImpossibleSettings) {
  for (const json& options : {json{{"NullValue", 1.0}}, json{{"RegrComPar", 1.0}}, json{{"CorrTest", 3}}}) {
    Model<Record> model(CorrelationSettings(2, options), kFourColumns);
    EXPECT_EQ(model.Codes(), std::vector<int>{410000}) << options;
  }
}

TEST(Correlation, DrawsAsManyChartsAsAskedFor) {
  for (const int test : {0, 1, 2}) {
    SCOPED_TRACE(test);
    BSNSettings settings = CorrelationSettings(3, {{"CorrTest", test}, {"PosteriorSamples", 2000}});
    settings.SetMaxNPlots(2);
    Model<Record> model(settings, kFourColumns);
    const Record& record = model.Record();
    EXPECT_TRUE(record.GetPlotXAxis().at(2).empty());
    for (const std::size_t i : {0u, 1u}) {
      const Column& axis = record.GetPlotXAxis().at(i);
      const Column& posterior = record.GetPlotPosterior().at(i);
      ASSERT_EQ(axis.size(), 201u);
      EXPECT_TRUE(axis.front() > -1 && axis.back() < 1);
      double mass = 0;
      for (std::size_t k = 0; k + 1 < axis.size(); ++k) {
        mass += (posterior[k] + posterior[k + 1]) / 2 * (axis[k + 1] - axis[k]);
      }
      EXPECT_NEAR(mass, 1, 0.02);
      const Column& lnL = record.GetPlotLogLikelihood().at(i);
      EXPECT_NEAR(*std::max_element(lnL.begin(), lnL.end()), 0, 0.01);
    }
  }
}

class CancelLater : public MCCommon_850::MCCancelQuery {
 public:
  bool IsCancelled() const override { return ++fQuestions > 4; }

 private:
  mutable int fQuestions = 0;
};

TEST(Correlation, StopsInTheMiddleOfAChain) {
  CancelLater cancel;
  BSNSettings settings = CorrelationSettings(2, {{"CorrTest", 1}, {"PosteriorSamples", 1000000}});
  settings.SetCancelPointer(&cancel);
  Model<Record> model(settings, kFourColumns);
  EXPECT_EQ(model.Codes(), std::vector<int>{410001});
}

}  // namespace
