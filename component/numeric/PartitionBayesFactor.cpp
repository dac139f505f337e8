#include "component/numeric/PartitionBayesFactor.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "component/numeric/DirichletMarginal.h"
#include "component/numeric/LogMeanExp.h"
#include "component/numeric/StableLog.h"

namespace BayesComponent {

namespace {

constexpr std::size_t kMostRowsForRecursion = 15;

// Evidence of clusters, relative to the likelihood at the column proportions of the whole table.
class ClusterEvidence {
 public:
  ClusterEvidence(const ContingencyTable& counts, const PartitionPrior& prior)
      : fPrior(prior), fvProportions(counts.ColumnTotals()) {
    const double total = counts.Total();
    for (double& proportion : fvProportions) proportion /= total;
  }

  // ln of the evidence of the summed counts of a cluster.
  double LogOf(const std::vector<double>& counts) const {
    const double total = SumOf(counts);
    double sum = LogDirichletMarginal(counts, fPrior.fvShapes);
    for (std::size_t j = 0; j < counts.size(); ++j) sum += Deviance(counts[j], total * fvProportions[j]);
    return sum;
  }

 private:
  const PartitionPrior& fPrior;
  std::vector<double> fvProportions;
};

std::vector<double> Added(std::vector<double> sums, const std::vector<double>& row) {
  std::transform(sums.begin(), sums.end(), row.begin(), sums.begin(), std::plus<>());
  return sums;
}

std::vector<double> Removed(std::vector<double> sums, const std::vector<double>& row) {
  std::transform(sums.begin(), sums.end(), row.begin(), sums.begin(), std::minus<>());
  return sums;
}

// ln of the prior probability that all rows are in one cluster.
double LogProbabilityOfOne(double rows, double precision) {
  double sum = 0;
  for (double i = 1; i < rows; ++i) sum -= std::log1p(precision / i);
  return sum;
}

// ln of x (x + 1) ... (x + n - 1), term by term: logarithms of gamma functions of a large x cancel.
double LogRisingFactorial(double x, double n) {
  double sum = 0;
  for (double i = 0; i < n; ++i) sum += std::log(x + i);
  return sum;
}

// ln of 1 - exp(x) for x < 0.
double LogComplement(double x) {
  return std::log(-std::expm1(x));
}

// The restaurant process with rows in random order, conditional on a second cluster.
class Imputation {
 public:
  Imputation(const ContingencyTable& counts, const PartitionPrior& prior)
      : fEvidence(counts, prior), fPrecision(prior.fPrecision), fTotals(counts.ColumnTotals()) {
    for (std::size_t i = 0; i < counts.Rows(); ++i) {
      fvRows.push_back(counts.Row(i));
      fvRowEvidence.push_back(fEvidence.LogOf(fvRows.back()));
    }
  }

  // ln of the importance weight of one draw.
  double DrawLogWeight(RandomStream& random) {
    std::vector<std::size_t> order = RandomOrder(random);
    double weight = OpenSecond(order, random);
    for (std::size_t i = fPlaced; i < order.size(); ++i)
      weight += Place(order[i], static_cast<double>(i), random);
    return weight;
  }

 private:
  struct Cluster {
    std::vector<double> fvCounts;
    double fSize;
    double fLogEvidence;
  };

  std::vector<std::size_t> RandomOrder(RandomStream& random) const {
    std::vector<std::size_t> order(fvRows.size());
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t i = order.size() - 1; i > 0; --i) {
      std::swap(order[i], order[static_cast<std::size_t>(random.Uniform() * static_cast<double>(i + 1))]);
    }
    return order;
  }

  Cluster MakeCluster(const std::vector<double>& counts, double size) const {
    return {counts, size, fEvidence.LogOf(counts)};
  }

  // The row that leaves the first cluster is drawn half from the prior and half as if it were the only one
  // that differs; the weight makes up for the choice.
  double OpenSecond(const std::vector<std::size_t>& order, RandomStream& random) {
    std::vector<double> target, openings, lookahead;
    std::vector<double> first = fvRows[order[0]];
    double lnTogether = 0;
    for (std::size_t j = 1; j < order.size(); ++j) {
      const auto placed = static_cast<double>(j);
      const double lnRow = fvRowEvidence[order[j]];
      openings.push_back(lnTogether + std::log(fPrecision / (fPrecision + placed)));
      target.push_back(openings.back() + fEvidence.LogOf(first) + lnRow);
      lookahead.push_back(openings.back() + fEvidence.LogOf(Removed(fTotals, fvRows[order[j]])) + lnRow);
      lnTogether += std::log(placed / (fPrecision + placed));
      first = Added(first, fvRows[order[j]]);
    }
    const std::vector<double> proposal = HalfAndHalf(openings, lookahead);
    const std::size_t chosen = Draw(proposal, random);
    std::vector<double> together = fvRows[order[0]];
    for (std::size_t i = 1; i <= chosen; ++i) together = Added(together, fvRows[order[i]]);
    fvClusters = {MakeCluster(together, static_cast<double>(chosen + 1)),
                  MakeCluster(fvRows[order[chosen + 1]], 1)};
    fPlaced = chosen + 2;
    return target[chosen] - std::log(proposal[chosen]);
  }

