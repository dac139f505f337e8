// Means of positive values that are simulated until they are precise enough.
#pragma once

#include <functional>

#include "component/numeric/GaussLobatto.h"

namespace BayesComponent {

struct DrawLimits {
  double fLeast;  // draws at least, and at most
  double fMost;
  // The standard error of the mean's logarithm that is wanted: 0.01, or this share of the logarithm if that
  // is more.
  double fRelativeError = 0;
  // Asked before every draw; once it says yes the result is worthless.
  std::function<bool()> fIsCancelled = [] { return false; };
};

// ln of the mean of exp(x) over draws of x. Not converged: the standard error stayed above what is wanted.
LogIntegral LogMeanOfDraws(const std::function<double()>& draw, const DrawLimits& limits);

}  // namespace BayesComponent
