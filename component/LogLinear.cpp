// Independence of the two factors of a contingency table.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

#include "component/Analysis.h"
#include "component/Interactions.h"
#include "component/LogLinearRecord.h"
#include "component/Results.h"
#include "component/Tasks.h"
#include "component/numeric/IndependenceTests.h"
#include "component/numeric/PartitionBayesFactor.h"
#include "component/numeric/TableBayesFactor.h"
#include "component/numeric/TrainingSample.h"

namespace BayesComponent {

namespace {

using MCBSN_850::BSNContingency;
using MCMath_850::MCTestStats;
using Data = MCBSN_850::BSNLogLinearOutputStats::Data;

// A table without empty rows and columns, with the prior's shapes for its cells. Where columns are fixed both
// are transposed, so that it is always rows that are.
struct TableQuestion {
  ContingencyTable fCounts;
  ContingencyTable fShapes;
  TableDesign fDesign;
  const BSNSettings& fSettings;
};

TablePrior PriorOf(const TableQuestion& question) {
  const double fromData = question.fShapes.Total() / question.fCounts.Total();
  return {question.fShapes, GivenOr(question.fSettings.GetPriorScale(), fromData)};
}

std::vector<double> LambdasOf(const BSNSettings& settings) {
  return settings.GetLambdas().empty() ? std::vector<double>{1} : settings.GetLambdas();
}

LogIntegral Conjugate(const TableQuestion& question) {
  return {LogBF01Conjugate(question.fCounts, PriorOf(question), question.fDesign), true};
}

LogIntegral Mixture(const TableQuestion& question) {
  return {
      LogBF01Mixture(question.fCounts, PriorOf(question), question.fDesign, LambdasOf(question.fSettings)),
      true};
}

// At least as many draws as the settings ask for, or 500.
LogIntegral Intrinsic(const TableQuestion& question) {
  const int given = question.fSettings.GetLogLinIntrinsicT();
  const double least = given > 0 ? given : 500;
  const DrawLimits limits{least, std::max(least, 20000.0), 0, Cancellation(question.fSettings)};
  RandomStream random(question.fSettings.GetRandomSeed());
  return LogBF01Intrinsic(question.fCounts, question.fDesign, limits, random);
}

// The base distribution has one shape for each column: the mean over the rows.
LogIntegral Nonparametric(const TableQuestion& question) {
  std::vector<double> shapes = question.fShapes.ColumnTotals();
  for (double& shape : shapes) shape /= static_cast<double>(question.fShapes.Rows());
  const PartitionPrior prior{LambdasOf(question.fSettings).front(), shapes};
  const DrawLimits limits{1000, 20000, 1e-4, Cancellation(question.fSettings)};
  RandomStream random(question.fSettings.GetRandomSeed());
  return LogBF01Partition(question.fCounts, prior, limits, random);
}

// What keeps a method from a Bayes factor, if anything.
using Obstacle = std::optional<StatusCode> (*)(const TableQuestion&);

std::optional<StatusCode> None(const TableQuestion&) {
  return {};
}

std::optional<StatusCode> NeedsShapes(const TableQuestion& question) {
  if (HasIndependencePrior(question.fShapes, question.fDesign)) return {};
  return kShapesTooSmall;
}

std::optional<StatusCode> NeedsMultinomial(const TableQuestion&) {
  return kIntrinsicNeedsMultinomial;
}

std::optional<StatusCode> NeedsConjugate(const TableQuestion&) {
  return kNonparametricNeedsConjugate;
}

std::optional<StatusCode> NeedsFixedMargin(const TableQuestion& question) {
  if (question.fDesign == TableDesign::RowsFixed) return {};
  return kNonparametricNeedsMargin;
}

struct Method {
  BSNConst::DistTypes fModel;
  BSNConst::LogLinPriorType fPrior;
  Obstacle fObstacle;
  LogIntegral (*fCompute)(const TableQuestion&);
};

constexpr Method kMethods[] = {
    {BSNConst::Multinomial, BSNConst::PriorConjugate, NeedsShapes, Conjugate},
    {BSNConst::Multinomial, BSNConst::PriorMixtureDirichlet, None, Mixture},
    {BSNConst::Multinomial, BSNConst::PriorIntrinsic, None, Intrinsic},
    {BSNConst::Poisson, BSNConst::PriorConjugate, NeedsShapes, Conjugate},
    {BSNConst::Poisson, BSNConst::PriorMixtureDirichlet, None, Mixture},
    {BSNConst::Poisson, BSNConst::PriorIntrinsic, NeedsMultinomial, nullptr},
    {BSNConst::Nonparametric, BSNConst::PriorConjugate, NeedsFixedMargin, Nonparametric},
    {BSNConst::Nonparametric, BSNConst::PriorMixtureDirichlet, NeedsConjugate, nullptr},
    {BSNConst::Nonparametric, BSNConst::PriorIntrinsic, NeedsConjugate, nullptr},
};

const Method* MethodOf(const BSNSettings& settings) {
  const auto* row = std::find_if(std::begin(kMethods), std::end(kMethods), [&](const Method& method) {
    return method.fModel == settings.GetLogLinModel() && method.fPrior == settings.GetLogLinPriorType();
  });
  return row == std::end(kMethods) ? nullptr : row;
}

bool AreColumnsFixed(const BSNSettings& settings) {
  return settings.GetFixType() == BSNConst::FixColumn;
}

// A Poisson model ignores fixed margins; no margin named is a fixed total.
TableDesign DesignOf(const BSNSettings& settings) {
  if (settings.GetLogLinModel() == BSNConst::Poisson) return TableDesign::Poisson;
  const bool isMarginFixed = settings.GetFixType() == BSNConst::FixRow || AreColumnsFixed(settings);
  return isMarginFixed ? TableDesign::RowsFixed : TableDesign::TotalFixed;
}

MCBSN_850::Matrix MatrixOf(const ContingencyTable& table) {
  MCBSN_850::Matrix rows;
  for (std::size_t i = 0; i < table.Rows(); ++i) rows.push_back(table.Row(i));
  return rows;
}

Indices NonZero(const std::vector<double>& totals) {
  Indices indices;
  for (std::size_t i = 0; i < totals.size(); ++i) {
    if (totals[i] > 0) indices.push_back(static_cast<int>(i));
  }
  return indices;
}

BSNContingency ContingencyOf(const ContingencyTable& counts) {
  auto data = std::make_shared<BSNContingency::Data>();
  const ContingencyTable expected = ExpectedCounts(counts);
  data->fvCounts = MatrixOf(counts);
  data->fvExpected = MatrixOf(expected);
  data->fvRowTotals = counts.RowTotals();
  data->fvColTotals = counts.ColumnTotals();
  data->fTotal = counts.Total();
  data->fvNonEmptyRows = NonZero(data->fvRowTotals);
  data->fvNonEmptyCols = NonZero(data->fvColTotals);
  const std::vector<double> cells = expected.Part(data->fvNonEmptyRows, data->fvNonEmptyCols).Cells();
  const auto below5 = std::count_if(cells.begin(), cells.end(), [](double x) { return x < 5; });
  data->fCellsBelow5 = static_cast<double>(below5);
  data->fPctCellsBelow5 = 100 * data->fCellsBelow5 / static_cast<double>(cells.size());
  data->fMinExpected = *std::min_element(cells.begin(), cells.end());
  return BSNContingency(data);
}

MCTestStats ChiSquareTest(double statistic, const ContingencyTable& counts) {
  const auto df = static_cast<double>((counts.Rows() - 1) * (counts.Columns() - 1));
  return {Shown(statistic), df, kMissing, Shown(ChiSquareSignificance(statistic, df))};
}

class LogLinear : public Analysis {
 public:
  LogLinear(const BSNSettings& settings, const Method& method, StatusList& statuses)
      : fSettings(settings),
        fMethod(method),
        fStatuses(statuses),
        fIsTable(settings.GetFactors().size() == 2),
        fCounts(SizeOf(0), SizeOf(1)) {}

