#include "component/numeric/TrainingMargins.h"

#include <Eigen/Cholesky>
#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>

#include "component/numeric/DirichletMarginal.h"

namespace BayesComponent {

namespace {

// Degrees of freedom of the t distribution drawn from: tails heavier than the target's.
constexpr double kDF = 30;

// One cell's power series, the sum over x of y^x (n + 1)...(n + x)/(x! x!), as a distribution of x.
struct TiltedCell {
  double fLogSum;
  double fFirst;  // the x of the first probability
  std::vector<double> fvProbabilities;
  double fMean;
  double fVariance;
};

// ln of the series' term at x, by Stirling for the long product.
double LogTermAt(double x, double count, double y) {
  if (x == 0) return 0;
  const double lnRising = LogGammaMarginal(x, count + 1) + x * std::log(x) - x;
  return x * std::log(y) + lnRising - 2 * std::lgamma(x + 1);
}

// Terms on both sides of the largest one, down to 1e-18 of it.
TiltedCell Tilt(double count, double y) {
  constexpr double kNegligible = 1e-18;
  const auto ratioAbove = [=](double x) { return y * (count + 1 + x) / ((x + 1) * (x + 1)); };
  const double mode = std::floor((y + std::sqrt(y * y + 4 * y * count)) / 2);
  TiltedCell cell{0, mode, {1}, 0, 0};
  for (double term = 1; cell.fFirst > 0 && term > kNegligible; --cell.fFirst) {
    term /= ratioAbove(cell.fFirst - 1);
    cell.fvProbabilities.push_back(term);
  }
  std::reverse(cell.fvProbabilities.begin(), cell.fvProbabilities.end());
  double term = 1;
  for (double x = mode; term > kNegligible; ++x) {
    term *= ratioAbove(x);
    cell.fvProbabilities.push_back(term);
  }
  const double sum = SumOf(cell.fvProbabilities);
  cell.fLogSum = LogTermAt(mode, count, y) + std::log(sum);
  double x = cell.fFirst;
  for (double& probability : cell.fvProbabilities) {
    probability /= sum;
    cell.fMean += probability * x++;
  }
  x = cell.fFirst;
  for (const double probability : cell.fvProbabilities) {
    cell.fVariance += probability * (x - cell.fMean) * (x - cell.fMean);
    ++x;
  }
  return cell;
}

// The cells of a group, tilted so that their expected sum is about the number of training cases.
class TiltedGroup {
 public:
  // `counts` and the cells' probabilities, divided by the table's total; `lnTilt`: a first guess.
  TiltedGroup(const std::vector<double>& counts, const std::vector<double>& probabilities, double lnTilt)
      : fCases(static_cast<double>(counts.size())), fLogTilt(lnTilt) {
    for (int step = 0; step < 100; ++step) {
      SetCells(counts, probabilities);
      const double excess = fMean - fCases;
      if (excess * excess < 0.01 * fVariance) break;
      fLogTilt -= std::clamp(excess / fVariance, -2.0, 2.0);
    }
  }

  double LogTilt() const { return fLogTilt; }
  const std::vector<TiltedCell>& Cells() const { return fvCells; }

  // ln of the coefficient of t^cases in the product of the series with y = t times the probabilities: the
  // probability of that sum by Fourier inversion over enough points for what lies beyond to be negligible.
  double LogCoefficient() const {
    const int half = 15 + static_cast<int>(6 * std::sqrt(fVariance));
    const int points = 2 * half + 1;
    double sum = 1;
    for (int k = 1; k <= half; ++k) {
      const double angle = 2 * std::numbers::pi * k / points;
      const std::complex<double> value = CharacteristicAt(angle);
      if (std::norm(value) < 1e-40) break;
      sum += 2 * value.real();
    }
    double lnSums = 0;
    for (const TiltedCell& cell : fvCells) lnSums += cell.fLogSum;
    return lnSums - fCases * fLogTilt + std::log(sum / points);
  }

 private:
  void SetCells(const std::vector<double>& counts, const std::vector<double>& probabilities) {
    fvCells.clear();
    fMean = fVariance = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
      fvCells.push_back(Tilt(counts[i], std::exp(fLogTilt) * probabilities[i]));
      fMean += fvCells.back().fMean;
      fVariance += fvCells.back().fVariance;
    }
  }

