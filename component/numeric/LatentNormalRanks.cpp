#include "component/numeric/LatentNormalRanks.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

#include "component/numeric/CorrelationScale.h"
#include "component/numeric/GaussLobatto.h"
#include "component/numeric/LogMeanExp.h"
#include "component/numeric/Moments.h"
#include "component/numeric/SliceSampling.h"

namespace BayesComponent {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// One latent variable: its values, and its cases in rank order, those of one rank together.
class Margin {
 public:
  explicit Margin(const std::vector<double>& observed)
      : fvValues(RelativeRanks(observed, std::vector<double>(observed.size(), 1.0))),
        fvOrder(observed.size()) {
    std::iota(fvOrder.begin(), fvOrder.end(), 0u);
    std::stable_sort(fvOrder.begin(), fvOrder.end(),
                     [this](std::uint32_t a, std::uint32_t b) { return fvValues[a] < fvValues[b]; });
    for (std::size_t i = 0; i < fvOrder.size(); ++i) {
      if (i == 0 || InOrder(i) != InOrder(i - 1)) fvStarts.push_back(i);
    }
    fvStarts.push_back(fvOrder.size());
    // The chain starts at normal scores.
    const NormalDistribution normal(0, 1);
    for (double& value : fvValues) value = normal.LowerQuantile(value);
  }

  const std::vector<double>& Values() const { return fvValues; }

  // Draws every value given the other variable's, between the values of the neighbouring ranks.
  void Draw(const std::vector<double>& others, double u, RandomStream& random) {
    const double rho = std::tanh(u);
    const double sd = 1 / std::cosh(u);
    double lower = -kInfinity;
    for (std::size_t rank = 0; rank + 1 < fvStarts.size(); ++rank) {
      const double upper = SmallestOf(rank + 1);
      double largest = -kInfinity;
      for (std::size_t i = fvStarts[rank]; i < fvStarts[rank + 1]; ++i) {
        double& value = fvValues[fvOrder[i]];
        const double mean = rho * others[fvOrder[i]];
        if (upper > lower) value = mean + sd * random.NormalBetween((lower - mean) / sd, (upper - mean) / sd);
        // Rounding may put it on the far side of a bound.
        value = std::clamp(value, lower, upper);
        largest = std::max(largest, value);
      }
      lower = largest;
    }
  }

  // Shifts, then stretches the whole margin.
  void Move(const std::vector<double>& others, double u, RandomStream& random) {
    const auto n = static_cast<double>(fvValues.size());
    const double rho = std::tanh(u);
    const double mean = std::accumulate(fvValues.begin(), fvValues.end(), 0.0) / n;
    const double otherMean = std::accumulate(others.begin(), others.end(), 0.0) / n;
    const double shift = rho * otherMean - mean + random.Normal() / (std::cosh(u) * std::sqrt(n));
    for (double& value : fvValues) value += shift;

    const double squares = std::inner_product(fvValues.begin(), fvValues.end(), fvValues.begin(), 0.0);
    const double products = std::inner_product(fvValues.begin(), fvValues.end(), others.begin(), 0.0);
    const double precision = std::cosh(u) * std::cosh(u);
    const auto lnF = [&](double lnFactor) {
      const double factor = std::exp(lnFactor);
      return n * lnFactor - precision * factor * (factor * squares / 2 - rho * products);
    };
    const double factor = std::exp(SliceSample(lnF, 0, 2 / std::sqrt(n), random));
    for (double& value : fvValues) value *= factor;
  }

 private:
  double InOrder(std::size_t i) const { return fvValues[fvOrder[i]]; }

  // The smallest value of a rank; infinite behind the last.
  double SmallestOf(std::size_t rank) const {
    if (rank + 1 >= fvStarts.size()) return kInfinity;
    double smallest = kInfinity;
    for (std::size_t i = fvStarts[rank]; i < fvStarts[rank + 1]; ++i)
      smallest = std::min(smallest, InOrder(i));
    return smallest;
  }

  std::vector<double> fvValues;
  std::vector<std::uint32_t> fvOrder;
  // Where each rank starts in the order, and its end.
  std::vector<std::size_t> fvStarts;
};

// The state of the Markov chain: both margins and u = artanh(rho).
class LatentChain {
 public:
  LatentChain(const std::vector<double>& x, const std::vector<double>& y, double c)
      : fX(x), fY(y), fN(static_cast<double>(x.size())), fC(c) {}

  double U() const { return fU; }

  void Sweep(RandomStream& random) {
    fX.Draw(fY.Values(), fU, random);
    fY.Draw(fX.Values(), fU, random);
    fX.Move(fY.Values(), fU, random);
    fY.Move(fX.Values(), fU, random);
    const ConditionalOfRho conditional = Conditional();
    const auto lnF = [&](double u) { return conditional.LogKernel(u); };
    fU = SliceSample(lnF, fU, 4 * conditional.Step(), random);
  }

