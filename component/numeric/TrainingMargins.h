// Importance sampling of the margins' probabilities p and q of training tables (see TrainingSample.h). Given
// these, the sum over all training tables is one coefficient of a product of power series, one per cell.
#pragma once

#include <Eigen/Core>
#include <vector>

#include "component/numeric/ContingencyTable.h"
#include "component/numeric/RandomStream.h"
#include "component/numeric/TableBayesFactor.h"

namespace BayesComponent {

class TrainingMargins {
 public:
  TrainingMargins(const ContingencyTable& counts, TableDesign design);

  // ln of [sum over training tables given the margins' probabilities] times their uniform density, over the
  // density of the draw. Drawn are the square roots of the probabilities times a free scale, on which the
  // product is nearly normal: a multivariate t about its mode. Minus infinity for a draw that has a negative
  // root and counts as 0.
  double DrawLogWeight(RandomStream& random) const;

 private:
  using Probabilities = std::vector<double>;
  // Neighbouring cells that share a fixed number of training cases, as many as they are: all of the table, or
  // a row.
  struct Group {
    std::size_t fFirstCell;
    std::vector<double> fvCounts;
    double fLogTilt;  // at the mode
  };
  struct CellMoments {
    double fMean;
    double fVariance;
  };

  // Probabilities of the cells of a group under independence, divided by the table's total.
  Probabilities CellProbabilities(const Group& group, const Probabilities& rows,
                                  const Probabilities& columns) const;
  void SetMoments();
  void FindMode();
  void SetPrecision();
  Eigen::MatrixXd CovarianceOfMargins() const;
  double LogTarget(const Probabilities& rows, const Probabilities& columns) const;

  double fTotal;
  bool fIsTotalFixed;
  std::vector<Group> fvGroups;
  Probabilities fvRows;                // at the mode; all 1 where rows are fixed
  Probabilities fvColumns;             // at the mode
  std::vector<CellMoments> fvMoments;  // of the training cases at the mode
  // Square roots of the probabilities that are drawn, and their precision, both at the mode; the latter as a
  // lower triangular matrix to be multiplied by its transpose.
  Eigen::VectorXd fMode;
  Eigen::MatrixXd fPrecisionRoot;
};

}  // namespace BayesComponent
