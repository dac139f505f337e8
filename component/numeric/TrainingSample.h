// Bayes factors of independence over association under intrinsic priors.
//
// G. Casella & E. Moreno (2009), Assessing robustness of intrinsic tests of independence in two-way
// contingency tables, J. Am. Stat. Assoc. 104:1261-1271: the prior of association is the mean of the
// posteriors that uniform priors give after a training table, drawn under independence with uniform margins.
// A training table x multiplies the evidence of the uniform prior by a weight w(x), a product over the cells
// of (n_ij + 1)...(n_ij + x_ij)/x_ij! up to a factor that only the totals determine. What matters is the mean
// of w over training tables.
#pragma once

#include "component/numeric/DrawnMean.h"
#include "component/numeric/RandomStream.h"
#include "component/numeric/TableBayesFactor.h"

namespace BayesComponent {

// ln BF01. `design`: TotalFixed, with training tables of as many cases as the table has cells, or RowsFixed,
// with as many cases in each row as there are columns. The mean is exact where the recursion is feasible,
// else drawn.
LogIntegral LogBF01Intrinsic(const ContingencyTable& counts, TableDesign design, const DrawLimits& limits,
                             RandomStream& random);

// Whether LogTrainingMean is feasible.
bool IsTrainingMeanFeasible(const ContingencyTable& counts, TableDesign design);
// ln of the mean of w over all training tables, by recursion over the rows; the state is the training table's
// column totals so far.
double LogTrainingMean(const ContingencyTable& counts, TableDesign design);
// The same by importance sampling of the margins' probabilities, all tables being summed given these.
LogIntegral LogTrainingMeanByDraws(const ContingencyTable& counts, TableDesign design,
                                   const DrawLimits& limits, RandomStream& random);

}  // namespace BayesComponent