  ConditionalOfRho Conditional() const {
    double sumPlus = 0;
    double sumMinus = 0;
    for (std::size_t i = 0; i < fX.Values().size(); ++i) {
      const double half = fX.Values()[i] / 2;
      const double otherHalf = fY.Values()[i] / 2;
      sumPlus += (half + otherHalf) * (half + otherHalf);
      sumMinus += (half - otherHalf) * (half - otherHalf);
    }
    return {fN, fC, sumPlus, sumMinus};
  }

 private:
  Margin fX;
  Margin fY;
  double fN;
  double fC;
  double fU = 0;
};

// A case for every unit of weight.
LatentChain MakeChain(const std::vector<WeightedPair>& pairs, double c) {
  std::vector<double> x, y;
  for (const WeightedPair& pair : pairs) {
    x.insert(x.end(), static_cast<std::size_t>(pair.fWeight), pair.fX);
    y.insert(y.end(), static_cast<std::size_t>(pair.fWeight), pair.fY);
  }
  return {x, y, c};
}

}  // namespace

// With a = (x + y)/2 and b = (x - y)/2 the exponent (x^2 - 2 rho x y + y^2)/(2 (1 - rho^2)) is a^2/(1 + rho)
// + b^2/(1 - rho), and 1/(1 +- rho) = (1 + exp(-+2u))/2.
ConditionalOfRho::ConditionalOfRho(double n, double c, double sumPlus, double sumMinus)
    : fPower(n - 2 * c - 2),
      fStep(0.5 / std::sqrt(2 * n + 2 * std::abs(c) + 2)),
      fSumPlus(sumPlus),
      fSumMinus(sumMinus) {}

double ConditionalOfRho::LogKernel(double u) const {
  const double growth = std::exp(2 * u);
  return fPower * LogCosh(u) - (fSumPlus / growth + fSumMinus * growth) / 2;
}

// Equal steps over the whole peak converge exponentially for a function as smooth as this.
void ConditionalOfRho::Normalise(double draw) {
  constexpr double kNegligibleLog = -40;
  const double reference = LogKernel(draw);
  double largest = 0;
  double sum = 1;
  for (const double step : {-fStep, fStep}) {
    double value = 0;
    for (int i = 1; value > largest + kNegligibleLog; ++i) {
      value = LogKernel(draw + i * step) - reference;
      largest = std::max(largest, value);
      sum += std::exp(value);
    }
  }
  fLogNormaliser = reference + std::log(sum * fStep);
}

RankPosterior::RankPosterior(std::vector<double> draws, std::vector<ConditionalOfRho> conditionals)
    : fvDraws(std::move(draws)), fvConditionals(std::move(conditionals)) {
  std::sort(fvDraws.begin(), fvDraws.end());
  Moments moments;
  for (const double draw : fvDraws) moments.Add(draw, 1);
  fMean = moments.Mean();
  fVariance = moments.SumOfSquares() / (moments.Count() - 1);
  const auto lnDensity = [this](double x) { return std::log(Density(x)); };
  fMode = FindPeak(lnDensity, fvDraws.front(), fvDraws.back());
}

double RankPosterior::LowerQuantile(double tail) const {
  const double place = tail * static_cast<double>(fvDraws.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, fvDraws.size() - 1);
  return std::lerp(fvDraws[below], fvDraws[above], place - static_cast<double>(below));
}

double RankPosterior::UpperQuantile(double tail) const {
  return LowerQuantile(1 - tail);
}

double RankPosterior::Density(double x) const {
  constexpr double kLast = 1 - std::numeric_limits<double>::epsilon();
  const double u = kSpearmanScale.fInverse(std::clamp(x, -kLast, kLast));
  LogMeanExp mean;
  for (const ConditionalOfRho& conditional : fvConditionals) mean.Add(conditional.LogDensity(u));
  return std::exp(mean.Value() - kSpearmanScale.fLogSlope(u));
}

LatentAnswer InferLatentRanks(const std::vector<WeightedPair>& pairs, const LatentQuestion& question,
                              RandomStream& random, const std::function<bool()>& isCancelled) {
  // Conditional densities kept for the curve; more would not show.
  constexpr long kConditionals = 1000;
  constexpr long kSweepsPerQuestion = 64;
  const long burnIn = std::max(200L, question.fSamples / 10);
  const long thinning = std::max(1L, question.fSamples / kConditionals);
  LatentChain chain = MakeChain(pairs, question.fC);
  std::vector<double> draws;
  std::vector<ConditionalOfRho> conditionals;
  LogMeanExp atNull;
  for (long sweep = -burnIn; sweep < question.fSamples; ++sweep) {
    if (sweep % kSweepsPerQuestion == 0 && isCancelled()) return {};
    chain.Sweep(random);
    if (sweep < 0) continue;
    draws.push_back(kSpearmanScale.fValue(chain.U()));
    ConditionalOfRho conditional = chain.Conditional();
    conditional.Normalise(chain.U());
    atNull.Add(conditional.LogDensity(question.fNullU));
    if (sweep % thinning == 0) conditionals.push_back(conditional);
  }
  return {std::make_shared<RankPosterior>(std::move(draws), std::move(conditionals)), atNull.Value()};
}

}  // namespace BayesComponent
