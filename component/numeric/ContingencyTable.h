// A number for every cell of a two-way table: counts, or the shapes of a prior.
#pragma once

#include <cstddef>
#include <vector>

namespace BayesComponent {

class ContingencyTable {
 public:
  // Zeros, or one value in every cell.
  ContingencyTable(std::size_t rows, std::size_t columns, double value = 0)
      : fRows(rows), fColumns(columns), fvCells(rows * columns, value) {}

  std::size_t Rows() const { return fRows; }
  std::size_t Columns() const { return fColumns; }
  double& At(std::size_t row, std::size_t column) { return fvCells[row * fColumns + column]; }
  double At(std::size_t row, std::size_t column) const { return fvCells[row * fColumns + column]; }
  // Row by row.
  std::vector<double>& Cells() { return fvCells; }
  const std::vector<double>& Cells() const { return fvCells; }

  std::vector<double> Row(std::size_t row) const;
  std::vector<double> RowTotals() const;
  std::vector<double> ColumnTotals() const;
  double Total() const;
  ContingencyTable Transposed() const;
  // The cells where a given row and a given column meet.
  ContingencyTable Part(const std::vector<int>& rows, const std::vector<int>& columns) const;

 private:
  std::size_t fRows;
  std::size_t fColumns;
  std::vector<double> fvCells;
};

double SumOf(const std::vector<double>& values);

// The counts that independence leads one to expect from the margins.
ContingencyTable ExpectedCounts(const ContingencyTable& counts);

// ln of the likelihood of the observed proportions over that of the expected ones: half the likelihood ratio
// statistic, to its last digits however large the counts.
double LogLikelihoodRatio(const ContingencyTable& counts);

}  // namespace BayesComponent
