// Nonparametric test of homogeneity: whether several multinomial samples share one distribution.
//
// F. A. Quintana (1998), Nonparametric Bayesian analysis for assessing homogeneity in k x l contingency
// tables with fixed right margin totals, J. Am. Stat. Assoc. 93:1140-1149. The rows' distributions are draws
// from a Dirichlet process, so that rows form clusters with equal distributions. Independence is one cluster
// of all rows; the alternative is the process given that there are two or more.
#pragma once

#include <vector>

#include "component/numeric/ContingencyTable.h"
#include "component/numeric/DrawnMean.h"
#include "component/numeric/RandomStream.h"

namespace BayesComponent {

struct PartitionPrior {
  double fPrecision;             // of the process, > 0
  std::vector<double> fvShapes;  // of its Dirichlet base distribution, one > 0 for each column
};

// ln BF01 of a table of two or more rows: exact up to 15 rows, by draws beyond.
LogIntegral LogBF01Partition(const ContingencyTable& counts, const PartitionPrior& prior,
                             const DrawLimits& limits, RandomStream& random);

// ln of the mean evidence of partitions with two or more clusters, by recursion over the subsets of rows. At
// most 20 rows.
double LogEvidenceOfPartitions(const ContingencyTable& counts, const PartitionPrior& prior);
// The same by sequential imputation: S. N. MacEachern, M. Clyde & J. S. Liu (1999), Sequential importance
// sampling for nonparametric Bayes models, Can. J. Stat. 27:251-267. Rows enter in random order; the row that
// opens the second cluster is drawn first.
LogIntegral LogEvidenceOfPartitionsByDraws(const ContingencyTable& counts, const PartitionPrior& prior,
                                           const DrawLimits& limits, RandomStream& random);

}  // namespace BayesComponent
