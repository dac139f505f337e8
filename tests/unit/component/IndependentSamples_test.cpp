// Tests of two groups' means, through the component and its Bayes factor functions.
#include <cmath>
#include <limits>

#include "component/numeric/NormalBayesFactor.h"
#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using Independent = MCBSN_850::BSN2SampleIndOutputStats;

const json kNoOptions = json::object();

BSNSettings IndependentSettings(const json& options) {
  BSNSettings settings;
  settings.SetModelType(BSNConst::Independent, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetCovariates({0});
  settings.SetGroupVar(1);
  settings.SetEqualDataVar(options.value("EqualDataVar", false));
  settings.SetRegrCompType(static_cast<BSNConst::RegrCompute>(options.value("RegrCompType", 3)));
  settings.SetRegrComPar(options.value("RegrComPar", kMissing));
  settings.SetSecondGonenPar(options.value("SecondGonenPar", kMissing));
  settings.SetDataVarVals(options.value("DataVarVals", Column()));
  settings.SetPriorDistType(static_cast<BSNConst::DistTypes>(options.value("PriorDistType", 9)));
  settings.SetPriorDistParam1(options.value("PriorDistParam1", kMissing));
  settings.SetPriorDistParam2(options.value("PriorDistParam2", kMissing));
  settings.SetMeanDistType(static_cast<BSNConst::DistTypes>(options.value("MeanDistType", 9)));
  settings.SetMeanDistParam1(options.value("MeanDistParam1", kMissing));
  settings.SetMeanDistParam2(options.value("MeanDistParam2", kMissing));
  settings.SetMeanDistParam3(options.value("MeanDistParam3", kMissing));
  settings.SetMeanDistParam4(options.value("MeanDistParam4", kMissing));
  return settings;
}

// The test variable and the group codes: 0 and 1 for the first and the second of the two values.
std::vector<Column> ColumnsOf(const json& input) {
  const json& data = input.at("data");
  const json groups = input.value("groups", json({0, 1}));
  Column codes;
  for (const json& value : std::next(data.begin()).value()) codes.push_back(value == groups.at(0) ? 0 : 1);
  return {ColumnOf(data.begin().value()), codes};
}

Outcome RunIndependent(const json& input) {
  Model<Independent> model(IndependentSettings(input.at("options")), ColumnsOf(input));
  const Independent& record = model.Record();
  return {{{"n1", record.GetGroup1StatsNs().at(0)},
           {"mean1", record.GetGroup1MeanValues().at(0)},
           {"sd1", record.GetGroup1StdDevs().at(0)},
           {"em1", record.GetGroup1EMs().at(0)},
           {"n2", record.GetGroup2StatsNs().at(0)},
           {"mean2", record.GetGroup2MeanValues().at(0)},
           {"sd2", record.GetGroup2StdDevs().at(0)},
           {"em2", record.GetGroup2EMs().at(0)},
           {"diff", record.GetMeanDiffValues().at(0)},
           {"se_diff", record.GetPStdEDDevs().at(0)},
           {"t", record.GetTValues().at(0)},
           {"df", record.GetDFValues().at(0)},
           {"sig", record.GetSigs().at(0)}},
          LogOf(record.GetBayesFactors().at(0)),
          PosteriorOf(record, record.GetPostMeanValues()),
          model.Codes()};
}

// From n and t alone, where Bayes factors outside the range of a double can be compared too.
double LogBF01(const json& input) {
  using namespace BayesComponent;
  const json& options = input.at("options");
  const double n1 = input.at("n1");
  const double n2 = input.at("n2");
  const bool isKnown = input.at("known_variances");
  const double df = n1 + n2 - 2;
  const MeanTest test{input.at("t"), n1 * n2 / (n1 + n2),
                      isKnown ? std::numeric_limits<double>::infinity() : df};
  const GaussLobatto quadrature(1e-6, 2000);
  const int type = options.at("RegrCompType");
  if (type == BSNConst::Hyper) return LogBF01PearsonSix({test.fT, test.fN, df}, options.at("RegrComPar"));
  const double mean = options.value("RegrComPar", 0.0);
  const double variance = options.value("SecondGonenPar", 1.0);
  const auto result = type == BSNConst::Rouder ? LogBF01Cauchy(test, 1, quadrature)
                                               : LogBF01NormalEffect(test, mean, variance, quadrature);
  EXPECT_TRUE(result.fConverged);
  return result.fLogValue;
}

TEST(IndependentSamples, MatchReferenceCases) {
  for (const json& row : ReferenceCases("independent")) {
    SCOPED_TRACE(row.at("name").get<std::string>());
    const json& input = row.at("input");
    Outcome outcome;
    if (input.contains("data")) {
      outcome = RunIndependent(input);
    } else {
      outcome.fLnBF = LogBF01(input);
    }
    ExpectOutcome(row.at("expect"), outcome);
  }
}

const Column kFirst = {1, 2, 4, 3, 2.5, 7};
const Column kSecond = {0, 1, 3, 2, 1.5, 2, -1};

std::vector<Column> TwoGroups(Column first, const Column& second) {
  Column codes(first.size(), 0);
  codes.resize(first.size() + second.size(), 1);
  first.insert(first.end(), second.begin(), second.end());
  return {first, codes};
}

struct StatusRow {
  const char* fName;
  json fOptions;
  Column fFirst;
  Column fSecond;
  std::vector<int> fvCodes;
  bool fHasBayesFactor;
  bool fHasPosterior;
};

const json kKnown = {{"DataVarVals", {2.0, 3.0}}};
const json kEqual = {{"EqualDataVar", true}};

const StatusRow kStatuses[] = {
    {"no fault", kNoOptions, kFirst, kSecond, {}, true, true},
    {"one case in a group", kNoOptions, kFirst, {1}, {410030}, false, false},
    {"one case, known variances", kKnown, kFirst, {1}, {410030}, true, true},
    {"only missing values in a group", kNoOptions, kFirst, {kMissing}, {410030}, false, false},
    {"constant, known variances", kKnown, {1, 1}, {2, 2}, {}, true, true},
    {"constant, informative prior",
     {{"EqualDataVar", true}, {"PriorDistType", 6}},
     {1, 1},
     {2, 2},
     {410046},
     false,
     true},
    {"one constant, equal variances", kEqual, {1, 1, 1}, {2, 3, 5, 6}, {410047}, true, true},
    {"posterior without a variance", kEqual, {1, 2, 4}, {2, 3, 5}, {410042}, true, true},
    {"informative prior, unequal variances", {{"PriorDistType", 6}}, kFirst, kSecond, {410036}, true, true},
    {"no prior of a variance",
     {{"EqualDataVar", true}, {"PriorDistType", 0}},
     kFirst,
     kSecond,
     {410017},
     true,
     true},
    {"normal means without variances", {{"MeanDistType", 0}}, kFirst, kSecond, {410017}, true, true},
    {"a method of regression", {{"RegrCompType", 1}}, kFirst, kSecond, {410059}, false, true},
    {"Cauchy scale of 0", {{"RegrComPar", 0.0}}, kFirst, kSecond, {410059}, false, true},
    {"effect variance of 0",
     {{"RegrCompType", 4}, {"SecondGonenPar", 0.0}},
     kFirst,
     kSecond,
     {410059},
     false,
     true},
    {"Pearson prior out of range",
     {{"RegrCompType", 2}, {"RegrComPar", -1.0}},
     kFirst,
     kSecond,
     {410059},
     false,
     true},
};

TEST(IndependentSamples, SayWhyAResultIsMissing) {
  for (const StatusRow& row : kStatuses) {
    SCOPED_TRACE(row.fName);
    Model<Independent> model(IndependentSettings(row.fOptions), TwoGroups(row.fFirst, row.fSecond));
    EXPECT_EQ(model.Codes(), row.fvCodes);
    EXPECT_EQ(model.Record().GetBayesFactors().at(0) != kMissing, row.fHasBayesFactor);
    EXPECT_EQ(model.Record().GetModeValues().at(0) != kMissing, row.fHasPosterior);
  }
}

TEST(IndependentSamples, FailWithoutAGroup) {
  for (const double other : {kMissing, 0.0, 2.0}) {
    Model<Independent> model(IndependentSettings(kNoOptions), {{1, 2, 3}, {0, 0, other}});
    EXPECT_EQ(model.Status().GetCode(), 410030);
    EXPECT_TRUE(model.Status().IsError());
  }
}

// Precision-weighted means: with a vague prior the flat posterior, with a sharp one the prior.
TEST(IndependentSamples, WeighNormalPriorsByTheirPrecision) {
  json options = kKnown;
  options.update({{"MeanDistType", 0}, {"MeanDistParam1", 10.0}, {"MeanDistParam2", 4.0}});
  const auto modeAndVariance = [&options](double priorVariance) {
    options["MeanDistParam3"] = priorVariance;
    options["MeanDistParam4"] = priorVariance;
    Model<Independent> model(IndependentSettings(options), TwoGroups({1, 2, 4, 5}, {0, 2, 2, 0}));
    EXPECT_EQ(model.Codes(), std::vector<int>());
    return std::pair(model.Record().GetModeValues().at(0), model.Record().GetVarianceValues().at(0));
  };
  // Means 3 and 1 with squared errors 2/4 and 3/4.
  EXPECT_NEAR(modeAndVariance(1e12).first, 2, 1e-10);
  EXPECT_NEAR(modeAndVariance(1e12).second, 1.25, 1e-10);
  EXPECT_NEAR(modeAndVariance(1e-12).first, 6, 1e-10);
  EXPECT_NEAR(modeAndVariance(0.5).first, (3 + 10) / 2.0 - (1 / 0.75 + 4 / 0.5) / (1 / 0.75 + 1 / 0.5),
              1e-14);
}

TEST(IndependentSamples, DrawBothGroupsAndTheirDifference) {
  for (const json& options : {kNoOptions, kEqual, kKnown}) {
    Model<Independent> model(IndependentSettings(options), TwoGroups(kFirst, kSecond));
    const Independent& record = model.Record();
    for (const auto* curves :
         {&record.GetPlotXArguments(), &record.GetPlotXLikelihoods(), &record.GetPlotYArguments(),
          &record.GetPlotYLikelihoods(), &record.GetPlotArguments(), &record.GetPlotPosterior()}) {
      EXPECT_EQ(curves->at(0).size(), 201u);
    }
    EXPECT_NEAR(record.GetPlotXArguments().at(0).at(100), record.GetGroup1MeanValues().at(0), 1e-9);
    EXPECT_NEAR(record.GetPlotYArguments().at(0).at(100), record.GetGroup2MeanValues().at(0), 1e-9);
    EXPECT_NEAR(record.GetPlotXLikelihoods().at(0).at(100), 0, 1e-12);
    EXPECT_EQ(record.GetPlotYPrior().at(0), Column(201, 1.0));
    const Column& density = record.GetPlotPosterior().at(0);
    const Column& arguments = record.GetPlotArguments().at(0);
    EXPECT_NEAR(arguments.at(100), record.GetMeanDiffValues().at(0), 1e-9);
    double area = 0;
    for (const double value : density) area += value * (arguments.at(1) - arguments.at(0));
    EXPECT_NEAR(area, 0.999, 1e-3);
  }
}

// Differences of groups a billion away from 0, as exact as without the offset.
TEST(IndependentSamples, KeepTheDigitsOfAnOffset) {
  const std::vector<Column> near = TwoGroups(kFirst, kSecond);
  std::vector<Column> far = near;
  for (double& value : far[0]) value += 1e9;
  Model<Independent> expected(IndependentSettings(kEqual), near);
  Model<Independent> model(IndependentSettings(kEqual), far);
  EXPECT_NEAR(model.Record().GetMeanDiffValues().at(0), expected.Record().GetMeanDiffValues().at(0), 1e-14);
  EXPECT_NEAR(model.Record().GetTValues().at(0), expected.Record().GetTValues().at(0), 1e-12);
}

}  // namespace
