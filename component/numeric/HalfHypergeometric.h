// The hypergeometric function 2F1(1/2, 1/2; c; x), which the likelihood of a correlation needs.
#pragma once

namespace BayesComponent {

struct LogAndSlope {
  double fLog;    // natural logarithm of the function
  double fSlope;  // derivative of that logarithm
};

// For c > 1/2 and x = 1 - complement, 0 < complement <= 1: the complement keeps its digits near x = 1, where
// the function is steep. Relative error of the function below 1e-13.
LogAndSlope LogHalfHypergeometric(double c, double complement);

}  // namespace BayesComponent
