// The component's frame: what counts as a case, how a run ends, what settings it takes.
#include <sstream>
#include <vector>

#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using Normal = MCBSN_850::BSN1SampleNormOutputStats;

BSNSettings TwoMeans() {
  BSNSettings settings;
  settings.SetModelType(BSNConst::OneSample, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetCovariates({0, 1});
  return settings;
}

const std::vector<Column> kTwoColumns = {{1, 2, kMissing, 4, 7, 3, 5, 8}, {2, kMissing, 1, 3, 9, 4, 4, 6}};

class Listener : public MCCommon_850::ProgressListener {
 public:
  void ReportProgress(MCCommon_850::ProgressReport& report) override {
    fvCounts.push_back(report.GetCount("records"));
  }
  std::vector<int> fvCounts;
};

class Cancel : public MCCommon_850::MCCancelQuery {
 public:
  bool IsCancelled() const override { return true; }
};

TEST(Component, DropsMissingValuesByTestOrListwise) {
  BSNSettings settings = TwoMeans();
  EXPECT_EQ(Model<Normal>(settings, kTwoColumns).Record().GetNs(), (std::vector<double>{7, 7}));
  settings.SetMissScope(BSNConst::Listwise);
  Model<Normal> listwise(settings, kTwoColumns);
  EXPECT_EQ(listwise.Record().GetNs(), (std::vector<double>{6, 6}));
  EXPECT_EQ(listwise.Record().GetMeanValues(), (std::vector<double>{28.0 / 6, 28.0 / 6}));
}

TEST(Component, CountsAWeightedCaseAsManyTimes) {
  BSNSettings settings = TwoMeans();
  Model<Normal> repeated(settings, {{1, 1, 1, 4, 4, 9}, {5, 5, 5, 0, 0, 2}});
  settings.SetFrequencyWeightVar(2);
  Model<Normal> weighted(settings, {{1, 4, 9, 50, 60}, {5, 0, 2, 50, 60}, {2.5, 2.4, 0.5, 0.4, kMissing}});
  EXPECT_EQ(weighted.Record().GetNs(), repeated.Record().GetNs());
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_NEAR(weighted.Record().GetTValues().at(i), repeated.Record().GetTValues().at(i), 1e-13);
  }
}

TEST(Component, ReportsHowManyRecordsItRead) {
  Listener listener;
  BSNSettings settings = TwoMeans();
  settings.SetProgressListener(&listener);
  Model<Normal>(settings, {Column(10001, 1.0), Column(10001, 2.0)});
  ASSERT_EQ(listener.fvCounts.size(), 3u);
  EXPECT_TRUE(std::is_sorted(listener.fvCounts.begin(), listener.fvCounts.end()));
  EXPECT_EQ(listener.fvCounts.back(), 10001);
}

struct FailureRow {
  const char* fName;
  void (*fSpoil)(BSNSettings&);
  std::vector<Column> fvColumns;
  int fCode;
};

const Cancel kCancel;

const FailureRow kFailures[] = {
    {"no case counts", [](BSNSettings& s) { s.SetFrequencyWeightVar(1); }, {{1, 2}, {0.4, -1}}, 410003},
    {"no case is complete",
     [](BSNSettings& s) { s.SetMissScope(BSNConst::Listwise); },
     {{1, kMissing}, {kMissing, 2}},
     410003},
    {"cancelled", [](BSNSettings& s) { s.SetCancelPointer(&kCancel); }, kTwoColumns, 410001},
    {"no variables", [](BSNSettings& s) { s.SetCovariates({}); }, kTwoColumns, 410000},
    {"unknown test", [](BSNSettings& s) { s.SetTestDistType(BSNConst::Multinomial); }, kTwoColumns, 410000},
    {"list of the wrong length",
     [](BSNSettings& s) {
       s.SetNullValues({1, 2, 3});
     },
     kTwoColumns, 410000},
    {"variance of 0",
     [](BSNSettings& s) {
       s.SetDataVarVals({kMissing, 0});
     },
     kTwoColumns, 410000},
    {"g of 0",
     [](BSNSettings& s) {
       s.SetAlterGValues({0, 1});
     },
     kTwoColumns, 410000},
    {"certain interval", [](BSNSettings& s) { s.SetCILevel(100); }, kTwoColumns, 410000},
    {"pairs without a second", [](BSNSettings& s) { s.SetModelType(BSNConst::Related, true); }, kTwoColumns,
     410000},
    {"groups without a grouping", [](BSNSettings& s) { s.SetModelType(BSNConst::Independent, true); },
     kTwoColumns, 410000},
};

TEST(Component, EndsInAnErrorAndAnEmptyRecord) {
  for (const FailureRow& row : kFailures) {
    SCOPED_TRACE(row.fName);
    BSNSettings settings = TwoMeans();
    row.fSpoil(settings);
    Model<Normal> run(settings, row.fvColumns);
    EXPECT_TRUE(run.Status().IsError());
    EXPECT_EQ(run.Status().GetCode(), row.fCode);
    EXPECT_EQ(run.Codes(), std::vector<int>{row.fCode});
    EXPECT_THROW(run.Record(), std::logic_error);
  }
}

TEST(Component, ComputesOnlyWhatTheAnalysisAsksFor) {
  BSNSettings settings = TwoMeans();
  const std::vector<Column> columns = {{1, 2, 4}, {3, 3, 3}};
  settings.SetAnalysType(BSNConst::Posterior);
  Model<Normal> posterior(settings, columns);
  EXPECT_EQ(posterior.Record().GetBayesFactors().at(0), kMissing);
  EXPECT_EQ(posterior.Codes(), (std::vector<int>{410027, 410010}));
  settings.SetAnalysType(BSNConst::BayesFactor);
  Model<Normal> bayesFactor(settings, columns);
  EXPECT_NE(bayesFactor.Record().GetBayesFactors().at(0), kMissing);
  EXPECT_EQ(bayesFactor.Record().GetModeValues().at(0), kMissing);
  EXPECT_TRUE(bayesFactor.Record().GetPlotLikelihoods().at(0).empty());
  EXPECT_EQ(bayesFactor.Codes(), (std::vector<int>{410010, 410045}));
}

TEST(Settings, CopiesAreIndependentAndDefaultsAreNotGiven) {
  BSNSettings settings;
  EXPECT_EQ(settings.GetCILevel(), 95);
  EXPECT_EQ(settings.GetTolValue(), kMissing);
  EXPECT_EQ(settings.GetFixType(), BSNConst::FixNone);
  EXPECT_EQ(settings.GetGroupVar(), -1);
  BSNSettings copy(settings);
  copy.SetCovariates({4});
  settings = copy;
  copy.SetCovariates({5});
  EXPECT_EQ(settings.GetCovariates(), std::vector<int>{4});
  std::ostringstream dump;
  settings.Display(dump);
  EXPECT_NE(dump.str().find("CILevel: 95\n"), std::string::npos);
  EXPECT_NE(dump.str().find("Covariates: 4 \n"), std::string::npos);
  EXPECT_NE(dump.str().find("TolValue: not given\n"), std::string::npos);
}

}  // namespace
