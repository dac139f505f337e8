// One-sample and related tests of normal means, through the component and its Bayes factor functions.
#include <cmath>
#include <limits>
#include <utility>

#include "component/numeric/NormalBayesFactor.h"
#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using BayesComponent::MeanTest;
using Normal = MCBSN_850::BSN1SampleNormOutputStats;
using Related = MCBSN_850::BSN2SampleRelatedOutputStats;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

BSNSettings OneSampleSettings(const json& options) {
  BSNSettings settings;
  settings.SetModelType(BSNConst::OneSample, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetCovariates({0});
  settings.SetNullValues({options.value("NullValue", kMissing)});
  settings.SetDataVarVals({options.value("DataVarVal", kMissing)});
  settings.SetPriorDistType(static_cast<BSNConst::DistTypes>(options.value("PriorDistType", 9)));
  settings.SetPriorDistParam1(options.value("PriorDistParam1", kMissing));
  settings.SetPriorDistParam2(options.value("PriorDistParam2", kMissing));
  settings.SetMeanDistType(static_cast<BSNConst::DistTypes>(options.value("MeanDistType", 9)));
  settings.SetMeanDistParam1(options.value("MeanDistParam1", kMissing));
  settings.SetMeanDistParam2(options.value("MeanDistParam2", kMissing));
  settings.SetKappaValue(options.value("KappaValue", 1.0));
  settings.SetCILevel(options.value("CILevel", 95.0));
  return settings;
}

BSNSettings RelatedSettings(const json& options) {
  BSNSettings settings = OneSampleSettings(options);
  settings.SetModelType(BSNConst::Related, true);
  settings.Set2ndRelatedList({1});
  return settings;
}

template <class Record>
Outcome OutcomeOf(const Record& record, double mean, const std::vector<int>& codes) {
  return {{{"n", record.GetNs().at(0)},
           {"mean", mean},
           {"sd", record.GetStdDevs().at(0)},
           {"em", record.GetEMs().at(0)},
           {"t", record.GetTValues().at(0)},
           {"df", record.GetDFValues().at(0)},
           {"sig", record.GetSigs().at(0)}},
          LogOf(record.GetBayesFactors().at(0)),
          PosteriorOf(record, record.GetPostMeanValues()),
          codes};
}

Outcome RunOneSample(const json& input) {
  BSNSettings settings = OneSampleSettings(input.at("options"));
  std::vector<Column> columns{ColumnOf(input.at("data").at("x"))};
  if (input.contains("frequency_weights")) {
    settings.SetFrequencyWeightVar(1);
    columns.push_back(ColumnOf(input["frequency_weights"]));
  }
  Model<Normal> run(settings, columns);
  return OutcomeOf(run.Record(), run.Record().GetMeanValues().at(0), run.Codes());
}

Outcome RunRelated(const json& input) {
  std::vector<Column> columns;
  for (const json& values : input.at("data")) columns.push_back(ColumnOf(values));
  Model<Related> run(RelatedSettings(input.at("options")), columns);
  return OutcomeOf(run.Record(), run.Record().GetMeanDiffValues().at(0), run.Codes());
}

// From n and t alone, where Bayes factors outside the range of a double can be compared too.
double LogBF01(const json& input) {
  const json& options = input.at("options");
  const bool isKnown = options.contains("DataVarVal");
  const MeanTest test{input.at("t"), input.at("n"), isKnown ? kInfinity : input.at("n").get<double>() - 1};
  const json g = options.value("AlterGValue", json());
  if (isKnown || !g.is_null()) return -LogBF10GivenG(test, g.is_null() ? 1 : g.get<double>());
  const auto result = LogBF01Cauchy(test, 1, BayesComponent::GaussLobatto(1e-6, 2000));
  EXPECT_TRUE(result.fConverged);
  return result.fLogValue;
}

TEST(NormalMean, MatchesReferenceCases) {
  const std::pair<const char*, Outcome (*)(const json&)> files[] = {{"onesample_normal", RunOneSample},
                                                                    {"related", RunRelated}};
  for (const auto& [name, run] : files) {
    for (const json& row : ReferenceCases(name)) {
      SCOPED_TRACE(row.at("name").get<std::string>());
      const json& input = row.at("input");
      Outcome outcome;
      if (input.contains("data")) {
        outcome = run(input);
      } else {
        outcome.fLnBF = LogBF01(input);
      }
      ExpectOutcome(row.at("expect"), outcome);
    }
  }
}

struct StatusRow {
  const char* fName;
  json fOptions;
  Column fData;
  std::vector<int> fvCodes;
  bool fHasBayesFactor;
  bool fHasPosterior;
};

const json kInverseGamma = {{"PriorDistType", 6}, {"MeanDistType", 0}};

const StatusRow kStatuses[] = {
    {"no value", {}, {kMissing, kMissing}, {410025}, false, false},
    {"one case, known variance", {{"DataVarVal", 2.0}}, {3}, {410025}, true, true},
    {"one case, informative prior", kInverseGamma, {3}, {410025}, false, true},
    {"constant, known variance", {{"DataVarVal", 2.0}}, {3, 3}, {410010}, true, true},
    {"constant, informative prior", kInverseGamma, {3, 3}, {410010, 410045}, false, true},
    {"a normal mean without a variance", {{"MeanDistType", 0}}, {1, 2, 3, 4, 5, 7}, {410017}, true, true},
    {"the same keeps its variance prior",
     {{"PriorDistType", 7}, {"MeanDistType", 0}},
     {1, 2, 4},
     {410017, 410026},
     true,
     true},
    {"no prior of a variance", {{"PriorDistType", 1}}, {1, 2, 3, 4, 5, 7}, {410017}, true, true},
    {"a negative prior scale",
     {{"PriorDistType", 4}, {"PriorDistParam2", -1.0}, {"MeanDistType", 0}},
     {1, 2, 3, 4, 5, 7},
     {410017},
     true,
     true},
    {"sums beyond the doubles", {}, {1e200, -1e200, 3, 4, 5, 6}, {410059}, false, true},
};

TEST(NormalMean, SaysWhyAResultIsMissing) {
  for (const StatusRow& row : kStatuses) {
    SCOPED_TRACE(row.fName);
    Model<Normal> run(OneSampleSettings(row.fOptions.is_null() ? json::object() : row.fOptions), {row.fData});
    EXPECT_EQ(run.Codes(), row.fvCodes);
    EXPECT_EQ(run.Record().GetBayesFactors().at(0) != kMissing, row.fHasBayesFactor);
    EXPECT_EQ(run.Record().GetModeValues().at(0) != kMissing, row.fHasPosterior);
  }
}

TEST(NormalMean, TakesDecimalDifferencesThatAreEqualForConstant) {
  Model<Related> run(RelatedSettings(json::object()), {{0.3, 0.4, 100.7}, {0.1, 0.2, 100.5}});
  EXPECT_EQ(run.Codes(), (std::vector<int>{410028, 410045}));
}

TEST(NormalMean, SaysWhenTheIntegralDoesntConverge) {
  BSNSettings settings = OneSampleSettings(json::object());
  settings.SetMaxIterations(0);
  Model<Normal> run(settings, {{1, 2, 3, 4, 5, 7}});
  EXPECT_EQ(run.Codes(), std::vector<int>{901});
  EXPECT_NE(run.Record().GetBayesFactors().at(0), kMissing);
}

// Of 100,000 draws: their standard error here is below 1 %, and 4 of them are allowed.
TEST(NormalMean, MonteCarloFollowsSeedAndIntegral) {
  BSNSettings settings = OneSampleSettings(json::object());
  const std::vector<Column> columns = {{1, -2, 3, 0.5, 2, 4}};
  const double exact = Model<Normal>(settings, columns).Record().GetBayesFactors().at(0);
  settings.SetMethodType(BSNConst::MCA);
  settings.SetMCSamples(100000);
  const auto draw = [&](unsigned long seed) {
    settings.SetRandomSeed(seed);
    return Model<Normal>(settings, columns).Record().GetBayesFactors().at(0);
  };
  EXPECT_NEAR(draw(7) / exact, 1, 0.04);
  EXPECT_EQ(draw(7), draw(7));
  EXPECT_NE(draw(7), draw(8));
}

double AreaUnder(const std::vector<double>& arguments, const std::vector<double>& values) {
  double area = 0;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    area += (arguments[i] - arguments[i - 1]) * (values[i] + values[i - 1]) / 2;
  }
  return area;
}