  // Of the sum less the number of cases.
  std::complex<double> CharacteristicAt(double angle) const {
    const std::complex<double> turn = std::polar(1.0, angle);
    std::complex<double> product = 1;
    double shift = -fCases;
    for (const TiltedCell& cell : fvCells) {
      std::complex<double> sum = 0;
      for (auto p = cell.fvProbabilities.rbegin(); p != cell.fvProbabilities.rend(); ++p)
        sum = sum * turn + *p;
      product *= sum;
      shift += cell.fFirst;
    }
    return product * std::polar(1.0, angle * shift);
  }

  double fCases;
  double fLogTilt;
  std::vector<TiltedCell> fvCells;
  double fMean = 0;
  double fVariance = 0;
};

std::vector<double> Softmax(const Eigen::VectorXd& logs) {
  const double largest = std::max(0.0, logs.size() > 0 ? logs.maxCoeff() : 0.0);
  std::vector<double> values;
  for (const double x : logs) values.push_back(std::exp(x - largest));
  // The last one is the reference.
  values.push_back(std::exp(-largest));
  const double sum = SumOf(values);
  for (double& value : values) value /= sum;
  return values;
}

Eigen::VectorXd LogRatios(const std::vector<double>& probabilities) {
  Eigen::VectorXd logs(static_cast<Eigen::Index>(probabilities.size() - 1));
  for (Eigen::Index i = 0; i < logs.size(); ++i) {
    logs[i] = std::log(probabilities[static_cast<std::size_t>(i)] / probabilities.back());
  }
  return logs;
}

// Probabilities proportional to expected training cases and one case more in each category.
std::vector<double> Smoothed(std::vector<double> means) {
  for (double& mean : means) mean += 1;
  const double sum = SumOf(means);
  for (double& mean : means) mean /= sum;
  return means;
}

}  // namespace

TrainingMargins::TrainingMargins(const ContingencyTable& counts, TableDesign design)
    : fTotal(counts.Total()),
      fIsTotalFixed(design == TableDesign::TotalFixed),
      fvRows(counts.Rows(), 1),
      fvColumns(Smoothed(counts.ColumnTotals())),
      fvMoments(counts.Cells().size()) {
  if (fIsTotalFixed) {
    fvRows = Smoothed(counts.RowTotals());
    fvGroups.push_back({0, counts.Cells(), 0});
  } else {
    for (std::size_t i = 0; i < counts.Rows(); ++i)
      fvGroups.push_back({i * counts.Columns(), counts.Row(i), 0});
  }
  FindMode();
  SetPrecision();
}

TrainingMargins::Probabilities TrainingMargins::CellProbabilities(const Group& group,
                                                                  const Probabilities& rows,
                                                                  const Probabilities& columns) const {
  Probabilities probabilities;
  for (std::size_t i = 0; i < group.fvCounts.size(); ++i) {
    const std::size_t cell = group.fFirstCell + i;
    probabilities.push_back(rows[cell / columns.size()] * columns[cell % columns.size()] / fTotal);
  }
  return probabilities;
}

void TrainingMargins::SetMoments() {
  for (Group& group : fvGroups) {
    const TiltedGroup tilted(group.fvCounts, CellProbabilities(group, fvRows, fvColumns), group.fLogTilt);
    group.fLogTilt = tilted.LogTilt();
    for (std::size_t i = 0; i < group.fvCounts.size(); ++i) {
      fvMoments[group.fFirstCell + i] = {tilted.Cells()[i].fMean, tilted.Cells()[i].fVariance};
    }
  }
}

// At the mode the probabilities are those of the expected training margins, a fixed point that repetition
// approaches.
void TrainingMargins::FindMode() {
  constexpr int kSteps = 60;
  SetMoments();
  for (int step = 0; step < kSteps; ++step) {
    std::vector<double> rowMeans(fvRows.size(), 0);
    std::vector<double> columnMeans(fvColumns.size(), 0);
    for (std::size_t cell = 0; cell < fvMoments.size(); ++cell) {
      rowMeans[cell / fvColumns.size()] += fvMoments[cell].fMean;
      columnMeans[cell % fvColumns.size()] += fvMoments[cell].fMean;
    }
    if (fIsTotalFixed) fvRows = Smoothed(rowMeans);
    fvColumns = Smoothed(columnMeans);
    SetMoments();
  }
}

