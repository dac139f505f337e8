#include "component/numeric/GaussLobatto.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "gtest/gtest.h"

namespace {

using BayesComponent::GaussLobatto;
using BayesComponent::LogFunction;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Integral {
  const char* fName;
  LogFunction fLnF;
  double fLower;
  double fUpper;
  double fExpected;  // ln of the integral
};

const double kLnRoot2Pi = 0.5 * std::log(2 * std::numbers::pi);

const Integral kUnimodal[] = {
    {"normal", [](double x) { return -x * x / 2; }, -40, 40, kLnRoot2Pi},
    {"normal far below the doubles", [](double x) { return -5000 - x * x / 2; }, -40, 40, kLnRoot2Pi - 5000},
    {"normal far above the doubles", [](double x) { return 5000 - x * x / 2; }, -40, 40, kLnRoot2Pi + 5000},
    {"narrow peak", [](double x) { return -0.5 * std::pow((x - 0.3) / 1e-7, 2); }, 0, 1,
     kLnRoot2Pi + std::log(1e-7)},
    {"peak at the lower end", [](double x) { return -x; }, 0, 700, 0},
    {"long tail on the log scale", [](double u) { return u - 1.5 * std::log1p(std::exp(u)); }, -700, 700,
     std::log(2.0)},
    {"pole of a beta density", [](double x) { return x > 0 ? -0.5 * std::log(x) : -kInfinity; }, 0, 1,
     std::log(2.0)},
};

TEST(GaussLobatto, IntegratesKnownIntegralsWhateverTheirScale) {
  const GaussLobatto quadrature(1e-6, 2000);
  for (const Integral& row : kUnimodal) {
    const auto result = quadrature.IntegrateUnimodal(row.fLnF, row.fLower, row.fUpper);
    // The pole lies at the end of the interval, where no polynomial follows it closely.
    const double allowed = std::string(row.fName).starts_with("pole") ? 1e-6 : 1e-11;
    EXPECT_NEAR(result.fLogValue, row.fExpected, allowed * std::max(1.0, std::abs(row.fExpected)))
        << row.fName;
    EXPECT_TRUE(result.fConverged) << row.fName;
  }
}

TEST(GaussLobatto, SaysWhenTheRefinementsDontSuffice) {
  const LogFunction spike = [](double x) { return -0.5 * std::pow((x - 0.3) / 1e-3, 2); };
  for (const int refinements : {0, 1, 3}) {
    const auto result = GaussLobatto(1e-6, refinements).Integrate(spike, {0, 0.3, 1});
    EXPECT_FALSE(result.fConverged) << refinements;
    EXPECT_TRUE(std::isfinite(result.fLogValue)) << refinements;
  }
  EXPECT_TRUE(GaussLobatto(1e-6, 200).Integrate(spike, {0, 0.3, 1}).fConverged);
}

TEST(GaussLobatto, PassesOnZeroAndNaN) {
  const GaussLobatto quadrature(1e-6, 50);
  const auto zero = quadrature.Integrate([](double) { return -kInfinity; }, {0, 1});
  EXPECT_EQ(zero.fLogValue, -kInfinity);
  const auto undefined = quadrature.Integrate([](double x) { return std::sqrt(x - 0.5); }, {0, 1});
  EXPECT_TRUE(std::isnan(undefined.fLogValue));
  EXPECT_FALSE(undefined.fConverged);
}

}  // namespace
