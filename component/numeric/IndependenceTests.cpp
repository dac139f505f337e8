#include "component/numeric/IndependenceTests.h"

#include <algorithm>
#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <limits>
#include <numbers>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

double WithoutSubnormal(double probability) {
  return probability < std::numeric_limits<double>::min() ? 0 : probability;
}

// ln p, where q = 1 - p.
double LogOf(double p, double q) {
  return p < 0.5 ? std::log(p) : std::log1p(-q);
}

// ln of the binomial probability of x among n with success probability p and q = 1 - p, C. Loader's way: see
// Deviance.
double LogBinomial(double x, double n, double p, double q) {
  if (x == 0) return n == 0 ? 0 : n * LogOf(q, p);
  if (x == n) return n * LogOf(p, q);
  return StirlingRemainder(n) - StirlingRemainder(x) - StirlingRemainder(n - x) - Deviance(x, n * p) -
         Deviance(n - x, n * q) - 0.5 * std::log(2 * std::numbers::pi * x * ((n - x) / n));
}

// The first cell of a table with fixed margins: hypergeometric.
class FirstCell {
 public:
  explicit FirstCell(const ContingencyTable& counts)
      : fRow(counts.RowTotals()[0]),
        fOtherRow(counts.RowTotals()[1]),
        fColumn(counts.ColumnTotals()[0]),
        fOtherColumn(counts.ColumnTotals()[1]),
        fLowest(std::max(0.0, fColumn - fOtherRow)),
        fHighest(std::min(fRow, fColumn)) {}

  double Lowest() const { return fLowest; }
  double Highest() const { return fHighest; }
  double Mode() const { return std::floor((fRow + 1) * ((fColumn + 1) / (fRow + fOtherRow + 2))); }

  double LogProbability(double x) const {
    const double n = fRow + fOtherRow;
    const double p = fColumn / n;
    const double q = fOtherColumn / n;
    return LogBinomial(x, fRow, p, q) + LogBinomial(fColumn - x, fOtherRow, p, q) -
           LogBinomial(fColumn, n, p, q);
  }

  // P(X <= x) for direction -1, P(X >= x) for +1, away from the mode: probabilities fall, each by its ratio
  // to the one before, and what is negligible is left out.
  double Tail(double x, int direction) const {
    double term = 1;
    double sum = 0;
    const double end = direction > 0 ? fHighest : fLowest;
    const double first = x;
    for (;; x += direction) {
      sum += term;
      if (x == end) break;
      const double ratio = direction > 0 ? RatioAbove(x) : 1 / RatioAbove(x - 1);
      term *= ratio;
      if (term < kNegligible * sum) break;
    }
    return std::exp(LogProbability(first)) * sum;
  }

 private:
  static constexpr double kNegligible = 1e-18;

  // P(x + 1) / P(x).
  double RatioAbove(double x) const {
    return (fRow - x) / (x + 1) * ((fColumn - x) / (fOtherRow - fColumn + x + 1));
  }

  double fRow;
  double fOtherRow;
  double fColumn;
  double fOtherColumn;
  double fLowest;
  double fHighest;
};

// The outermost value towards the mode, from `end`, whose probability is at most `limit`; `end` itself may be
// above it, and then there is none.
double LastWithin(const FirstCell& cell, double end, double mode, double limit) {
  double within = end;
  double beyond = mode;
  while (std::abs(beyond - within) > 1) {
    const double middle = std::floor((within + beyond) / 2);
    (cell.LogProbability(middle) <= limit ? within : beyond) = middle;
  }
  return within;
}

}  // namespace

double ChiSquareSignificance(double statistic, double df) {
  return WithoutSubnormal(boost::math::gamma_q(df / 2, statistic / 2));
}

double PearsonChiSquare(const ContingencyTable& counts) {
  const ContingencyTable expected = ExpectedCounts(counts);
  double sum = 0;
  for (std::size_t i = 0; i < counts.Cells().size(); ++i) {
    const double distance = counts.Cells()[i] - expected.Cells()[i];
    sum += distance * distance / expected.Cells()[i];
  }
  return sum;
}

double ContinuityCorrectedChiSquare(const ContingencyTable& counts) {
  const ContingencyTable expected = ExpectedCounts(counts);
  double sum = 0;
  for (std::size_t i = 0; i < counts.Cells().size(); ++i) {
    const double distance = std::max(0.0, std::abs(counts.Cells()[i] - expected.Cells()[i]) - 0.5);
    sum += distance * distance / expected.Cells()[i];
  }
  return sum;
}

FisherSignificance FisherExactTest(const ContingencyTable& counts) {
  const FirstCell cell(counts);
  const double observed = counts.At(0, 0);
  const double mode = std::clamp(cell.Mode(), cell.Lowest(), cell.Highest());
  const double lnObserved = cell.LogProbability(observed);
  const double limit = lnObserved + std::log1p(1e-7);
  const double outer = cell.Tail(observed, observed < mode ? -1 : 1);
  const double oneSided = std::min(outer, 1 - outer + std::exp(lnObserved));
  if (cell.LogProbability(mode) <= limit) return {1, WithoutSubnormal(oneSided)};
  double twoSided = 0;
  for (const auto& [end, direction] : {std::pair(cell.Lowest(), -1), {cell.Highest(), 1}}) {
    const double last = LastWithin(cell, end, mode, limit);
    if (cell.LogProbability(last) <= limit) twoSided += cell.Tail(last, direction);
  }
  return {WithoutSubnormal(std::min(twoSided, 1.0)), WithoutSubnormal(oneSided)};
}

}  // namespace BayesComponent
