#include "component/VariancePrior.h"

namespace BayesComponent {

namespace {

std::optional<VariancePrior> Informative(double df, double sum) {
  if (df > 0 && sum > 0) return VariancePrior{df, sum};
  return {};
}

}  // namespace

std::optional<VariancePrior> VariancePriorOf(const BSNSettings& settings) {
  const double first = settings.GetPriorDistParam1();
  const double second = settings.GetPriorDistParam2();
  switch (settings.GetPriorDistType()) {
    case BSNConst::Diffuse:
      return kDiffuseVariance;
    case BSNConst::Jeffreys2:
      return VariancePrior{0, 0};
    case BSNConst::Jeffreys4:
      return VariancePrior{2, 0};
    case BSNConst::InvChiSquare:
      return Informative(GivenOr(first, 1), GivenOr(first, 1) * GivenOr(second, 1));
    case BSNConst::InvGamma:
    case BSNConst::Gamma:
      return Informative(2 * GivenOr(first, 0.5), 2 * GivenOr(second, 0.5));
    case BSNConst::ChiSquare:
      return Informative(GivenOr(first, 1), 1);
    default:
      return {};
  }
}

}  // namespace BayesComponent
