// One-sample tests of proportions and rates, through the component.
#include <cmath>
#include <limits>

#include "component/numeric/CountBayesFactor.h"
#include "component/numeric/GaussLobatto.h"
#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using BayesComponent::ConjugatePrior;
using Binomial = MCBSN_850::BSN1SampleBinoOutputStats;
using Poisson = MCBSN_850::BSN1SamplePoisnOutputStats;

const json kNoOptions = json::object();

BSNSettings CountSettings(const json& options) {
  BSNSettings settings;
  settings.SetModelType(BSNConst::OneSample, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetNullValues({options.value("NullValue", kMissing)});
  settings.SetNullPrior1s({options.value("NullPrior1", kMissing)});
  settings.SetNullPrior2s({options.value("NullPrior2", kMissing)});
  // The cases that ask for a posterior alone leave the alternative out.
  settings.SetAlterPrior1s({options.value("AlterPrior1", 1.0)});
  settings.SetAlterPrior2s({options.value("AlterPrior2", 1.0)});
  settings.SetPriorParam1(options.value("PriorParam1", kMissing));
  settings.SetPriorParam2(options.value("PriorParam2", kMissing));
  settings.SetCILevel(options.value("CILevel", 95.0));
  settings.SetFrequencyWeightVar(1);
  return settings;
}

BSNSettings BinomialSettings(const json& options) {
  BSNSettings settings = CountSettings(options);
  settings.SetTestDistType(BSNConst::Binomial);
  settings.SetFactors({0});
  settings.SetFactorNCategs({2});
  return settings;
}

BSNSettings PoissonSettings(const json& options) {
  BSNSettings settings = CountSettings(options);
  settings.SetTestDistType(BSNConst::Poisson);
  settings.SetCovariates({0});
  return settings;
}

template <class Record>
Outcome OutcomeOf(Model<Record>& model) {
  const Record& record = model.Record();
  return {{},
          LogOf(record.GetBayesFactors().at(0), record.GetIsLogBayesFactor().at(0)),
          PosteriorOf(record, record.GetMeanValues()),
          model.Codes()};
}

Outcome RunBinomial(const json& input) {
  const double n = input.at("n");
  const double successes = input.at("successes");
  Model<Binomial> model(BinomialSettings(input.at("options")), {{1, 0}, {successes, n - successes}});
  return OutcomeOf(model);
}

// Counts of this sum: as many as there are of its quotient, and one more in the others.
Outcome RunPoisson(const json& input) {
  const double n = input.at("n");
  const double sum = input.at("sum");
  const double count = std::floor(sum / n);
  const double nMore = sum - n * count;
  Model<Poisson> model(PoissonSettings(input.at("options")), {{count, count + 1}, {n - nMore, nMore}});
  return OutcomeOf(model);
}

// A logarithm in the record is announced; the files say only what was missing.
void ExpectCountOutcome(const json& expect, Outcome outcome) {
  const bool isLog = std::abs(outcome.fLnBF) > 700 && outcome.fLnBF != kMissing;
  const auto announced = std::find(outcome.fvCodes.begin(), outcome.fvCodes.end(), 410041);
  EXPECT_EQ(announced != outcome.fvCodes.end(), isLog);
  if (isLog) outcome.fvCodes.erase(announced);
  json rest = expect;
  rest.erase("stats");
  ExpectOutcome(rest, outcome);
}

TEST(Counts, MatchReferenceCases) {
  const std::pair<const char*, Outcome (*)(const json&)> files[] = {{"onesample_binomial", RunBinomial},
                                                                    {"onesample_poisson", RunPoisson}};
  for (const auto& [name, run] : files) {
    for (const json& row : ReferenceCases(name)) {
      SCOPED_TRACE(row.at("name").get<std::string>());
      ExpectCountOutcome(row.at("expect"), run(row.at("input")));
    }
  }
}

TEST(Counts, DescribeTheSample) {
  Model<Binomial> binomial(BinomialSettings(kNoOptions),
                           {{1, 0, kMissing, -1, 1, 0, 2}, {2, 3, 1, 1, 1, 1, 1}});
  EXPECT_EQ(binomial.Record().GetNs().at(0), 7);
  EXPECT_EQ(binomial.Record().GetCat1Ns().at(0), 3);
  EXPECT_EQ(binomial.Record().GetCat2Ns().at(0), 4);
  EXPECT_EQ(binomial.Record().GetCat1Props().at(0), 3.0 / 7);
  EXPECT_EQ(binomial.Record().GetCat2Props().at(0), 4.0 / 7);
  Model<Poisson> poisson(PoissonSettings(kNoOptions), {{3, kMissing, 7, 2, 9}, {1, 1, 2, 1, 0}});
  EXPECT_EQ(poisson.Record().GetNs().at(0), 4);
  EXPECT_EQ(poisson.Record().GetMinCnts().at(0), 2);
  EXPECT_EQ(poisson.Record().GetMaxCnts().at(0), 7);
}

struct StatusRow {
  const char* fName;
  json fOptions;
  double fFirst;  // number of cases with the values 1 and 0
  double fSecond;
  BSNConst::PriorTypes fPriorType;
  std::vector<int> fvBinomialCodes;
  std::vector<int> fvPoissonCodes;
};

const StatusRow kStatuses[] = {
    {"no fault", {}, 3, 4, BSNConst::Conjugate, {}, {}},
    {"custom prior", {}, 3, 4, BSNConst::Custom, {410017}, {410017}},
    {"negative prior", {{"PriorParam1", -1.0}}, 3, 4, BSNConst::Conjugate, {410017}, {410017}},
    {"impossible null", {{"NullValue", 0.0}}, 3, 4, BSNConst::Conjugate, {410059}, {410059}},
    {"null of 1", {{"NullValue", 1.0}}, 3, 4, BSNConst::Conjugate, {410059}, {}},
    {"improper null prior", {{"NullPrior2", 0.0}}, 3, 4, BSNConst::Conjugate, {410059}, {410059}},
    {"data that settle nothing",
     {{"PriorParam1", 0.0}, {"PriorParam2", 0.0}},
     0,
     4,
     BSNConst::Conjugate,
     {410038},
     {410038}},
    {"logarithm", {{"NullValue", 1e-300}}, 3, 4, BSNConst::Conjugate, {410041}, {410041}},
};

TEST(Counts, SayWhyAResultIsMissingOrALogarithm) {
  for (const StatusRow& row : kStatuses) {
    SCOPED_TRACE(row.fName);
    const json options = row.fOptions.is_null() ? kNoOptions : row.fOptions;
    const std::vector<Column> columns = {{1, 0}, {row.fFirst, row.fSecond}};
    BSNSettings settings = BinomialSettings(options);
    settings.SetPriorType(row.fPriorType);
    EXPECT_EQ(Model<Binomial>(settings, columns).Codes(), row.fvBinomialCodes);
    settings = PoissonSettings(options);
    settings.SetPriorType(row.fPriorType);
    EXPECT_EQ(Model<Poisson>(settings, columns).Codes(), row.fvPoissonCodes);
  }
}

TEST(Counts, WithoutCasesHaveNeitherBayesFactorNorPosterior) {
  const std::vector<Column> columns = {{kMissing}, {1}};
  const std::vector<int> codes = {410037, 410038};
  Model<Binomial> binomial(BinomialSettings(kNoOptions), columns);
  EXPECT_EQ(binomial.Codes(), codes);
  EXPECT_EQ(binomial.Record().GetCat1Props().at(0), kMissing);
  Model<Poisson> poisson(PoissonSettings(kNoOptions), columns);
  EXPECT_EQ(poisson.Codes(), codes);
  EXPECT_EQ(poisson.Record().GetMinCnts().at(0), kMissing);
}

TEST(Counts, DrawImproperPriorsAsTheirKernel) {
  Model<Poisson> model(PoissonSettings(kNoOptions), {{3, 5, 2}, {1, 1, 1}});
  const Column& rates = model.Record().GetPlotArguments4Prior().at(0);
  ASSERT_EQ(rates.size(), 201u);
  for (const std::size_t i : {0u, 100u, 200u}) {
    EXPECT_NEAR(model.Record().GetPlotPrior().at(0).at(i), 1 / std::sqrt(rates.at(i)), 1e-12);
    const double lnL = 10 * std::log(rates.at(i)) - 3 * rates.at(i) - (10 * std::log(10.0 / 3) - 10);
    EXPECT_NEAR(model.Record().GetPlotLikelihoods().at(0).at(i), lnL, 1e-12 * std::abs(lnL) + 1e-13);
  }
}

// What nobody sees is drawn as far as it takes to know that it exists; at a rate of 0 some priors are
// infinite.
TEST(Counts, DrawHiddenCurvesUpToTheirFirstNumber) {
  struct Row {
    const char* fName;
    double fShape;
    Column fCounts;
    std::size_t fPoints;  // that are computed of prior and posterior
  };
  const Row rows[] = {{"numbers from the first point on", 2, {3, 5, 2}, 1},
                      {"an infinite density first", 1e-3, {0, 0, 0}, 2},
                      {"no cases", 2, {kMissing, kMissing, kMissing}, 0}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.fName);
    BSNSettings settings = PoissonSettings({{"PriorParam1", row.fShape}, {"PriorParam2", 1.0}});
    const std::vector<Column> columns = {row.fCounts, {1, 1, 1}};
    Model<Poisson> shown(settings, columns);
    settings.SetPlotsShown(false);
    Model<Poisson> hidden(settings, columns);
    const Column& all = shown.Record().GetPlotPrior().at(0);
    EXPECT_EQ(all.size(), row.fPoints == 0 ? 0u : 201u);
    const Column& prior = hidden.Record().GetPlotPrior().at(0);
    ASSERT_EQ(prior.size(), row.fPoints);
    EXPECT_TRUE(std::equal(prior.begin(), prior.end(), all.begin()));
    EXPECT_EQ(hidden.Record().GetPlotPosterior().at(0).size(), row.fPoints);
    EXPECT_EQ(hidden.Record().GetPlotLikelihoods().at(0).size(), std::min<std::size_t>(row.fPoints, 1));
    EXPECT_EQ(hidden.Codes(), shown.Codes());
  }
}

