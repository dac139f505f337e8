#include "component/numeric/TrainingMargins.h"

#include <Eigen/Cholesky>
#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
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
      const auto& p = cell.fvProbabilities;
      product *= std::accumulate(p.rbegin(), p.rend(), std::complex<double>(0),
                                 [turn](const auto& sum, double next) { return sum * turn + next; });
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

// Probabilities proportional to expected training cases and half a case more in each category.
std::vector<double> Smoothed(std::vector<double> means) {
  for (double& mean : means) mean += 0.5;
  const double sum = SumOf(means);
  for (double& mean : means) mean /= sum;
  return means;
}

// P = p r with a gamma variable r of this shape and rate turns an integral over probabilities p into one over
// positive P, whose target is the function of degree `cases` times exp(-rate sum(P)).
double RateOf(double cases, double categories) {
  return cases + categories / 2;
}

// ln of what that adds to the target in y, P = y^2, under a uniform density of p.
double LogMeasure(const std::vector<double>& sizes, double cases) {
  const auto categories = static_cast<double>(sizes.size());
  const double rate = RateOf(cases, categories);
  double sum =
      (cases + categories) * std::log(rate) - std::lgamma(cases + categories) + std::lgamma(categories);
  for (const double size : sizes) sum += std::log(2 * std::sqrt(size)) - rate * size;
  return sum;
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

// Minus the second derivatives of the log target in the roots y: those in ln P, times 2/y on both sides.
void TrainingMargins::SetPrecision() {
  const auto cases = static_cast<double>(fvMoments.size());
  Eigen::MatrixXd precision = -CovarianceOfMargins();
  fMode.resize(precision.rows());
  Eigen::Index next = 0;
  for (const Probabilities* margin : {&fvRows, &fvColumns}) {
    const double rate = RateOf(cases, static_cast<double>(margin->size()));
    for (const double p : *margin) {
      precision(next, next) += rate * p;
      fMode[next++] = std::sqrt(p);
    }
  }
  if (!fIsTotalFixed) {
    const auto columns = static_cast<Eigen::Index>(fvColumns.size());
    precision = precision.bottomRightCorner(columns, columns).eval();
    fMode = fMode.tail(columns).eval();
  }
  const Eigen::VectorXd slopes = 2 * fMode.cwiseInverse();
  precision = slopes.asDiagonal() * precision * slopes.asDiagonal();
  Eigen::LLT<Eigen::MatrixXd> root(precision);
  // Not positive where the mode is no clear peak: a larger diagonal makes it so.
  while (root.info() != Eigen::Success) {
    precision.diagonal() *= 1.1;
    root.compute(precision);
  }
  fPrecisionRoot = root.matrixL();
}

double TrainingMargins::LogTarget(const Probabilities& rows, const Probabilities& columns) const {
  const auto cases = static_cast<double>(fvMoments.size());
  double sum = LogMeasure(columns, cases);
  if (fIsTotalFixed) sum += LogMeasure(rows, cases);
  for (const Group& group : fvGroups) {
    sum +=
        TiltedGroup(group.fvCounts, CellProbabilities(group, rows, columns), group.fLogTilt).LogCoefficient();
  }
  return sum;
}

double TrainingMargins::DrawLogWeight(RandomStream& random) const {
  const Eigen::Index size = fPrecisionRoot.rows();
  const auto d = static_cast<double>(size);
  Eigen::VectorXd z(size);
  for (double& x : z) x = random.Normal();
  // z over the root of a chi-square variable over its degrees of freedom.
  z *= std::sqrt(kDF / 2) * std::exp(-random.LogGamma(kDF / 2) / 2);
  const Eigen::VectorXd roots = fMode + fPrecisionRoot.transpose().triangularView<Eigen::Upper>().solve(z);
  if (roots.minCoeff() <= 0) return -std::numeric_limits<double>::infinity();
  const double lnDensity =
      std::lgamma((kDF + d) / 2) - std::lgamma(kDF / 2) - d / 2 * std::log(kDF * std::numbers::pi) +
      fPrecisionRoot.diagonal().array().log().sum() - (kDF + d) / 2 * std::log1p(z.squaredNorm() / kDF);
  const Eigen::VectorXd sizes = roots.cwiseAbs2();
  Probabilities rows = fvRows;
  if (fIsTotalFixed) rows.assign(sizes.begin(), sizes.begin() + static_cast<std::ptrdiff_t>(rows.size()));
  const Probabilities columns(sizes.end() - static_cast<std::ptrdiff_t>(fvColumns.size()), sizes.end());
  return LogTarget(rows, columns) - lnDensity;
}

}  // namespace BayesComponent
