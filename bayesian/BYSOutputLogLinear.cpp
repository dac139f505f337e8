// Tables of the log-linear command: the cross-tabulation of two factors, the test of their independence and
// their interactions.
#include <algorithm>

#include "bayesian/BYSOutputParts.h"

namespace {

using MCBSN_850::BSNContingency;

constexpr const char* kSource = "BYSOutput";
constexpr int kAsCreated = 2;
constexpr int kWeightsAsTheyAre = 2;
constexpr int kRowFactor = 0;
constexpr int kColumnFactor = 1;

// A model of the test, and its word.
struct ModelName {
  BSNConst::DistTypes model;
  const char* name;
};
constexpr ModelName kModelNames[] = {{BSNConst::Poisson, "Poisson"},
                                     {BSNConst::Multinomial, "multinomial"},
                                     {BSNConst::Nonparametric, "nonparameteric"}};

// By their code.
constexpr const char* kPriorNames[] = {"conjugate", "Dirichlet", "intrinsic"};
constexpr const char* kFixNotes[] = {"The total sum is fixed in the contingency table.",
                                     "The column sums are fixed in the contingency table.",
                                     "The row sums are fixed in the contingency table."};

// A crossing of the tabulation. Behind the last level stands the total.
struct Crossing {
  double count;
  double expected;
  double rowTotal;
  double columnTotal;
  double total;
};

Crossing GetCrossing(const BSNContingency& table, std::size_t row, std::size_t column) {
  const std::size_t nRows = table.GetRowTotals().size();
  const std::size_t nColumns = table.GetColTotals().size();
  const double total = table.GetTotalWeight();
  const double rowTotal = row < nRows ? table.GetRowTotals()[row] : total;
  const double columnTotal = column < nColumns ? table.GetColTotals()[column] : total;
  if (row == nRows) return {columnTotal, columnTotal, rowTotal, columnTotal, total};
  if (column == nColumns) return {rowTotal, rowTotal, rowTotal, columnTotal, total};
  return {table.GetAllCounts()[row][column], table.GetExpectedCounts()[row][column], rowTotal, columnTotal,
          total};
}

double Percentage(double part, double whole) {
  constexpr double kAll = 100.0;
  return whole > 0 ? kAll * part / whole : ZARQ_DataSource::GetMissingValue();
}

// The statistics of a crossing in the order shown, each with the place of its print option. A factor is named
// in the label.
constexpr int kNoFactor = -1;
struct CrossingStatistic {
  std::size_t option;
  const char* label;
  int factor;
  BpFormatSpec (*format)();
  double (*value)(const Crossing&);
};
constexpr CrossingStatistic kCrossingStatistics[] = {
    {0, "Count", kNoFactor, &BpProcedure::Count, [](const Crossing& c) { return c.count; }},
    {3, "Expected Count", kNoFactor, &BpProcedure::Residual, [](const Crossing& c) { return c.expected; }},
    {1, "% within ^1", kRowFactor, &BpProcedure::Percent,
     [](const Crossing& c) { return Percentage(c.count, c.rowTotal); }},
    {2, "% within ^1", kColumnFactor, &BpProcedure::Percent,
     [](const Crossing& c) { return Percentage(c.count, c.columnTotal); }},
    {4, "% of Total", kNoFactor, &BpProcedure::Percent,
     [](const Crossing& c) { return Percentage(c.count, c.total); }}};

void AddCount(BpComposite& text, double value) {
  text.Add(BpNumber(value, BpProcedure::Count()));
}

// A row of the test: statistic, degrees of freedom and significance. Leaves the statistic's cell current.
BpCategory AddTest(BpDimension& tests, BpDimension& statistics, const char* label,
                   const MCMath_850::MCTestStats& result) {
  tests.Category(BpString(label, true));
  statistics.Category(BpString("df", true)).Cell(BpNumber(result.GetDF(), BpProcedure::Count()));
  statistics.Category(BpString("Asymptotic Sig.(2-sided)", true))
      .Cell(BpNumber(result.GetSig(), BpProcedure::Significance()));
  BpCategory value = statistics.Category(BpString("Value", true));
  value.Cell(BpNumber(result.GetWald(), BpProcedure::GeneralStat()));
  return value;
}

BpAnnotation MakeExpectedNote(const BSNContingency& table) {
  BpComposite note("^1 cells expected ^2^3", true);
  AddCount(note, table.GetNCellsExpLess5());
  note.Add(BpNumber(table.GetPctCellsExpLess5(), BpProcedure::Percent()));
  note.Add(BpNumber(table.GetMinExpectedCount(), BpProcedure::GeneralStat()));
  note.Finish();
  return BpAnnotation(note);
}

}  // namespace

