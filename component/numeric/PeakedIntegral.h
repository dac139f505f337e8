// Integrals over the real line of analytic functions with one peak and tails that fall at least
// exponentially, by equal steps after a substitution that makes the tails fall doubly exponentially: the sum
// converges exponentially in the number of steps.
//
// H. Takahasi & M. Mori (1974), Double exponential formulas for numerical integration, Publ. RIMS Kyoto
// 9:721-741.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "component/numeric/GaussLobatto.h"
#include "component/numeric/RandomStream.h"

namespace BayesComponent {

class PeakedIntegral {
 public:
  // `width`: the rough width of the peak, which stands within a moderate multiple of it from 0. Of `limits`,
  // the tolerance counts, and the refinements as halvings of the step.
  PeakedIntegral(const LogFunction& lnF, double width, const GaussLobatto& limits);

  struct Moments {
    double fMean;
    double fMeanSquare;
  };

  const LogIntegral& Result() const { return fResult; }
  // To a small part of the width.
  double Peak() const { return fPeak; }
  // Panels from one negligible end of the function to the other, each smooth enough for SmoothIntegral.
  std::vector<double> PanelEdges() const;
  // The moments of a value under the integrand, taken as a density. Far from the peak a value may change in
  // steps too long for it: they are halved until the moments settle, too. `lnF`: the integrand once more.
  Moments MomentsOf(const LogFunction& lnF, const std::function<double(double)>& value);

 private:
  // The integrand in the substituted variable, relative to its peak.
  struct Node {
    double fAt;
    double fWeight;
  };

  Node NodeAt(const LogFunction& lnF, double t) const;
  double FindEnd(const LogFunction& lnF, double step);
  double Sum() const;
  bool CanHalve() const { return fHalvings < fMostHalvings; }
  void Halve(const LogFunction& lnF);

  double fWidth;
  double fPeak;
  double fLnPeak;
  double fFirst = 0;
  double fLast = 0;
  double fStep;
  int fHalvings = 0;
  int fMostHalvings;
  std::vector<Node> fvNodes;
  // The first nodes are those of steps twice as long.
  std::size_t fCoarse = 0;
  LogIntegral fResult;
};

// The integral of a function that hardly differs from a polynomial of degree 19 between `from` and `to`.
double SmoothIntegral(const std::function<double(double)>& f, double from, double to);

// ln of the integral that PeakedIntegral takes by importance sampling, `samples` >= 1 draws from a Cauchy
// distribution of this width.
double LogPeakedIntegral(const LogFunction& lnF, double width, int samples, RandomStream& random);

}  // namespace BayesComponent