TEST(NormalMean, DrawsCurvesOnOneRange) {
  for (const json& options : {json::object(), json(kInverseGamma), json{{"DataVarVal", 2.0}}}) {
    Model<Normal> run(OneSampleSettings(options), {{1, -2, 3, 0.5, 2, 4, 2, 1}});
    const Normal& record = run.Record();
    const Column& arguments = record.GetPlotArguments4Posterior().at(0);
    ASSERT_EQ(arguments.size(), 201u);
    EXPECT_EQ(arguments, record.GetPlotArguments4Likelihoods().at(0));
    EXPECT_EQ(arguments, record.GetPlotArguments4Prior().at(0));
    // At least the central 99.9 %, less what the trapezoids miss.
    EXPECT_NEAR(AreaUnder(arguments, record.GetPlotPosterior().at(0)), 0.9995, 0.0006);
    const Column& likelihood = record.GetPlotLikelihoods().at(0);
    const auto top = std::max_element(likelihood.begin(), likelihood.end());
    EXPECT_NEAR(*top, 0, 0.05);
    EXPECT_NEAR(arguments.at(static_cast<std::size_t>(top - likelihood.begin())),
                record.GetMeanValues().at(0), 0.1);
    const bool isFlat = !options.contains("MeanDistType");
    EXPECT_EQ(record.GetPlotPrior().at(0) == Column(201, 1.0), isFlat);
  }
}

}  // namespace