// With a factor that doesn't vary there is nothing but the cases to show.
void BYSOutput::DisplayLogLinearOutput() {
  const std::vector<int>& factorSizes = fpCompSettings->GetFactorSizes();
  DisplayCaseSummaryLogLinear();
  BYS::Assert(factorSizes.size() == 2, kSource, "factorSizes.size() == 2");
  if (*std::min_element(factorSizes.begin(), factorSizes.end()) <= 1) return;
  DisplayCrossTabLogLinear();
  if (IsWanted(When::BayesFactor)) DisplayTestOfIndLogLinear();
  if (IsWanted(When::Posterior)) DisplayPosteriorLogLinear();
}

const ZARQ_Variable& BYSOutput::GetTableVariable(int factor) const {
  return fDataSource.GetVariable(fStatSettings.GetFactors()[static_cast<std::size_t>(factor)]);
}

BpComposite BYSOutput::GetFactorLabel(const char* key, int factor) const {
  BpComposite label(key, true);
  label.Add(BpVariable(GetTableVariable(factor), BpVariable::kLabelElseName));
  label.Finish();
  return label;
}

// The value behind a code. Codes are in the order that ORDER asked for.
BpDataValue BYSOutput::GetLevel(int factor, int code) const {
  return {fFactory.GetInputAdapter()->GetFactorValue(static_cast<std::size_t>(factor), code),
          GetTableVariable(factor)};
}

// A text about the two factors, the row factor first.
BpComposite BYSOutput::GetCrossLabel(const char* key) const {
  BpComposite label(key, true);
  label.Add(BpVariable(GetTableVariable(kRowFactor), BpVariable::kLabelElseName));
  label.Add(BpVariable(GetTableVariable(kColumnFactor), BpVariable::kLabelElseName));
  label.Finish();
  return label;
}

