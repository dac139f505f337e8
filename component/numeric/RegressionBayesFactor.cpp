#include "component/numeric/RegressionBayesFactor.h"

#include <Eigen/Eigenvalues>
#include <cmath>
#include <numbers>
#include <numeric>

namespace BayesComponent {

namespace {

constexpr double kLargestLogG = 700;

// ln (1 - R^2) of a shrunk fit: R^2 where that is small, the remainder itself where it is not.
double LogRemainder(double explained, double unexplained) {
  return explained < 0.5 ? std::log1p(-explained) : std::log(unexplained);
}

// The integral of exp(lnBF10) over g ~ inverse gamma (1/2, b), taken over ln g.
LogIntegral MixOverInverseGamma(const LogFunction& lnBF10, double b, const GaussLobatto& quadrature) {
  const auto lnF = [&lnBF10, b](double lnG) {
    const double g = std::exp(lnG);
    // One factor g comes from integrating over ln g.
    return lnBF10(g) + 0.5 * std::log(b / std::numbers::pi) - 0.5 * lnG - b / g;
  };
  // Below, the prior has no mass left.
  constexpr double kLogGBelowScale = 40;
  return quadrature.IntegrateUnimodal(lnF, std::log(2 * b) - kLogGBelowScale, kLargestLogG);
}

// X*'WX* of the sum-to-zero effects, rotated back to one row and column for each group.
Eigen::MatrixXd CentredDesign(const Eigen::VectorXd& weights) {
  const double total = weights.sum();
  Eigen::MatrixXd design = -weights * (weights / total).transpose();
  for (Eigen::Index i = 0; i < weights.size(); ++i) {
    // W_i (total - W_i)/total without the difference, which a large group would ruin.
    const double others = weights.head(i).sum() + weights.tail(weights.size() - i - 1).sum();
    design(i, i) = weights[i] * (others / total);
  }
  return design;
}

// Orthonormal columns that each add up to zero (Helmert's contrasts).
Eigen::MatrixXd ZeroSumBasis(Eigen::Index groups) {
  Eigen::MatrixXd basis = Eigen::MatrixXd::Zero(groups, groups - 1);
  for (Eigen::Index j = 0; j + 1 < groups; ++j) {
    const auto m = static_cast<double>(j + 1);
    basis.col(j).head(j + 1).setConstant(1 / std::sqrt(m * (m + 1)));
    basis(j + 1, j) = -m / std::sqrt(m * (m + 1));
  }
  return basis;
}

}  // namespace

double LogBF10GivenG(const RegressionFit& fit, double g) {
  const double remainder = LogRemainder(fit.fExplained * (g / (1 + g)), (1 + fit.fUnexplained * g) / (1 + g));
  return -0.5 * fit.fP * std::log1p(g) - 0.5 * (fit.fN - 1) * remainder;
}

LogIntegral LogBF10Cauchy(const RegressionFit& fit, double scale, const GaussLobatto& quadrature) {
  const auto lnBF10 = [&fit](double g) { return LogBF10GivenG(fit, g); };
  return MixOverInverseGamma(lnBF10, scale * scale * fit.fN / 2, quadrature);
}

LogIntegral LogBF10HyperG(const RegressionFit& fit, double a, const GaussLobatto& quadrature) {
  const auto lnF = [&fit, a](double lnG) {
    const double g = std::exp(lnG);
    return LogBF10GivenG(fit, g) + std::log((a - 2) / 2) - a / 2 * std::log1p(g) + lnG;
  };
  constexpr double kSmallestLogG = -80;
  return quadrature.IntegrateUnimodal(lnF, kSmallestLogG, kLargestLogG);
}

EffectsFit OneWayEffects(const std::vector<double>& groupWeights, const std::vector<double>& groupMeans,
                         double residualSum, double n) {
  const auto groups = static_cast<Eigen::Index>(groupWeights.size());
  const Eigen::Map<const Eigen::VectorXd> weights(groupWeights.data(), groups);
  const Eigen::Map<const Eigen::VectorXd> means(groupMeans.data(), groups);
  const double grandMean = weights.dot(means) / weights.sum();
  const Eigen::VectorXd deviations = means.array() - grandMean;
  const Eigen::VectorXd products = weights.cwiseProduct(deviations);
  const double total = residualSum + products.dot(deviations);

  const Eigen::MatrixXd basis = ZeroSumBasis(groups);
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> eigen(basis.transpose() * CentredDesign(weights) *
                                                             basis);
  const Eigen::VectorXd projections = eigen.eigenvectors().transpose() * (basis.transpose() * products);
  EffectsFit fit{n, residualSum / total, {}, {}};
  for (Eigen::Index i = 0; i + 1 < groups; ++i) {
    fit.fvDesignWeights.push_back(eigen.eigenvalues()[i]);
    fit.fvExplained.push_back(projections[i] * projections[i] / eigen.eigenvalues()[i] / total);
  }
  return fit;
}

LogIntegral LogBF10Effects(const EffectsFit& fit, double scale, const GaussLobatto& quadrature) {
  const auto lnBF10 = [&fit](double g) {
    double lnDeterminant = 0;
    double explained = 0;
    double unexplained = fit.fUnexplained;
    for (std::size_t i = 0; i < fit.fvExplained.size(); ++i) {
      const double scaled = g * fit.fvDesignWeights[i];
      lnDeterminant += std::log1p(scaled);
      explained += fit.fvExplained[i] * (std::isinf(scaled) ? 1 : scaled / (1 + scaled));
      unexplained += fit.fvExplained[i] / (1 + scaled);
    }
    return -0.5 * lnDeterminant - 0.5 * (fit.fN - 1) * LogRemainder(explained, unexplained);
  };
  return MixOverInverseGamma(lnBF10, scale * scale / 2, quadrature);
}

}  // namespace BayesComponent
