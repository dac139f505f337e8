// Joint moments of all pairs among some variables in one pass, each from the cases that have both values.
//
// Cases are gathered in blocks. In a block the distances of a variable from its mean are formed once and
// serve all its pairs, whose products are then sums over contiguous numbers; blocks are merged as in
// CoMoments.h. A variable that lacks a value in the block has another mean in each pair: its pairs are
// updated case by case.
#pragma once

#include <Eigen/Core>
#include <utility>
#include <vector>

#include "component/numeric/CoMoments.h"

namespace BayesComponent {

class PairMoments {
 public:
  // Pairs are two indices into a case's values.
  PairMoments(std::size_t variables, std::vector<std::pair<int, int>> pairs);

  // A case's values, NaN for those it lacks; weight > 0.
  void Add(const std::vector<double>& values, double weight);
  // After the last case.
  void Close();

  // Of pair `pair` of those asked for; complete after Close.
  const CoMoments& Of(std::size_t pair) const { return fvMoments[pair]; }

 private:
  // A variable in the block.
  struct Part {
    bool fIsComplete;
    CoMoments::Margin fMargin;
  };

  Part Centre(Eigen::Index variable);
  void AddByCase(std::size_t pair);

  std::vector<std::pair<int, int>> fvPairs;
  std::vector<CoMoments> fvMoments;
  std::vector<Part> fvParts;
  // The block: a row for each case, a column for each variable, of which the first fCases rows are filled.
  Eigen::Index fCases = 0;
  Eigen::VectorXd fWeights;
  Eigen::MatrixXd fValues;
  Eigen::MatrixXd fDistances;          // from the mean
  Eigen::MatrixXd fWeightedDistances;  // times the case's weight
};

}  // namespace BayesComponent