void BYSOutput::DisplayCaseSummaryLogLinear() {
  const BYSProcAdapter& adapter = *fFactory.GetInputAdapter();
  const std::size_t nFacts = fStatSettings.GetFactors().size();
  BYS::Assert(nFacts == 2, kSource, "nFacts == 2");
  const double valid = adapter.GetWeightedValidCount();
  const double missing = adapter.GetWeightedDroppedCount();
  const struct {
    const char* label;
    double count;
  } groups[] = {{"Valid", valid}, {"Missing", missing}, {"Total", valid + missing}};
  BpPivotTable table = OpenTable("Case Processing Summary");
  BpDimension cases = AddDimension(table, BpString("Observed Cases", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  cases.Category(GetCrossLabel("^1 * ^2"));
  for (const auto& [label, count] : groups) {
    BpGroup group = statistics.Group(BpString(label, true), true, kAsCreated);
    group.Category(BpString("N", true)).Cell(BpNumber(count, BpProcedure::Count()));
    group.Category(BpString("Percent", true))
        .Cell(BpNumber(Percentage(count, valid + missing), BpProcedure::Percent()));
  }
}

void BYSOutput::DisplayCrossTabLogLinear() {
  if (fSpecs.GetPrintSuprTable()) return;
  const std::vector<int>& factorSizes = fpCompSettings->GetFactorSizes();
  BpPivotTable table = fpProcedure->PivotTable(GetCrossLabel("^1 * ^2 Category Tabulation"),
                                               BpString("Category Tabulation", true), true);
  BpDimension rows = AddDimension(table, BpString("Row Variable", true), BpDimension::kRows, 1);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kRows, 2);
  BpDimension columns = AddDimension(table, BpString("Column Variable", true), BpDimension::kColumns);
  for (int row = 0; row <= factorSizes[kRowFactor]; ++row) {
    for (int column = 0; column <= factorSizes[kColumnFactor]; ++column) {
      SelectLevel(rows, kRowFactor, row);
      SelectLevel(columns, kColumnFactor, column);
      FillCrossing(statistics, static_cast<std::size_t>(row), static_cast<std::size_t>(column));
    }
  }
}

// Behind the last level stands the total.
void BYSOutput::SelectLevel(BpDimension& dimension, int factor, int level) const {
  if (level == fpCompSettings->GetFactorSizes()[static_cast<std::size_t>(factor)]) {
    dimension.Category(BpString("Total", true));
    return;
  }
  dimension.Group(BpVariable(GetTableVariable(factor), BpVariable::kLabelElseName), true, kAsCreated)
      .Category(GetLevel(factor, level));
}

void BYSOutput::FillCrossing(BpDimension& statistics, std::size_t row, std::size_t column) const {
  const auto& stats = GetStats<MCBSN_850::BSNLogLinearOutputStats>();
  const Crossing crossing = GetCrossing(stats.GetContingencyMatrix(), row, column);
  const bool fractions = fpCompSettings->GetFrequencyWeightVar() >= 0 &&
                         fFactory.GetInputAdapter()->GetWeightAdjType() == kWeightsAsTheyAre;
  for (const CrossingStatistic& statistic : kCrossingStatistics) {
    if (!fSpecs.GetPrintCellOpts()[statistic.option]) continue;
    const bool isCount = statistic.option == 0;
    const BpFormatSpec format = isCount && fractions ? BpProcedure::GeneralStat() : statistic.format();
    BpCategory category = statistic.factor == kNoFactor
                              ? statistics.Category(BpString(statistic.label, true))
                              : statistics.Category(GetFactorLabel(statistic.label, statistic.factor));
    category.Cell(BpNumber(statistic.value(crossing), format));
  }
}

void BYSOutput::DisplayTestOfIndLogLinear() {
  const auto& stats = GetStats<MCBSN_850::BSNLogLinearOutputStats>();
  const std::vector<bool>& printStatOpts = fSpecs.GetPrintStatOpts();
  BYS::Assert(printStatOpts.size() == 2, kSource, "printStatOpts.size() == 2");
  const bool isFourfold = fpCompSettings->GetFactorSizes() == std::vector<int>{2, 2};
  BpPivotTable table = OpenTable("Test of Independence");
  AnnotLogLinFix(table);
  BpDimension tests = AddDimension(table, BpString("variables", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  tests.Category(BpString(stats.IsLogBayesFactor() ? "Log Bayes Factor" : "Bayes Factor", true));
  BpCategory value = statistics.Category(BpString("Value", true));
  value.Cell(BpNumber(stats.GetBayesFactor(), BpProcedure::GeneralStat()));
  AnnotBayesFactor(value);
  if (printStatOpts[0]) {
    AddTest(tests, statistics, "Pearson Chi-Square", stats.GetChiSquareResult())
        .CellNote(MakeExpectedNote(stats.GetContingencyMatrix()));
    if (isFourfold) AddTest(tests, statistics, "Continuity Correction", stats.GetContCorrectResult());
  }
  if (printStatOpts[1]) AddTest(tests, statistics, "Likelihood Ratio", stats.GetLikeRatioResult());
  if (!printStatOpts[0] || !isFourfold) return;
  tests.Category(BpString("Fisher's Exact Test", true));
  statistics.Category(BpString("Exact Sig.(2-sided)", true))
      .Cell(BpNumber(stats.GetFisher2SidedSig(), BpProcedure::Significance()));
  statistics.Category(BpString("Exact Sig.(1-sided)", true))
      .Cell(BpNumber(stats.GetFisher1SidedSig(), BpProcedure::Significance()));
}

// Which margins the sampling design fixes.
void BYSOutput::AnnotLogLinFix(BpPivotTable& table) const {
  const BSNConst::FixType fixed = fpCompSettings->GetFixType();
  if (fixed >= BSNConst::FixTotal && fixed <= BSNConst::FixRow) return table.Note(MakeNote(kFixNotes[fixed]));
  if (fpCompSettings->GetLogLinModel() != BSNConst::Poisson) return;
  table.Note(MakeNote("No marginal or total sums are fixed in the contingency table."));
}

// Model and prior, and the size of the training sample of an intrinsic prior.
void BYSOutput::AnnotBayesFactor(BpCategory& category) const {
  const auto& stats = GetStats<MCBSN_850::BSNLogLinearOutputStats>();
  const BSNConst::DistTypes model = fpCompSettings->GetLogLinModel();
  const BSNConst::LogLinPriorType prior = fpCompSettings->GetLogLinPriorType();
  const auto* name = std::find_if(std::begin(kModelNames), std::end(kModelNames),
                                  [model](const ModelName& row) { return row.model == model; });
  BpComposite note("^1 model and prior ^2 ...", true);
  note.Add(BpString(name->name, true));
  note.Add(BpString(kPriorNames[prior], true));
  note.Finish();
  category.CellNote(BpAnnotation(note));
  if (prior != BSNConst::PriorIntrinsic || model != BSNConst::Multinomial) return;
  const BSNConst::FixType fixed = fpCompSettings->GetFixType();
  const bool marginFixed = fixed == BSNConst::FixColumn || fixed == BSNConst::FixRow;
  BpComposite training(marginFixed ? "Training sample is ^1 ^2 table ..." : "Training sample is ^1 table ...",
                       true);
  AddCount(training, marginFixed ? stats.GetT1() : stats.GetT());
  if (marginFixed) AddCount(training, stats.GetT2());
  training.Finish();
  category.CellNote(BpAnnotation(training));
}

void BYSOutput::DisplayPosteriorLogLinear() {
  const auto& stats = GetStats<MCBSN_850::BSNLogLinearOutputStats>();
  const auto& posterEstims = stats.GetPosteriorEstimations();
  const std::vector<int>& compFactInds = fpCompSettings->GetFactors();
  BYS::Assert(compFactInds.size() == 2, kSource, "compFactInds.size() == 2");
  std::vector<BpComposite> catPairs;
  for (int row : stats.GetContingencyMatrix().GetNonEmptyRows()) {
    for (int column : stats.GetContingencyMatrix().GetNonEmptyCols()) {
      catPairs.push_back(GetInteractionLabel(row, column));
    }
  }
  BYS::Assert(posterEstims.size() == catPairs.size(), kSource, "posterEstims.size() == catPairs.size()");
  BpPivotTable table = OpenTable("Posterior Distribution Characterization of Simulated Interactions");
  table.Note(MakeNote("The analyses assume..."));
  table.Note(MakeSamplesNote());
  BpDimension interactions = AddDimension(table, BpString("Interaction", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  for (std::size_t i = 0; i < catPairs.size(); ++i) {
    interactions.Category(catPairs[i]);
    FillInteraction(statistics, posterEstims[i]);
  }
}

BpComposite BYSOutput::GetInteractionLabel(int row, int column) const {
  BpComposite label("^1, ^2", true);
  label.Add(GetLevel(kRowFactor, row));
  label.Add(GetLevel(kColumnFactor, column));
  label.Finish();
  return label;
}

void BYSOutput::FillInteraction(BpDimension& statistics, const MCBSN_850::BayesEstimation& estimation) const {
  const auto add = [](BpGroup group, const char* label, double value) {
    group.Category(BpString(label, true)).Cell(BpNumber(value, BpProcedure::GeneralStat()));
  };
  BpGroup posterior = statistics.Group(BpString("Posterior", true), true, kAsCreated);
  add(posterior, "Median", estimation.fMedian);
  add(posterior, "Mean", estimation.fMean);
  add(posterior, "Variance", estimation.fVariance);
  BpComposite level("^1 Simultaneous Credible Interval", true);
  level.Add(BpNumber(fpCompSettings->GetCILevel(), BpProcedure::SigDigit()));
  level.Finish();
  BpGroup interval = statistics.Group(level, true, kAsCreated);
  add(interval, "Lower Bound", estimation.fLower);
  add(interval, "Upper Bound", estimation.fUpper);
  const double missing = ZARQ_DataSource::GetMissingValue();
  BpCategory zero = statistics.Category(BpString("Contains 0 or not", true));
  if (estimation.fLower == missing || estimation.fUpper == missing) {
    zero.Cell(BpNumber(missing, BpProcedure::GeneralStat()));
  } else {
    zero.Cell(BpString(estimation.fLower <= 0 && estimation.fUpper >= 0 ? "Yes" : "No", true));
  }
}
