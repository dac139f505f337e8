#include "component/numeric/ContingencyTable.h"

#include <numeric>

#include "component/numeric/StableLog.h"

namespace BayesComponent {

std::vector<double> ContingencyTable::Row(std::size_t row) const {
  const auto begin = fvCells.begin() + static_cast<std::ptrdiff_t>(row * fColumns);
  return {begin, begin + static_cast<std::ptrdiff_t>(fColumns)};
}

std::vector<double> ContingencyTable::RowTotals() const {
  std::vector<double> totals(fRows, 0);
  for (std::size_t i = 0; i < fvCells.size(); ++i) totals[i / fColumns] += fvCells[i];
  return totals;
}

std::vector<double> ContingencyTable::ColumnTotals() const {
  std::vector<double> totals(fColumns, 0);
  for (std::size_t i = 0; i < fvCells.size(); ++i) totals[i % fColumns] += fvCells[i];
  return totals;
}

double ContingencyTable::Total() const {
  return SumOf(fvCells);
}

ContingencyTable ContingencyTable::Transposed() const {
  ContingencyTable transposed(fColumns, fRows);
  for (std::size_t i = 0; i < fvCells.size(); ++i) transposed.At(i % fColumns, i / fColumns) = fvCells[i];
  return transposed;
}

ContingencyTable ContingencyTable::Part(const std::vector<int>& rows, const std::vector<int>& columns) const {
  ContingencyTable part(rows.size(), columns.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < columns.size(); ++j) {
      part.At(i, j) = At(static_cast<std::size_t>(rows[i]), static_cast<std::size_t>(columns[j]));
    }
  }
  return part;
}

double SumOf(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0);
}

ContingencyTable ExpectedCounts(const ContingencyTable& counts) {
  const std::vector<double> rows = counts.RowTotals();
  const std::vector<double> columns = counts.ColumnTotals();
  const double total = counts.Total();
  ContingencyTable expected(counts.Rows(), counts.Columns());
  for (std::size_t i = 0; i < counts.Rows(); ++i) {
    for (std::size_t j = 0; j < counts.Columns(); ++j) expected.At(i, j) = rows[i] * columns[j] / total;
  }
  return expected;
}

// The deviance terms add up to it, since counts and expected counts have the same sum.
double LogLikelihoodRatio(const ContingencyTable& counts) {
  const ContingencyTable expected = ExpectedCounts(counts);
  double sum = 0;
  for (std::size_t i = 0; i < counts.Cells().size(); ++i) {
    sum += Deviance(counts.Cells()[i], expected.Cells()[i]);
  }
  return sum;
}

}  // namespace BayesComponent
