// Integrals of positive functions that are given, and returned, on the log scale.
//
// W. Gander and W. Gautschi (2000), Adaptive quadrature - revisited, BIT 40:84-101: the four-point Lobatto
// rule with its seven-point Kronrod extension. Two deviations: the interval with the largest estimated error
// is refined first instead of recursing, so that a bound on the refinements is spent where it matters; and
// the integrand is divided by its peak, so that integrals far outside the range of a double come out right.
#pragma once

#include <functional>
#include <vector>

namespace BayesComponent {

// The natural logarithm of a positive function; minus infinity where it is 0.
using LogFunction = std::function<double(double)>;

struct LogIntegral {
  // ln of the integral; NaN when the integrand gave a NaN.
  double fLogValue = 0;
  // False: the error estimate is above the caller's tolerance. The value is the best one had.
  bool fConverged = true;
};

class GaussLobatto {
 public:
  // `tolerance`: the relative error above which a result counts as not converged; the work itself aims at
  // min(tolerance, 1e-10). `maxRefinements`: how many intervals may be split, 0 or more.
  GaussLobatto(double tolerance, int maxRefinements);

  // ln of the integral of exp(lnF) from the first to the last of `breaks`: two or more finite, increasing
  // points. Put a break at every peak that is narrow beside the whole interval, or it may be overlooked.
  LogIntegral Integrate(const LogFunction& lnF, const std::vector<double>& breaks) const;

  // The same from `lower` to `upper` for a function with one peak, however narrow, that stands somewhere in
  // the interval and is at least 1/128 of it wide at its foot, where "foot" may be hundreds of logs down.
  LogIntegral IntegrateUnimodal(const LogFunction& lnF, double lower, double upper) const;

  // The same for a function whose peak the caller knows.
  LogIntegral IntegrateAround(const LogFunction& lnF, double lower, double peak, double upper) const;

  double Tolerance() const { return fTolerance; }
  int MaxRefinements() const { return fMaxRefinements; }

 private:
  double fTolerance;
  int fMaxRefinements;
};

// The argument in [lower, upper] at which a function with one peak is largest, to about 1e-8 of the interval.
double FindPeak(const LogFunction& lnF, double lower, double upper);

}  // namespace BayesComponent
