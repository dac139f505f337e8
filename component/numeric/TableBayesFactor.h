// Bayes factors of independence over association in a two-way table, as natural logarithms (BF01), under
// Dirichlet and gamma priors.
//
// E. Gunel & J. Dickey (1974), Bayes factors for independence in contingency tables, Biometrika 61:545-557.
#pragma once

#include <vector>

#include "component/numeric/ContingencyTable.h"

namespace BayesComponent {

// What the design leaves to chance: every count, the cells under a fixed total, or the columns within rows of
// fixed sums. Fixed columns are the fixed rows of the transposed table.
enum class TableDesign { Poisson, TotalFixed, RowsFixed };

struct TablePrior {
  ContingencyTable fShapes;  // > 0
  double fRate;              // of the gamma distributions of a Poisson design, > 0
};

// Whether the shapes leave room for the prior of independence that goes with them: margins with the shapes
// a_i. - (C - 1) and a_.j - (R - 1), of which the design needs both or, with fixed rows, the second.
bool HasIndependencePrior(const ContingencyTable& shapes, TableDesign design);

// The priors of that paper. Needs HasIndependencePrior.
double LogBF01Conjugate(const ContingencyTable& counts, const TablePrior& prior, TableDesign design);

// Equal-weight mixtures over lambda of the priors with lambda times these shapes, the margins' priors being
// those of their sums: I. J. Good (1976), Ann. Stat. 4:1159-1189. `lambdas`: one or more, > 0.
double LogBF01Mixture(const ContingencyTable& counts, const TablePrior& prior, TableDesign design,
                      const std::vector<double>& lambdas);

}  // namespace BayesComponent
