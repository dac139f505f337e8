// The functions behind the correlations, against closed forms, direct counts and simulation.
#include <algorithm>
#include <boost/math/special_functions/ellint_1.hpp>
#include <cmath>
#include <numbers>

#include "component/numeric/HalfHypergeometric.h"
#include "component/numeric/KendallCorrelation.h"
#include "component/numeric/LatentNormalRanks.h"
#include "component/numeric/Moments.h"
#include "component/numeric/PearsonCorrelation.h"
#include "gtest/gtest.h"

namespace {

using namespace BayesComponent;

const GaussLobatto kQuadrature(1e-6, 2000);

TEST(HalfHypergeometric, MeetsItsClosedForms) {
  for (const double complement : {1.0, 0.9, 0.3, 1e-3, 1e-9}) {
    const double root = std::sqrt(1 - complement);
    const double elliptic = 2 / std::numbers::pi * boost::math::ellint_1(root);
    // The elliptic integral's own argument has lost the digits of a small complement.
    const double allowed = 1e-15 / complement + 1e-13;
    EXPECT_NEAR(std::exp(LogHalfHypergeometric(1, complement).fLog) / elliptic, 1, allowed) << complement;
    if (root == 0) continue;
    const double arcSine = std::atan2(root, std::sqrt(complement)) / root;
    EXPECT_NEAR(std::exp(LogHalfHypergeometric(1.5, complement).fLog) / arcSine, 1, 1e-13) << complement;
  }
}

// Gauss's relation between neighbouring c holds across the change of method.
TEST(HalfHypergeometric, FollowsTheRecursionInC) {
  for (const double c : {1.6, 3.0, 6.9, 7.5, 8.4, 30.0}) {
    for (const double x : {0.1, 0.49, 0.51, 0.99}) {
      const auto f = [x](double at) { return std::exp(LogHalfHypergeometric(at, 1 - x).fLog); };
      const double terms[] = {c * (c - 1) * (x - 1) * f(c - 1), c * (c - 1 - (2 * c - 2) * x) * f(c),
                              (c - 0.5) * (c - 0.5) * x * f(c + 1)};
      const double size = std::abs(terms[0]) + std::abs(terms[1]) + std::abs(terms[2]);
      EXPECT_NEAR(terms[0] + terms[1] + terms[2], 0, 1e-13 * size) << c << ' ' << x;
    }
  }
}

TEST(HalfHypergeometric, SlopeIsTheDerivative) {
  for (const double c : {0.8, 2.5, 7.0, 9.0}) {
    for (const double x : {0.2, 0.7, 0.95}) {
      const auto f = [c](double at) { return LogHalfHypergeometric(c, 1 - at).fLog; };
      const double h = 1e-4;
      const double slope = (8 * (f(x + h) - f(x - h)) - (f(x + 2 * h) - f(x - 2 * h))) / (12 * h);
      EXPECT_NEAR(LogHalfHypergeometric(c, 1 - x).fSlope, slope, 1e-7 * (1 + slope)) << c << ' ' << x;
    }
  }
}

TEST(CoefficientScale, DifferencesAndSlopesBelongToTheValue) {
  for (const CoefficientScale& scale : {kPearsonScale, kSpearmanScale, kKendallScale}) {
    for (const double u : {-3.0, -0.2, 0.0, 1.4}) {
      EXPECT_NEAR(scale.fInverse(scale.fValue(u)), u, 1e-12);
      for (const double d : {-2.0, -1e-3, 0.0, 0.6}) {
        EXPECT_NEAR(scale.fDifference(u, d), scale.fValue(u + d) - scale.fValue(u), 1e-15);
      }
      const double h = 1e-6;
      EXPECT_NEAR(scale.fDifference(u, h) / h / std::exp(scale.fLogSlope(u)), 1, 1e-5);
    }
    EXPECT_NEAR(scale.fValue(30), 1, 1e-12);
    EXPECT_NEAR(scale.fDifference(400, 500), 0, 1e-150);
  }
}

TEST(CorrelationPrior, IntegratesToOneOnEveryScale) {
  for (const double c : {-0.9, -0.5, 0.0, 3.0}) {
    const CorrelationPrior prior(c);
    const LogFunction lnF = [&](double u) { return prior.LogDensity(u); };
    EXPECT_NEAR(PeakedIntegral(lnF, 1, kQuadrature).Result().fLogValue, 0, 1e-9) << c;
    for (const CoefficientScale& scale : {kPearsonScale, kSpearmanScale, kKendallScale}) {
      const double value = scale.fValue(0.4);
      const double h = 1e-6;
      const double slope = scale.fDifference(0.4, h) / h;
      EXPECT_NEAR(prior.Density(scale, value) * slope, std::exp(prior.LogDensity(0.4)), 1e-5) << c;
    }
  }
}

struct SampleRow {
  double fR;
  double fN;
  double fC;
};

// Quantiles, moments and mode against the density, which is the likelihood times the prior.
TEST(PearsonPosterior, NumbersBelongToItsDensity) {
  const SampleRow rows[] = {{0.2, 3, 0}, {-0.9, 6, 2}, {0.9999, 8, -1.5}, {0.4, 500, -20}, {0.999, 1e7, 0}};
  for (const SampleRow& row : rows) {
    SCOPED_TRACE(row.fR);
    const auto posterior = PearsonPosterior({row.fR, row.fN}, row.fC, kQuadrature);
    ASSERT_TRUE(posterior && posterior->HasConverged());
    const double lower = posterior->LowerQuantile(0.1);
    const double upper = posterior->UpperQuantile(0.3);
    const LogFunction lnDensity = [&](double x) { return std::log(posterior->Density(x)); };
    EXPECT_NEAR(std::exp(kQuadrature.Integrate(lnDensity, {lower, upper}).fLogValue), 0.6, 1e-7);
    const double mode = *posterior->Mode();
    for (const double aside : {-1e-3, 1e-3}) {
      const double sd = std::sqrt(*posterior->Variance());
      EXPECT_GT(posterior->Density(mode), posterior->Density(mode + aside * sd));
    }
  }
}

// Near +-1 a long tail makes most of the variance. From integrals in 40 digits.
TEST(PearsonPosterior, VarianceHoldsItsLongTail) {
  const struct {
    SampleRow fSample;
    double fVariance;
  } rows[] = {{{0.5, 12, 0}, 5.494268001607358e-2},
              {{0.9999, 8, 0}, 1.178872288939515e-6},
              {{0.999999, 8, 1}, 1.983708352436116e-6},
              {{-0.9999995, 5, -0.9}, 8.092323462765961e-9}};
  for (const auto& [sample, variance] : rows) {
    const auto posterior = PearsonPosterior({sample.fR, sample.fN}, sample.fC, kQuadrature);
    ASSERT_TRUE(posterior && posterior->HasConverged());
    EXPECT_NEAR(*posterior->Variance() / variance, 1, 1e-8) << sample.fR;
  }
}

// A prior of c = 1e8 is nearly normal with the variance 1/(2c) in rho, whatever the data say.
TEST(CorrelationPosterior, HoldsAnyPriorBesideAnyLikelihood) {
  constexpr double kC = 1e8;
  for (const double r : {-0.99, 0.0, 0.3}) {
    SCOPED_TRACE(r);
    const auto pearson = PearsonPosterior({r, 10}, kC, kQuadrature);
    const auto kendall = KendallLikelihood(r, 10).Posterior(kC, kQuadrature);
    for (const auto& [posterior, scale] :
         {std::pair(pearson.get(), 1.0), {kendall.get(), std::numbers::inv_pi * 2}}) {
      ASSERT_TRUE(posterior && posterior->HasConverged());
      const double sd = scale / std::sqrt(2 * kC);
      EXPECT_NEAR(std::sqrt(*posterior->Variance()) / sd, 1, 1e-5);
      EXPECT_NEAR((posterior->UpperQuantile(0.025) - *posterior->Mean()) / sd, 1.959964, 1e-4);
    }
    const LogIntegral fractional = LogBF01Fractional({r, 10}, 0, {kC, 0.5}, kQuadrature);
    EXPECT_TRUE(fractional.fConverged);
    EXPECT_NEAR(fractional.fLogValue, 0, 1e-5);
  }
}

TEST(PearsonPosterior, IsProperJustInside) {
  EXPECT_TRUE(PearsonPosterior({0.3, 5}, -2.9, kQuadrature));
  EXPECT_FALSE(PearsonPosterior({0.3, 5}, -3, kQuadrature));
}

// Both estimates against the quadrature, within five standard errors of a generous variance.
TEST(PearsonBayesFactor, EstimatesMeetTheQuadrature) {
  constexpr int kDraws = 200000;
  for (const SampleRow& row : {SampleRow{0.3, 12, 0}, {-0.7, 30, 1}, {0.05, 200, -0.5}}) {
    const PearsonSample sample{row.fR, row.fN};
    RandomStream random(7);
    EXPECT_NEAR(LogBF01Jzs(sample, 0.1, kDraws, random), LogBF01Jzs(sample, 0.1, kQuadrature).fLogValue,
                0.05);
    const FractionalPrior prior{row.fC, 0.4};
    EXPECT_NEAR(LogBF01Fractional(sample, 0.1, prior, kDraws, random),
                LogBF01Fractional(sample, 0.1, prior, kQuadrature).fLogValue, 0.03);
  }
}

TEST(PearsonBayesFactor, DependsOnTheDistanceInFishersZ) {
  const double shifted = std::tanh(std::atanh(0.8) - std::atanh(0.5));
  EXPECT_NEAR(LogBF01Jzs({0.8, 40}, 0.5, kQuadrature).fLogValue,
              LogBF01Jzs({shifted, 40}, 0, kQuadrature).fLogValue, 1e-10);
}

std::vector<WeightedPair> TiedPairs(std::uint64_t seed, int levels) {
  RandomStream random(seed);
  std::vector<WeightedPair> pairs;
  for (int i = 0; i < 40; ++i) {
    const double x = std::floor(levels * random.Uniform());
    const double y = std::floor((x + levels * random.Uniform()) / 2);
    pairs.push_back({x, y, 1 + std::floor(3 * random.Uniform())});
  }
  return pairs;
}

TEST(RankStatistics, MatchDirectCounts) {
  for (const int levels : {2, 5, 1000}) {
    const std::vector<WeightedPair> pairs = TiedPairs(31, levels);
    std::vector<std::pair<double, double>> cases;
    for (const WeightedPair& pair : pairs) {
      cases.insert(cases.end(), static_cast<std::size_t>(pair.fWeight), {pair.fX, pair.fY});
    }
    const auto sign = [](double a, double b) { return (a > b) - (a < b); };
    double score = 0, untiedX = 0, untiedY = 0, products = 0, squaresX = 0, squaresY = 0;
    for (const auto& a : cases) {
      double rankX = 0, rankY = 0;
      for (const auto& b : cases) {
        score += sign(a.first, b.first) * sign(a.second, b.second);
        untiedX += a.first != b.first;
        untiedY += a.second != b.second;
        rankX += sign(a.first, b.first);
        rankY += sign(a.second, b.second);
      }
      products += rankX * rankY;
      squaresX += rankX * rankX;
      squaresY += rankY * rankY;
    }
    EXPECT_NEAR(KendallTauB(pairs), score / std::sqrt(untiedX * untiedY), 1e-14) << levels;
    EXPECT_NEAR(SpearmanRho(pairs), products / std::sqrt(squaresX * squaresY), 1e-14) << levels;
  }
}

TEST(RankStatistics, OfAConstantAreUndefined) {
  const std::vector<WeightedPair> pairs = {{1, 2, 3}, {1, 5, 1}, {1, 4, 2}};
  EXPECT_TRUE(std::isnan(KendallTauB(pairs)));
  EXPECT_TRUE(std::isnan(SpearmanRho(pairs)));
}

TEST(KendallPosterior, NumbersBelongToItsDensity) {
  for (const SampleRow& row : {SampleRow{0.3, 25, 0}, {1, 4, 0.5}, {-0.98, 300, 2}, {0.1, 1e6, -0.5}}) {
    SCOPED_TRACE(row.fN);
    const KendallLikelihood likelihood(row.fR, row.fN);
    const auto posterior = likelihood.Posterior(row.fC, kQuadrature);
    ASSERT_TRUE(posterior && posterior->HasConverged());
    const auto lnKernel = [&](double tau) {
      return likelihood.LogOf(tau) + (2 * row.fC + 1) * std::log(std::cos(std::numbers::pi / 2 * tau));
    };
    const double a = posterior->LowerQuantile(0.2);
    const double b = posterior->UpperQuantile(0.2);
    EXPECT_NEAR(std::log(posterior->Density(a) / posterior->Density(b)), lnKernel(a) - lnKernel(b), 1e-7);
    const LogFunction lnDensity = [&](double x) { return std::log(posterior->Density(x)); };
    EXPECT_NEAR(std::exp(kQuadrature.Integrate(lnDensity, {a, b}).fLogValue), 0.6, 1e-7);
    EXPECT_GE(posterior->Density(*posterior->Mode()), posterior->Density(*posterior->Mode() - 1e-3));
  }
  EXPECT_FALSE(KendallLikelihood(0.3, 10).Posterior(-1, kQuadrature));
}

// Latent samples from the model whose ranks agree with the observed ones: draws from the posterior itself.
Moments SimulatedPosterior(const std::vector<WeightedPair>& pairs, int draws) {
  RandomStream random(99);
  Moments accepted;
  std::vector<WeightedPair> cases;
  for (const WeightedPair& pair : pairs)
    cases.insert(cases.end(), static_cast<std::size_t>(pair.fWeight), pair);
  std::vector<double> x(cases.size()), y(cases.size());
  for (int i = 0; i < draws; ++i) {
    const double rho = 2 * random.Uniform() - 1;
    for (std::size_t j = 0; j < cases.size(); ++j) {
      x[j] = random.Normal();
      y[j] = rho * x[j] + std::sqrt(1 - rho * rho) * random.Normal();
    }
    bool agree = true;
    for (std::size_t j = 0; j < cases.size(); ++j) {
      for (std::size_t k = 0; k < cases.size(); ++k) {
        agree = agree && !(cases[j].fX < cases[k].fX && x[j] > x[k]);
        agree = agree && !(cases[j].fY < cases[k].fY && y[j] > y[k]);
      }
    }
    if (agree) accepted.Add(kSpearmanScale.fValue(std::atanh(rho)), 1);
  }
  return accepted;
}

TEST(LatentNormalRanks, AgreeWithDirectSimulationTiesIncluded) {
  const std::vector<WeightedPair> samples[] = {{{1, 1, 1}, {2, 3, 1}, {3, 2, 1}},
                                               {{1, 4, 1}, {2, 3, 1}, {3, 3, 1}, {3, 1, 1}},
                                               {{1, 1, 2}, {2, 2, 1}, {3, 2, 1}}};
  for (const auto& pairs : samples) {
    const Moments direct = SimulatedPosterior(pairs, 2000000);
    ASSERT_GT(direct.Count(), 10000);
    RandomStream random(1);
    const LatentAnswer answer = InferLatentRanks(pairs, {0, 0, 40000}, random, [] { return false; });
    const double variance = direct.SumOfSquares() / direct.Count();
    // The chain's draws are worth about a tenth of independent ones.
    const double error = std::sqrt(variance * (1 / direct.Count() + 1.0 / 4000));
    EXPECT_NEAR(*answer.fPosterior->Mean(), direct.Mean(), 4 * error);
    EXPECT_NEAR(*answer.fPosterior->Variance(), variance, 0.1 * variance);
  }
}

TEST(LatentNormalRanks, DensityIsThatOfTheDraws) {
  const std::vector<WeightedPair> pairs = TiedPairs(8, 12);
  RandomStream random(2);
  const LatentAnswer answer = InferLatentRanks(pairs, {1, 0.9, 20000}, random, [] { return false; });
  const RankPosterior& posterior = *answer.fPosterior;
  const double a = posterior.LowerQuantile(0.25);
  const double b = posterior.UpperQuantile(0.25);
  const LogFunction lnDensity = [&](double x) { return std::log(posterior.Density(x)); };
  EXPECT_NEAR(std::exp(kQuadrature.Integrate(lnDensity, {a, b}).fLogValue), 0.5, 0.02);
  const double atNull = posterior.Density(kSpearmanScale.fValue(0.9));
  EXPECT_NEAR(answer.fLogDensityAtNull, std::log(atNull) + kSpearmanScale.fLogSlope(0.9), 0.1);
  EXPECT_FALSE(InferLatentRanks(pairs, {1, 0.3, 20000}, random, [] { return true; }).fPosterior);
}

}  // namespace
