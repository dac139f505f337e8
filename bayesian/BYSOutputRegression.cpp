// Tables of regression; analysis of variance shows some of them too.
#include <cmath>

#include "bayesian/BYSOutputParts.h"

namespace {

using Stats = MCBSN_850::BSNMultiRegOutputStats;

constexpr const char* kSource = "BYSOutput";
constexpr std::size_t kResidualMeanSquare = 7;

// Names of the Bayes factor methods by their code.
constexpr const char* kMethodNames[] = {"JZS", "Zellner", "Hyper", "Rouder", "Gonen"};

double Root(double value) {
  const double missing = ZARQ_DataSource::GetMissingValue();
  return value == missing ? missing : std::sqrt(value);
}

// Posteriors as one list for each statistic.
struct Estimations {
  std::vector<double> modes, means, variances, lower, upper;

  explicit Estimations(const std::vector<MCBSN_850::BayesEstimation>& posteriors) {
    for (const MCBSN_850::BayesEstimation& posterior : posteriors) {
      modes.push_back(posterior.fMode);
      means.push_back(posterior.fMean);
      variances.push_back(posterior.fVariance);
      lower.push_back(posterior.fLower);
      upper.push_back(posterior.fUpper);
    }
  }
};

}  // namespace

const ZARQ_Variable& BYSOutput::GetDependent() const {
  return fDataSource.GetVariable(fStatSettings.GetDependentVar());
}

// Factors, then covariates, of the model.
std::vector<const ZARQ_Variable*> BYSOutput::GetPredictors() const {
  std::vector<const ZARQ_Variable*> predictors;
  for (int index : fStatSettings.GetFactors()) predictors.push_back(&fDataSource.GetVariable(index));
  for (int index : fStatSettings.GetCovariates()) predictors.push_back(&fDataSource.GetVariable(index));
  return predictors;
}