  std::vector<int> RequiredSlots() const override { return fSettings.GetFactors(); }

  void Accumulate(const double* record, double weight) override {
    if (!fIsTable) return;
    const std::optional<std::size_t> row = CodeOf(record, 0);
    const std::optional<std::size_t> column = CodeOf(record, 1);
    if (row && column) fCounts.At(*row, *column) += weight;
  }

  std::unique_ptr<BSNOutputStats> Finish() override {
    if (!fIsTable) fStatuses.Fail(kNotTwoFactors);
    if (fIsTable && fCounts.Total() == 0) fStatuses.Fail(kNoValidCases);
    if (fStatuses.Error().IsError()) return nullptr;
    const BSNContingency table = ContingencyOf(fCounts);
    auto data = std::make_shared<Data>(table);
    const Indices& rows = table.GetNonEmptyRows();
    const Indices& columns = table.GetNonEmptyCols();
    data->fvInteractions.resize(rows.size() * columns.size());
    if (rows.size() < 2) fStatuses.Warn(kConstantRowFactor);
    if (columns.size() < 2) fStatuses.Warn(kConstantColumnFactor);
    if (rows.size() < 2 || columns.size() < 2) {
      AppendNoBayesFactor(data->fBayesFactor);
    } else {
      Infer(fCounts.Part(rows, columns), Shapes().Part(rows, columns), *data);
    }
    if (Cancellation(fSettings)()) fStatuses.Fail(kCancelled);
    return std::make_unique<MCBSN_850::BSNLogLinearOutputStats>(data);
  }

