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
  Run<Normal> run(settings, columns);
  return OutcomeOf(run.Record(), run.Record().GetMeanValues().at(0), run.Codes());
}

Outcome RunRelated(const json& input) {
  std::vector<Column> columns;
  for (const json& values : input.at("data")) columns.push_back(ColumnOf(values));
  Run<Related> run(RelatedSettings(input.at("options")), columns);
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

}  // namespace
