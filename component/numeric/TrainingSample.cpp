#include "component/numeric/TrainingSample.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "component/numeric/TrainingMargins.h"

namespace BayesComponent {

namespace {

double LogChoose(double n, double k) {
  return std::lgamma(n + 1) - std::lgamma(k + 1) - std::lgamma(n - k + 1);
}

// ln of a (a + 1) ... (a + k - 1) / scale^k for a whole k.
double LogRising(double a, double k, double scale) {
  double sum = 0;
  for (double i = 0; i < k; ++i) sum += std::log((a + i) / scale);
  return sum;
}

// ln of what the totals determine in w(x) times the probability of x given the margins' probabilities. Counts
// are divided by their total here, as they are in the cells.
double LogConstant(const ContingencyTable& counts, TableDesign design) {
  const auto columns = static_cast<double>(counts.Columns());
  const double cells = static_cast<double>(counts.Rows()) * columns;
  const double total = counts.Total();
  if (design == TableDesign::TotalFixed) {
    return LogRising(cells, cells, 1) - LogRising(total + cells, cells, total) + std::lgamma(cells + 1);
  }
  double sum = 0;
  for (const double rowTotal : counts.RowTotals()) {
    sum += LogRising(columns, columns, 1) - LogRising(rowTotal + columns, columns, total) +
           std::lgamma(columns + 1);
  }
  return sum;
}

// A row of whole numbers, at its place in an array with as many dimensions: rows add where places add.
struct Composition {
  std::vector<int> fvParts;
  int fSum;
  std::size_t fPlace;
};

// All rows that add up to `sum` or less, the smallest sums first.
std::vector<Composition> CompositionsUpTo(int sum, std::size_t columns) {
  std::vector<Composition> all{{{}, 0, 0}};
  for (std::size_t j = 0; j < columns; ++j) {
    std::vector<Composition> longer;
    for (const Composition& shorter : all) {
      for (int part = 0; shorter.fSum + part <= sum; ++part) {
        Composition next = shorter;
        next.fvParts.push_back(part);
        next.fSum += part;
        next.fPlace = next.fPlace * static_cast<std::size_t>(sum + 1) + static_cast<std::size_t>(part);
        longer.push_back(std::move(next));
      }
    }
    all = std::move(longer);
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const Composition& a, const Composition& b) { return a.fSum < b.fSum; });
  return all;
}

// The sum over all training tables of what the cells contribute, row by row.
class TrainingSum {
 public:
  TrainingSum(const ContingencyTable& counts, TableDesign design)
      : fCounts(counts),
        fIsTotalFixed(design == TableDesign::TotalFixed),
        fSize(static_cast<int>(counts.Rows() * counts.Columns())),
        fvAll(CompositionsUpTo(fSize, counts.Columns())) {
    std::size_t lastPlace = 0;
    for (const Composition& composition : fvAll) lastPlace = std::max(lastPlace, composition.fPlace);
    fvSums.assign(lastPlace + 1, 0);
    fvSums[0] = 1;
  }

  // Uniform margins make a total of k cases contribute k!, columns here and free rows in LogTerm.
  double LogSum() {
    for (std::size_t i = 0; i < fCounts.Rows(); ++i) AddRow(i);
    const double lnLargest = std::lgamma(fSize + 1.0);
    double sum = 0;
    for (const Composition& state : fvAll) {
      if (state.fSum != fSize) continue;
      double lnFactorials = -lnLargest;
      for (const int part : state.fvParts) lnFactorials += std::lgamma(part + 1.0);
      sum += fvSums[state.fPlace] * std::exp(lnFactorials);
    }
    return fLogScale + lnLargest + std::log(sum);
  }

 private:
  double LogTerm(std::size_t row, const Composition& training) const {
    const double total = fCounts.Total();
    double term = fIsTotalFixed ? std::lgamma(training.fSum + 1.0) : 0;
    for (std::size_t j = 0; j < training.fvParts.size(); ++j) {
      const double count = fCounts.At(row, j);
      for (int k = 1; k <= training.fvParts[j]; ++k) term += std::log((count + k) / total / k / k);
    }
    return term;
  }

