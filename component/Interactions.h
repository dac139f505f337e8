// The posterior of the interactions of a two-way table, by simulation.
//
// Cell rates are independent gamma variables with the shapes count plus prior shape; what a design fixes,
// and the prior's rate, only scales whole rows, columns or tables and cancels. The interaction of a cell is
// the logarithm of its rate less the means over its row and its column, plus the mean over all cells.
#pragma once

#include <vector>

#include "component/Records.h"
#include "component/SettingsView.h"
#include "component/numeric/ContingencyTable.h"

namespace BayesComponent {

// Row by row: median, mean, variance, and limits between which all interactions lie at once with the
// settings' credible level (J. Besag, P. Green, D. Higdon & K. Mengersen, 1995, Bayesian computation and
// stochastic systems, Stat. Sci. 10:3-66). Every cell has random numbers of its own. Worthless
// once the run is cancelled.
std::vector<MCBSN_850::BayesEstimation> SimulateInteractions(const ContingencyTable& counts,
                                                             const ContingencyTable& shapes,
                                                             const BSNSettings& settings);

}  // namespace BayesComponent
