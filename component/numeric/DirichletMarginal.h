// Marginal likelihoods of counts under Dirichlet and gamma priors, each relative to the likelihood at the
// observed proportions: the logarithms themselves reach 1e10 in a billion cases, these stay small.
#pragma once

#include <vector>

namespace BayesComponent {

// ln of Gamma(n + a)/Gamma(a) over (n/e)^n, for a count n >= 0 and a shape a > 0.
double LogGammaMarginal(double count, double shape);

// ln of D(n + a)/D(a) over the product of (n_i/N)^n_i, with D the normaliser of the Dirichlet distribution:
// counts n_i >= 0 of sum N, shapes a_i > 0.
double LogDirichletMarginal(const std::vector<double>& counts, const std::vector<double>& shapes);

}  // namespace BayesComponent