// Of rows, then columns, of the training table at the mode: its cells are independent but for the fixed sums.
Eigen::MatrixXd TrainingMargins::CovarianceOfMargins() const {
  const std::size_t columns = fvColumns.size();
  const auto rows = static_cast<Eigen::Index>(fvRows.size());
  const Eigen::Index size = rows + static_cast<Eigen::Index>(columns);
  Eigen::MatrixXd covariance = Eigen::MatrixXd::Zero(size, size);
  for (const Group& group : fvGroups) {
    Eigen::VectorXd withSum = Eigen::VectorXd::Zero(size);
    double variance = 0;
    for (std::size_t cell = group.fFirstCell; cell < group.fFirstCell + group.fvCounts.size(); ++cell) {
      Eigen::VectorXd member = Eigen::VectorXd::Zero(size);
      member[static_cast<Eigen::Index>(cell / columns)] = 1;
      member[rows + static_cast<Eigen::Index>(cell % columns)] = 1;
      covariance += fvMoments[cell].fVariance * member * member.transpose();
      withSum += fvMoments[cell].fVariance * member;
      variance += fvMoments[cell].fVariance;
    }
    covariance -= withSum * withSum.transpose() / variance;
  }
  return covariance;
}

// Minus the second derivatives of the log target in the log ratios of the probabilities to their last one.
void TrainingMargins::SetPrecision() {
  const auto rows = static_cast<Eigen::Index>(fvRows.size());
  const auto columns = static_cast<Eigen::Index>(fvColumns.size());
  const double cases = static_cast<double>(fvMoments.size());
  Eigen::MatrixXd precision = -CovarianceOfMargins();
  const auto addSimplex = [&](Eigen::Index first, const Probabilities& probabilities) {
    const auto size = static_cast<Eigen::Index>(probabilities.size());
    const Eigen::Map<const Eigen::VectorXd> p(probabilities.data(), size);
    const Eigen::MatrixXd diagonal = p.asDiagonal();
    const double weight = cases + static_cast<double>(size);
    precision.block(first, first, size, size) += weight * (diagonal - p * p.transpose());
  };
  addSimplex(0, fvRows);
  addSimplex(rows, fvColumns);
  std::vector<Eigen::Index> free;
  for (Eigen::Index i = 0; fIsTotalFixed && i + 1 < rows; ++i) free.push_back(i);
  for (Eigen::Index j = 0; j + 1 < columns; ++j) free.push_back(rows + j);
  Eigen::MatrixXd ofFree = precision(free, free);
  Eigen::LLT<Eigen::MatrixXd> root(ofFree);
  // Not positive where the mode is no clear peak: a larger diagonal makes it so.
  while (root.info() != Eigen::Success) {
    ofFree.diagonal() += 0.1 * (ofFree.diagonal().cwiseAbs() + Eigen::VectorXd::Ones(ofFree.rows()));
    root.compute(ofFree);
  }
  fPrecisionRoot = root.matrixL();
}

double TrainingMargins::LogTarget(const Probabilities& rows, const Probabilities& columns) const {
  double sum = 0;
  for (const Group& group : fvGroups) {
    sum +=
        TiltedGroup(group.fvCounts, CellProbabilities(group, rows, columns), group.fLogTilt).LogCoefficient();
  }
  // The uniform density of probabilities, in their log ratios.
  const auto addUniform = [&sum](const Probabilities& probabilities) {
    sum += std::lgamma(static_cast<double>(probabilities.size()));
    for (const double p : probabilities) sum += std::log(p);
  };
  addUniform(columns);
  if (fIsTotalFixed) addUniform(rows);
  return sum;
}

double TrainingMargins::DrawLogWeight(RandomStream& random) const {
  const Eigen::Index size = fPrecisionRoot.rows();
  const double d = static_cast<double>(size);
  Eigen::VectorXd z(size);
  for (double& x : z) x = random.Normal();
  // z over the root of a chi-square variable over its degrees of freedom.
  z *= std::sqrt(kDF / 2) * std::exp(-random.LogGamma(kDF / 2) / 2);
  const Eigen::VectorXd step = fPrecisionRoot.transpose().triangularView<Eigen::Upper>().solve(z);
  const double lnDensity =
      std::lgamma((kDF + d) / 2) - std::lgamma(kDF / 2) - d / 2 * std::log(kDF * std::numbers::pi) +
      fPrecisionRoot.diagonal().array().log().sum() - (kDF + d) / 2 * std::log1p(z.squaredNorm() / kDF);
  const Eigen::Index columns = static_cast<Eigen::Index>(fvColumns.size()) - 1;
  const Probabilities drawnColumns = Softmax(LogRatios(fvColumns) + step.tail(columns));
  const Probabilities drawnRows =
      fIsTotalFixed ? Softmax(LogRatios(fvRows) + step.head(size - columns)) : fvRows;
  return LogTarget(drawnRows, drawnColumns) - lnDensity;
}

}  // namespace BayesComponent
