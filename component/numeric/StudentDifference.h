// The difference of two independent Student variables: the posterior of a difference of means whose variances
// differ (Behrens and Fisher). It has no closed form; density and tails are quadratures of the convolution.
#pragma once

#include "component/numeric/Distribution.h"
#include "component/numeric/GaussLobatto.h"

namespace BayesComponent {

class StudentDifference : public Distribution {
 public:
  // The distribution of first minus second.
  StudentDifference(const StudentDistribution& first, const StudentDistribution& second);
  std::optional<double> Mode() const override { return fLocation; }
  // Nothing unless both have a mean; for the variance likewise.
  std::optional<double> Mean() const override;
  std::optional<double> Variance() const override;
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

 private:
  double DistanceToQuantile(double tail) const;
  double UpperProbability(double distance) const;
  double MeanOverNarrow(double distance, const LogFunction& lnValue) const;

  double fLocation;
  // Both centred at 0; the one with the larger scale is smooth over the range of the other.
  StudentDistribution fWide;
  StudentDistribution fNarrow;
};

}  // namespace BayesComponent