  void AddRow(std::size_t row) {
    std::vector<std::pair<const Composition*, double>> terms;
    for (const Composition& training : fvAll) {
      const bool isPossible = fIsTotalFixed || training.fSum == static_cast<int>(fCounts.Columns());
      if (isPossible) terms.emplace_back(&training, std::exp(LogTerm(row, training)));
    }
    std::vector<double> next(fvSums.size(), 0);
    for (const Composition& state : fvAll) {
      const double soFar = fvSums[state.fPlace];
      if (soFar == 0) continue;
      for (const auto& [training, term] : terms) {
        if (state.fSum + training->fSum > fSize) break;
        next[state.fPlace + training->fPlace] += soFar * term;
      }
    }
    // Keeps the sums in range.
    const double largest = *std::max_element(next.begin(), next.end());
    std::transform(next.begin(), next.end(), fvSums.begin(), [=](double sum) { return sum / largest; });
    fLogScale += std::log(largest);
  }

  const ContingencyTable& fCounts;
  bool fIsTotalFixed;
  int fSize;
  std::vector<Composition> fvAll;
  std::vector<double> fvSums;
  double fLogScale = 0;
};

// The recursion is over rows: with a free total it takes the table's shorter side as its columns.
ContingencyTable Oriented(const ContingencyTable& counts, TableDesign design) {
  const bool isTurned = design == TableDesign::TotalFixed && counts.Columns() > counts.Rows();
  return isTurned ? counts.Transposed() : counts;
}

}  // namespace

bool IsTrainingMeanFeasible(const ContingencyTable& counts, TableDesign design) {
  constexpr double kMostStates = 2e5;
  constexpr double kMostPlaces = 5e6;
  constexpr double kMostSteps = 1e8;
  const ContingencyTable table = Oriented(counts, design);
  const auto rows = static_cast<double>(table.Rows());
  const auto columns = static_cast<double>(table.Columns());
  const double cells = rows * columns;
  const double lnStates = LogChoose(cells + columns, columns);
  const double lnSteps = design == TableDesign::TotalFixed ? LogChoose(cells + 2 * columns, 2 * columns)
                                                           : LogChoose(cells + columns - 1, columns - 1) +
                                                                 LogChoose(2 * columns - 1, columns);
  return lnStates < std::log(kMostStates) && columns * std::log(cells + 1) < std::log(kMostPlaces) &&
         std::log(rows) + lnSteps < std::log(kMostSteps);
}

double LogTrainingMean(const ContingencyTable& counts, TableDesign design) {
  const ContingencyTable table = Oriented(counts, design);
  const auto rows = static_cast<double>(table.Rows());
  const auto columns = static_cast<double>(table.Columns());
  const double cells = rows * columns;
  double lnMargins = std::lgamma(columns) - std::lgamma(cells + columns);
  if (design == TableDesign::TotalFixed) lnMargins += std::lgamma(rows) - std::lgamma(cells + rows);
  return LogConstant(table, design) + lnMargins + TrainingSum(table, design).LogSum();
}

LogIntegral LogTrainingMeanByDraws(const ContingencyTable& counts, TableDesign design,
                                   const DrawLimits& limits, RandomStream& random) {
  const TrainingMargins margins(counts, design);
  LogIntegral mean = LogMeanOfDraws([&] { return margins.DrawLogWeight(random); }, limits);
  mean.fLogValue += LogConstant(counts, design);
  return mean;
}

LogIntegral LogBF01Intrinsic(const ContingencyTable& counts, TableDesign design, const DrawLimits& limits,
                             RandomStream& random) {
  const TablePrior uniform{ContingencyTable(counts.Rows(), counts.Columns(), 1), 1};
  const LogIntegral mean = IsTrainingMeanFeasible(counts, design)
                               ? LogIntegral{LogTrainingMean(counts, design), true}
                               : LogTrainingMeanByDraws(counts, design, limits, random);
  return {LogBF01Conjugate(counts, uniform, design) - mean.fLogValue, mean.fConverged};
}

}  // namespace BayesComponent
