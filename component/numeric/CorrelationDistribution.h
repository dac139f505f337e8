// The distribution of a correlation coefficient whose density is known, up to a factor, as a function of u =
// artanh(rho): normalised, integrated and inverted by quadrature.
#pragma once

#include <utility>
#include <vector>

#include "component/numeric/CorrelationScale.h"
#include "component/numeric/Distribution.h"
#include "component/numeric/PeakedIntegral.h"

namespace BayesComponent {

class CorrelationDistribution : public Distribution {
 public:
  // `lnDensity`: of the distance from `anchor` in u, up to a constant; `width`: rough width of its peak,
  // which stands near the anchor. `mode`: of the coefficient, where its density has one. Distances keep the
  // digits of a narrow posterior around a large u.
  CorrelationDistribution(const CoefficientScale& scale, double anchor, LogFunction lnDensity, double width,
                          std::optional<double> mode, const GaussLobatto& quadrature);

  std::optional<double> Mode() const override { return fMode; }
  std::optional<double> Mean() const override { return fMean; }
  std::optional<double> Variance() const override { return fVariance; }
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

  // ln of the integral of the density as it was given, over u.
  double LogNormaliser() const { return fIntegral.Result().fLogValue; }
  // Whether the integrals behind the mean, the variance and the quantiles reached the tolerance.
  bool HasConverged() const { return fConverged; }

 private:
  void SetMoments();
  void Tabulate(double tolerance);
  double MassBetween(double from, double to) const;

  CoefficientScale fScale;
  double fAnchor;
  LogFunction fLnDensity;
  PeakedIntegral fIntegral;
  std::optional<double> fMode;
  double fMean = 0;
  double fVariance = 0;
  bool fConverged = false;
  // Edges of panels, in distances, and the probability of each panel.
  std::vector<double> fvEdges;
  std::vector<double> fvMasses;
};

}  // namespace BayesComponent
