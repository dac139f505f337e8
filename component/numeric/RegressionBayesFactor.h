// Bayes factors of linear models, as natural logarithms of the model over the intercept alone (BF10).
#pragma once

#include <vector>

#include "component/numeric/GaussLobatto.h"

namespace BayesComponent {

// A model by its number of cases, its number of parameters beside the intercept, and the shares of the total
// sum of squares that it explains and leaves. Both are given because each may be too small to be 1 minus the
// other.
struct RegressionFit {
  double fN;
  double fP;
  double fExplained;
  double fUnexplained;
};

// Zellner's g prior of the slopes, g > 0. Liang, Paulo, Molina, Clyde & Berger (2008), JASA 103:410-423,
// section 2.
double LogBF10GivenG(const RegressionFit& fit, double g);

// g ~ inverse gamma (1/2, scale^2 N/2). Scale 1 is the prior of Zellner and Siow, section 3.1 there; other
// scales > 0: Rouder & Morey (2012), Multivar. Behav. Res. 47:877-903.
LogIntegral LogBF10Cauchy(const RegressionFit& fit, double scale, const GaussLobatto& quadrature);

// The hyper-g prior, density (a - 2)/2 (1 + g)^(-a/2) with 2 < a <= 4: section 3.2 of Liang et al.
LogIntegral LogBF10HyperG(const RegressionFit& fit, double a, const GaussLobatto& quadrature);

// One-way effects that add up to zero, in the directions in which the design is orthogonal.
struct EffectsFit {
  double fN;
  double fUnexplained;
  // For each direction: the weight of the design in it, > 0, and the share of the total sum of squares it
  // explains.
  std::vector<double> fvDesignWeights;
  std::vector<double> fvExplained;
};

// `groupWeights` > 0: the sums of case weights; `groupMeans`: up to a common constant; `residualSum`: the sum
// of squares within groups; `n`: the number of cases.
EffectsFit OneWayEffects(const std::vector<double>& groupWeights, const std::vector<double>& groupMeans,
                         double residualSum, double n);

// Effects that are normal with variance g sigma^2, g ~ inverse gamma (1/2, scale^2/2), scale > 0.
// Rouder, Morey, Speckman & Province (2012), J. Math. Psych. 56:356-374.
LogIntegral LogBF10Effects(const EffectsFit& fit, double scale, const GaussLobatto& quadrature);

}  // namespace BayesComponent