void BYSOutput::DisplayAnovaReg() {
  static constexpr const char* kRows[] = {"Regression", "Residual", "Total"};
  const auto& stats = GetStats<Stats>();
  BpPivotTable table = OpenTable("ANOVA");
  AnnotRegrDepend(table);
  AnnotRegrModel(table);
  AnnotRegrWeight(table);
  BpDimension rows = AddDimension(table, BpString("Source", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  FillAnova(rows, statistics, kRows, stats.GetAnova());
}

// R belongs to the larger of the two models compared.
void BYSOutput::DisplayBFReg() {
  const auto& stats = GetStats<Stats>();
  const bool full = fpCompSettings->GetCompareType() == BSNConst::FullModel;
  const double rSquare = full ? stats.GetRSquaredFull() : stats.GetRSquared();
  const std::vector<double> values[] = {{stats.GetBayesFactor()},
                                        {Root(rSquare)},
                                        {rSquare},
                                        {stats.GetAdjRSquared()},
                                        {Root(stats.GetAnova()[kResidualMeanSquare])}};
  BpPivotTable table = OpenTable("Bayes Factor Model Summary");
  AnnotRegrMethod(table);
  AnnotRegrModel(table);
  AnnotRegrWeight(table);
  FillTable(table, "Variable", {{BpString("", false), {&GetDependent()}}},
            {{Group::None,
              stats.IsLogBayesFactor() ? "Log Bayes Factor" : "Bayes Factor",
              Format::GeneralStat,
              &values[0],
              {full ? "Bayes factor: Testing Full..." : "Bayes factor: Testing Null..."}},
             {Group::None, "R", Format::GeneralStat, &values[1]},
             {Group::None, "R Square", Format::GeneralStat, &values[2]},
             {Group::None, "Adjusted R Square", Format::GeneralStat, &values[3]},
             {Group::None, "Std. Error...", Format::Mean, &values[4]}});
}

// A redundant parameter has no statistics: its cells stay empty beside their footnote.
void BYSOutput::DisplayEstCoefReg() {
  const auto& stats = GetStats<Stats>();
  const std::vector<MCMath_850::MCRegrParameter>& regrParams = stats.GetRegrParameters();
  const MCMath_850::MCBitSet& redunBitSet = stats.GetRedundancy();
  const Estimations bayesEstims(stats.GetVarCoeffBayesEstimations());
  BYS::Assert(regrParams.size() == redunBitSet.Size(), kSource, "regrParams.size() == redunBitSet.Size()");
  BYS::Assert(regrParams.size() == bayesEstims.modes.size(), kSource,
              "regrParams.size() == bayesEstims.size()");
  BpPivotTable table = OpenTable("Bayesian Estimates of Coefficients");
  AnnotRegrDepend(table);
  AnnotRegrModel(table);
  AnnotRegrWeight(table);
  AnnotRegrPrior(table);
  const std::vector<Column> columns =
      GetPosteriorColumns(Format::Coefficient, Format::Coefficient, "Variance", bayesEstims.modes,
                          bayesEstims.means, bayesEstims.variances, bayesEstims.lower, bayesEstims.upper);
  BpDimension parameters = AddDimension(table, BpString("Parameter", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  for (std::size_t i = 0; i < regrParams.size(); ++i) {
    fFactory.GetInputAdapter()->SetParamBagpipeCats(&parameters, regrParams[i]);
    if (!redunBitSet.IsIn(i)) {
      FillCells(statistics, {BpString("", false), {}}, i, columns);
      continue;
    }
    for (const Column& column : columns) AddColumn(statistics, column).CellNote(MakeNote("Redundant..."));
  }
}

void BYSOutput::DisplayEstVarErrReg() {
  const Estimations error({GetStats<Stats>().GetErrorBayesEstimation()});
  BpPivotTable table = OpenTable("Bayesian Estimates of Error Variance");
  AnnotRegrPrior(table);
  FillTable(table, "Parameter", {{BpString("Error variance", true), {}}},
            GetPosteriorColumns(Format::GeneralStat, Format::GeneralStat, "Variance", error.modes,
                                error.means, error.variances, error.lower, error.upper));
}

void BYSOutput::DisplayPreRespReg() {
  const auto& stats = GetStats<Stats>();
  const Estimations response({stats.GetPredictedBayesEstimation()});
  const Row row{BpString("Predicted value", true), {&GetDependent()}};
  BpPivotTable table = OpenTable("Bayesian Estimates of Predicted Response");
  BpDimension rows = AddDimension(table, BpString("Parameter", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  rows.Category(row.label).Note(GetPredictionNote(stats.GetPredictionPoint()));
  AnnotRegrPrior(table);
  FillCells(statistics, row, 0,
            GetPosteriorColumns(Format::Mean, Format::VarSquared, "Variance", response.modes, response.means,
                                response.variances, response.lower, response.upper));
}

// Each predictor with its value at the point where the response is predicted.
BpAnnotation BYSOutput::GetPredictionNote(const std::vector<double>& point) const {
  const std::vector<const ZARQ_Variable*> predictors = GetPredictors();
  const std::vector<int>& factors = fpCompSettings->GetFactors();
  BpComposite note("[%1 = %2:, ^1 = ^2:]1", true);
  note.Sublist();
  for (std::size_t i = 0; i < point.size(); ++i) {
    const ZARQ_Variable& variable = *predictors[i];
    note.Add(BpVariable(variable, BpVariable::kLabelElseName));
    if (i < factors.size()) {
      const OBS* level =
          fFactory.GetInputAdapter()->DecodeRecordCatValue(factors[i], static_cast<int>(point[i]));
      note.Add(BpDataValue(*level, variable));
    } else {
      note.Add(BpNumber(point[i], BpProcedure::Mean({&variable})));
    }
  }
  note.EndSublist();
  note.Finish();
  return BpAnnotation(note);
}

// A test keeps its number when another one could not be computed and is left out.
void BYSOutput::DisplayFtestReg() {
  const std::vector<MCMath_850::MCTestStats>& vFTestResults = GetStats<Stats>().GetFTestResults();
  const std::vector<MCBSN_850::BayesFTest>& zarqBayesTests = fStatSettings.GetFTests();
  if (vFTestResults.empty()) return;
  BYS::Assert(zarqBayesTests.size() == vFTestResults.size(), kSource,
              "zarqBayesTests.size() == vFTestResults.size()");
  for (std::size_t i = 0; i < vFTestResults.size(); ++i) {
    const MCBSN_850::BayesFTest& test = zarqBayesTests[i];
    const bool empty = !test.HasIntercept() && test.GetVariables().empty();
    if (empty || vFTestResults[i].GetWald() == ZARQ_DataSource::GetMissingValue()) continue;
    DisplayFtest(test, vFTestResults[i], static_cast<int>(i) + 1);
  }
}

void BYSOutput::DisplayFtest(const MCBSN_850::BayesFTest& test, const MCMath_850::MCTestStats& result,
                             int number) {
  const std::string& label = test.GetLabel();
  BpComposite title(label.empty() ? "Ftest Table ^1..." : "Ftest Table ^1 ^2...", true);
  title.Add(BpNumber(number, BpProcedure::Count()));
  if (!label.empty()) title.Add(BpString(label, false));
  title.Finish();
  BpComposite design("Design [%1: + ^1:]1", true);
  design.Sublist();
  if (test.HasIntercept()) design.Add(BpString("Intercept", true));
  for (int index : test.GetVariables()) {
    design.Add(BpVariable(fDataSource.GetVariable(index), BpVariable::kLabelElseName));
  }
  design.EndSublist();
  design.Finish();
  BpPivotTable table = fpProcedure->PivotTable(title, BpString("F-test Table", true), true);
  table.Note(BpAnnotation(design));
  const std::vector<double> values[] = {
      {result.GetWald()}, {result.GetDF()}, {result.GetDF2()}, {result.GetSig()}};
  FillTable(table, "Parameter", {{BpString("", false), {}}},
            {{Group::None, "F", Format::GeneralStat, &values[0]},
             {Group::None, "df1", Format::Count, &values[1]},
             {Group::None, "df2", Format::Count, &values[2]},
             {Group::None, "Sig.", Format::Significance, &values[3]}});
}

void BYSOutput::AnnotRegrDepend(BpPivotTable& table) const {
  if (fStatSettings.GetDependentVar() < 0) return;
  BpComposite note("Dependent Variable ^1", true);
  note.Add(BpVariable(GetDependent(), BpVariable::kLabelElseName));
  note.Finish();
  table.Note(BpAnnotation(note));
}

void BYSOutput::AnnotRegrWeight(BpPivotTable& table) const {
  const int weight = fStatSettings.GetRegrWeightVar();
  if (weight < 0) return;
  BpComposite note("Weighted Least Squares by ^1...", true);
  note.Add(BpVariable(fDataSource.GetVariable(weight), BpVariable::kLabelElseName));
  note.Finish();
  table.Note(BpAnnotation(note));
}

void BYSOutput::AnnotRegrModel(BpPivotTable& table) const {
  AnnotRegrModelFromPattern(table, "Model [%1:, ^1:]1");
}

void BYSOutput::AnnotRegrModelFromPattern(BpPivotTable& table, const char* pattern) const {
  BpComposite note(pattern, true);
  note.Sublist();
  if (fpCompSettings->GetModelType() == BSNConst::Regression) note.Add(BpString("(Intercept)", true));
  for (const ZARQ_Variable* variable : GetPredictors()) {
    note.Add(BpVariable(*variable, BpVariable::kLabelElseName));
  }
  note.EndSublist();
  note.Finish();
  table.Note(BpAnnotation(note));
}

void BYSOutput::AnnotRegrMethod(BpPivotTable& table) const {
  table.Note(BpAnnotation(GetRegrMethodText("Method ^1")));
}

BpComposite BYSOutput::GetRegrMethodText(const char* key) const {
  BpComposite text(key, true);
  text.Add(BpString(kMethodNames[fpCompSettings->GetRegrCompType()], true));
  text.Finish();
  return text;
}

void BYSOutput::AnnotRegrPrior(BpPivotTable& table) const {
  const BSNConst::PriorTypes prior = fpCompSettings->GetPriorType();
  if (prior == BSNConst::Conjugate) table.Note(MakeNote("Assume conjugate..."));
  if (prior == BSNConst::Reference) table.Note(MakeNote("Assume standard reference..."));
}