// The marginal likelihoods by quadrature, for priors that pull both ways and counts of every size.
TEST(CountBayesFactor, IsTheRatioOfItsIntegrals) {
  const ConjugatePrior null{3, 0.7};
  const ConjugatePrior alternative{1.5, 20};
  const BayesComponent::GaussLobatto quadrature(1e-10, 2000);
  for (const auto& [total, n] : {std::pair(0.0, 3.0), {3.0, 3.0}, {40.0, 90.0}, {2e5, 3e5}}) {
    const auto lnBinomial = [&](const ConjugatePrior& prior) {
      const auto lnF = [&](double logit) {
        const double lnP = -std::log1p(std::exp(-logit));
        const double lnQ = -std::log1p(std::exp(logit));
        return (prior.fFirst + total) * lnP + (prior.fSecond + n - total) * lnQ;
      };
      const double peak = std::log((prior.fFirst + total) / (prior.fSecond + n - total));
      return quadrature.IntegrateAround(lnF, -200, peak, 200).fLogValue -
             (std::lgamma(prior.fFirst) + std::lgamma(prior.fSecond) -
              std::lgamma(prior.fFirst + prior.fSecond));
    };
    EXPECT_NEAR(LogBF01Binomial(total, n, null, alternative), lnBinomial(null) - lnBinomial(alternative),
                1e-9 * n)
        << total << " of " << n;
    const auto lnPoisson = [&](const ConjugatePrior& prior) {
      const auto lnF = [&](double lnRate) {
        return (prior.fFirst + total) * lnRate - (prior.fSecond + n) * std::exp(lnRate);
      };
      const double peak = std::log((prior.fFirst + total) / (prior.fSecond + n));
      return quadrature.IntegrateAround(lnF, -200, peak, 200).fLogValue +
             prior.fFirst * std::log(prior.fSecond) - std::lgamma(prior.fFirst);
    };
    EXPECT_NEAR(LogBF01Poisson(total, n, null, alternative), lnPoisson(null) - lnPoisson(alternative),
                1e-9 * n)
        << total << " in " << n;
  }
}

}  // namespace
