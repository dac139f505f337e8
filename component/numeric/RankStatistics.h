// Rank coefficients of a weighted sample of pairs. A weight is how many cases are such a pair; ties count as
// usual, midranks for Spearman, tau-b for Kendall.
#pragma once

#include <vector>

namespace BayesComponent {

struct WeightedPair {
  double fX;
  double fY;
  double fWeight;
};

// In [-1, 1], or NaN when one of the two is constant.
double SpearmanRho(const std::vector<WeightedPair>& pairs);

// M. G. Kendall (1945), The treatment of ties in ranking problems, Biometrika 33:239-251, the coefficient b;
// W. R. Knight (1966), J. Am. Stat. Assoc. 61:436-439, for its computation in n ln n steps. In [-1, 1], or
// NaN when one of the two is constant.
double KendallTauB(std::vector<WeightedPair> pairs);

// The midrank of each value divided by n + 1: strictly between 0 and 1.
std::vector<double> RelativeRanks(const std::vector<double>& values, const std::vector<double>& weights);

}  // namespace BayesComponent
