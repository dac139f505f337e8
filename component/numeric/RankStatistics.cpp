#include "component/numeric/RankStatistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <tuple>

#include "component/numeric/CoMoments.h"

namespace BayesComponent {

namespace {

double PairsAmong(double n) {
  return n * (n - 1) / 2;
}

// Pairs of cases that agree in what `isTied` compares, runs of equal elements standing together.
template <class IsTied>
double TiedPairs(const std::vector<WeightedPair>& pairs, IsTied isTied) {
  double sum = 0;
  for (auto run = pairs.begin(); run != pairs.end();) {
    const auto end =
        std::find_if_not(run, pairs.end(), [&](const WeightedPair& p) { return isTied(*run, p); });
    sum += PairsAmong(std::accumulate(run, end, 0.0, [](double w, const auto& p) { return w + p.fWeight; }));
    run = end;
  }
  return sum;
}

// Sorts by y and returns how many pairs of cases stood in the wrong order: merges from runs of one upwards.
double SortCountingInversions(std::vector<WeightedPair>& pairs) {
  double inversions = 0;
  std::vector<WeightedPair> merged(pairs.size());
  for (std::size_t width = 1; width < pairs.size(); width *= 2) {
    for (std::size_t begin = 0; begin < pairs.size(); begin += 2 * width) {
      const std::size_t middle = std::min(begin + width, pairs.size());
      const std::size_t end = std::min(begin + 2 * width, pairs.size());
      double waiting = 0;
      for (std::size_t i = begin; i < middle; ++i) waiting += pairs[i].fWeight;
      std::size_t left = begin;
      std::size_t right = middle;
      for (std::size_t out = begin; out < end; ++out) {
        if (right == end || (left < middle && pairs[left].fY <= pairs[right].fY)) {
          waiting -= pairs[left].fWeight;
          merged[out] = pairs[left++];
        } else {
          inversions += waiting * pairs[right].fWeight;
          merged[out] = pairs[right++];
        }
      }
    }
    pairs.swap(merged);
  }
  return inversions;
}

}  // namespace

std::vector<double> RelativeRanks(const std::vector<double>& values, const std::vector<double>& weights) {
  std::vector<std::size_t> order(values.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
  const double n = std::accumulate(weights.begin(), weights.end(), 0.0);
  std::vector<double> ranks(values.size());
  double below = 0;
  for (auto run = order.begin(); run != order.end();) {
    const auto end = std::find_if(run, order.end(), [&](std::size_t i) { return values[i] != values[*run]; });
    const double tied =
        std::accumulate(run, end, 0.0, [&](double w, std::size_t i) { return w + weights[i]; });
    for (; run != end; ++run) ranks[*run] = (below + (tied + 1) / 2) / (n + 1);
    below += tied;
  }
  return ranks;
}

double SpearmanRho(const std::vector<WeightedPair>& pairs) {
  std::vector<double> x, y, weights;
  for (const WeightedPair& pair : pairs) {
    x.push_back(pair.fX);
    y.push_back(pair.fY);
    weights.push_back(pair.fWeight);
  }
  const std::vector<double> ranksX = RelativeRanks(x, weights);
  const std::vector<double> ranksY = RelativeRanks(y, weights);
  CoMoments moments;
  for (std::size_t i = 0; i < pairs.size(); ++i) moments.Add(ranksX[i], ranksY[i], weights[i]);
  return moments.HasConstant() ? std::numeric_limits<double>::quiet_NaN() : moments.Correlation();
}

double KendallTauB(std::vector<WeightedPair> pairs) {
  std::sort(pairs.begin(), pairs.end(), [](const WeightedPair& a, const WeightedPair& b) {
    return std::tie(a.fX, a.fY) < std::tie(b.fX, b.fY);
  });
  const auto isSameX = [](const WeightedPair& a, const WeightedPair& b) { return a.fX == b.fX; };
  const auto isSameY = [](const WeightedPair& a, const WeightedPair& b) { return a.fY == b.fY; };
  const auto isSame = [&](const WeightedPair& a, const WeightedPair& b) {
    return isSameX(a, b) && isSameY(a, b);
  };
  const double n =
      std::accumulate(pairs.begin(), pairs.end(), 0.0, [](double w, const auto& p) { return w + p.fWeight; });
  const double tiedX = TiedPairs(pairs, isSameX);
  const double tiedInBoth = TiedPairs(pairs, isSame);
  const double inversions = SortCountingInversions(pairs);
  const double tiedY = TiedPairs(pairs, isSameY);
  const double untiedX = PairsAmong(n) - tiedX;
  const double untiedY = PairsAmong(n) - tiedY;
  // Concordant minus discordant pairs.
  const double score = PairsAmong(n) - tiedX - tiedY + tiedInBoth - 2 * inversions;
  return std::clamp(score / (std::sqrt(untiedX) * std::sqrt(untiedY)), -1.0, 1.0);
}

}  // namespace BayesComponent