  // One more row joins a cluster or opens one; returns ln of its predictive probability.
  double Place(std::size_t row, double placed, RandomStream& random) {
    std::vector<Cluster> candidates;
    std::vector<double> logs;
    for (const Cluster& cluster : fvClusters) {
      candidates.push_back(MakeCluster(Added(cluster.fvCounts, fvRows[row]), cluster.fSize + 1));
      logs.push_back(std::log(cluster.fSize) + candidates.back().fLogEvidence - cluster.fLogEvidence);
    }
    candidates.push_back({fvRows[row], 1, fvRowEvidence[row]});
    logs.push_back(std::log(fPrecision) + fvRowEvidence[row]);
    const double largest = *std::max_element(logs.begin(), logs.end());
    const std::vector<double> probabilities = Normalised(logs);
    const std::size_t chosen = Draw(probabilities, random);
    if (chosen == fvClusters.size()) fvClusters.emplace_back();
    fvClusters[chosen] = candidates[chosen];
    const double lnSum = largest - std::log(*std::max_element(probabilities.begin(), probabilities.end()));
    return lnSum - std::log(fPrecision + placed);
  }

  static std::vector<double> Normalised(std::vector<double> logs) {
    const double largest = *std::max_element(logs.begin(), logs.end());
    for (double& x : logs) x = std::exp(x - largest);
    const double sum = SumOf(logs);
    for (double& x : logs) x /= sum;
    return logs;
  }

  static std::vector<double> HalfAndHalf(const std::vector<double>& logs, const std::vector<double>& others) {
    std::vector<double> mean = Added(Normalised(logs), Normalised(others));
    for (double& x : mean) x /= 2;
    return mean;
  }

  static std::size_t Draw(const std::vector<double>& probabilities, RandomStream& random) {
    double rest = random.Uniform();
    std::size_t i = 0;
    for (; i + 1 < probabilities.size() && rest > probabilities[i]; ++i) rest -= probabilities[i];
    return i;
  }

  ClusterEvidence fEvidence;
  double fPrecision;
  std::vector<double> fTotals;
  std::vector<std::vector<double>> fvRows;
  std::vector<double> fvRowEvidence;
  std::vector<Cluster> fvClusters;
  std::size_t fPlaced = 0;
};

}  // namespace

// With Z(S) the sum over the partitions of a set S of rows of the product of lambda (|B| - 1)! m(B) over its
// clusters B: Z(S) = sum over the B that hold the first row of S of lambda (|B| - 1)! m(B) Z(S \ B).
double LogEvidenceOfPartitions(const ContingencyTable& counts, const PartitionPrior& prior) {
  const std::size_t rows = counts.Rows();
  const std::uint32_t all = (std::uint32_t{1} << rows) - 1;
  const ClusterEvidence evidence(counts, prior);
  std::vector<double> lnCluster(all + 1), lnSum(all + 1, 0);
  for (std::uint32_t set = 1; set <= all; ++set) {
    std::vector<double> sums(counts.Columns(), 0);
    double size = 0;
    for (std::size_t i = 0; i < rows; ++i) {
      if (!(set >> i & 1)) continue;
      sums = Added(sums, counts.Row(i));
      ++size;
    }
    lnCluster[set] = std::log(prior.fPrecision) + std::lgamma(size) + evidence.LogOf(sums);
  }
  for (std::uint32_t set = 1; set <= all; ++set) {
    const std::uint32_t first = set & (~set + 1);
    const std::uint32_t others = set ^ first;
    LogMeanExp sum;
    // All subsets of the other rows; of the whole table only those that leave a second cluster.
    for (std::uint32_t part = others;; part = (part - 1) & others) {
      const std::uint32_t cluster = first | part;
      if (cluster != all) sum.Add(lnCluster[cluster] + lnSum[set ^ cluster]);
      if (part == 0) break;
    }
    lnSum[set] = sum.Value() + std::log(sum.Count());
  }
  const auto n = static_cast<double>(rows);
  return lnSum[all] - LogRisingFactorial(prior.fPrecision, n) -
         LogComplement(LogProbabilityOfOne(n, prior.fPrecision));
}

LogIntegral LogEvidenceOfPartitionsByDraws(const ContingencyTable& counts, const PartitionPrior& prior,
                                           const DrawLimits& limits, RandomStream& random) {
  Imputation imputation(counts, prior);
  LogIntegral mean = LogMeanOfDraws([&] { return imputation.DrawLogWeight(random); }, limits);
  const double lnOne = LogProbabilityOfOne(static_cast<double>(counts.Rows()), prior.fPrecision);
  mean.fLogValue -= LogComplement(lnOne);
  return mean;
}

LogIntegral LogBF01Partition(const ContingencyTable& counts, const PartitionPrior& prior,
                             const DrawLimits& limits, RandomStream& random) {
  const LogIntegral evidence = counts.Rows() <= kMostRowsForRecursion
                                   ? LogIntegral{LogEvidenceOfPartitions(counts, prior), true}
                                   : LogEvidenceOfPartitionsByDraws(counts, prior, limits, random);
  return {ClusterEvidence(counts, prior).LogOf(counts.ColumnTotals()) - evidence.fLogValue,
          evidence.fConverged};
}

}  // namespace BayesComponent