 private:
  std::size_t SizeOf(std::size_t factor) const {
    return fIsTable ? static_cast<std::size_t>(fSettings.GetFactorSizes()[factor]) : 0;
  }

  // Nothing for a missing value, or a category that the table doesn't have.
  std::optional<std::size_t> CodeOf(const double* record, std::size_t factor) const {
    const double code = record[fSettings.GetFactors()[factor]];
    if (!(code >= 0 && code < static_cast<double>(SizeOf(factor)))) return {};
    return static_cast<std::size_t>(code);
  }

  ContingencyTable Shapes() const {
    const std::vector<double>& given = fSettings.GetLogLinShapes();
    ContingencyTable shapes(fCounts.Rows(), fCounts.Columns(), given.empty() ? 1 : given.front());
    if (given.size() == shapes.Cells().size()) shapes.Cells() = given;
    return shapes;
  }

  void Infer(const ContingencyTable& counts, const ContingencyTable& shapes, Data& data) {
    Test(counts, data);
    const bool isTurned = AreColumnsFixed(fSettings);
    const TableQuestion question{isTurned ? counts.Transposed() : counts,
                                 isTurned ? shapes.Transposed() : shapes, DesignOf(fSettings), fSettings};
    data.fTrainingCases = static_cast<double>(counts.Cells().size());
    data.fTrainingCategories = static_cast<double>(question.fCounts.Rows());
    data.fCasesPerCategory = static_cast<double>(question.fCounts.Columns());
    if (WantsBayesFactor(fSettings)) {
      Compare(question, data);
    } else {
      AppendNoBayesFactor(data.fBayesFactor);
    }
    if (WantsPosterior(fSettings)) data.fvInteractions = SimulateInteractions(counts, shapes, fSettings);
  }

  static void Test(const ContingencyTable& counts, Data& data) {
    data.fChiSquare = ChiSquareTest(PearsonChiSquare(counts), counts);
    data.fLikelihoodRatio = ChiSquareTest(2 * LogLikelihoodRatio(counts), counts);
    if (counts.Rows() != 2 || counts.Columns() != 2) return;
    data.fContinuityCorrected = ChiSquareTest(ContinuityCorrectedChiSquare(counts), counts);
    const FisherSignificance fisher = FisherExactTest(counts);
    data.fFisherTwoSided = Shown(fisher.fTwoSided);
    data.fFisherOneSided = Shown(fisher.fOneSided);
  }

  void Compare(const TableQuestion& question, Data& data) {
    if (const std::optional<StatusCode> obstacle = fMethod.fObstacle(question)) {
      fStatuses.Warn(*obstacle);
      return AppendNoBayesFactor(data.fBayesFactor);
    }
    AppendBayesFactor(fMethod.fCompute(question), data.fBayesFactor, fStatuses);
  }

  const BSNSettings& fSettings;
  const Method& fMethod;
  StatusList& fStatuses;
  bool fIsTable;
  ContingencyTable fCounts;
};

}  // namespace

std::unique_ptr<Analysis> MakeLogLinear(const BSNSettings& settings, StatusList& statuses) {
  const Method* method = MethodOf(settings);
  if (!method) return nullptr;
  return std::make_unique<LogLinear>(settings, *method, statuses);
}

}  // namespace BayesComponent
