#include "component/Interactions.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <mutex>
#include <numeric>

#include "component/Results.h"
#include "component/Tasks.h"
#include "component/numeric/Moments.h"
#include "component/numeric/RandomStream.h"

namespace BayesComponent {

namespace {

using MCBSN_850::BayesEstimation;

// Draws of a table of up to 2,500 cells would fill gigabytes: kept are the means over rows and columns, and a
// cell's own draws are made again from its own stream whenever they are needed.
class InteractionDraws {
 public:
  InteractionDraws(const ContingencyTable& counts, const ContingencyTable& shapes,
                   const BSNSettings& settings)
      : fPosterior(counts),
        fSeed(settings.GetRandomSeed()),
        fDraws(static_cast<std::size_t>(PosteriorSamplesOf(settings))),
        fvRowMeans(counts.Rows(), Values(fDraws, 0)),
        fvColumnMeans(counts.Columns(), Values(fDraws, 0)),
        fvMeans(fDraws, 0) {
    for (std::size_t i = 0; i < shapes.Cells().size(); ++i) fPosterior.Cells()[i] += shapes.Cells()[i];
  }

  std::size_t Cells() const { return fPosterior.Cells().size(); }
  std::size_t Draws() const { return fDraws; }

  void AddToMeans(std::size_t cell) {
    const auto rows = static_cast<double>(fPosterior.Rows());
    const auto columns = static_cast<double>(fPosterior.Columns());
    const Values logs = LogRates(cell);
    Values& rowMeans = fvRowMeans[cell / fPosterior.Columns()];
    Values& columnMeans = fvColumnMeans[cell % fPosterior.Columns()];
    for (std::size_t t = 0; t < fDraws; ++t) {
      rowMeans[t] += logs[t] / columns;
      columnMeans[t] += logs[t] / rows;
      fvMeans[t] += logs[t] / (rows * columns);
    }
  }

  Values Of(std::size_t cell) const {
    Values values = LogRates(cell);
    const Values& rowMeans = fvRowMeans[cell / fPosterior.Columns()];
    const Values& columnMeans = fvColumnMeans[cell % fPosterior.Columns()];
    for (std::size_t t = 0; t < fDraws; ++t) values[t] += fvMeans[t] - rowMeans[t] - columnMeans[t];
    return values;
  }

 private:
  Values LogRates(std::size_t cell) const {
    RandomStream random(fSeed, cell);
    Values logs(fDraws);
    for (double& x : logs) x = random.LogGamma(fPosterior.Cells()[cell]);
    return logs;
  }

  ContingencyTable fPosterior;
  unsigned long fSeed;
  std::size_t fDraws;
  std::vector<Values> fvRowMeans;
  std::vector<Values> fvColumnMeans;
  Values fvMeans;
};

// The largest rank that any interaction has in each draw, counted from either end.
class ExtremeRanks {
 public:
  explicit ExtremeRanks(std::size_t draws) : fvRanks(draws, 0) {}

  // Returns the values in increasing order. From any thread.
  Values Add(const Values& values) {
    const std::size_t n = values.size();
    std::vector<std::uint32_t> order(n);
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return values[a] < values[b]; });
    Values sorted(n);
    const std::lock_guard<std::mutex> lock(fMutex);
    for (std::size_t i = 0; i < n; ++i) {
      sorted[i] = values[order[i]];
      fvRanks[order[i]] = std::max(fvRanks[order[i]], std::max(i + 1, n - i));
    }
    return sorted;
  }

  // The rank, from 1, that the given share of the draws stays within.
  std::size_t Within(double share) const {
    std::vector<std::size_t> ranks = fvRanks;
    const auto n = static_cast<double>(ranks.size());
    // Less a rounding error of the share.
    const double place = std::max(1.0, std::ceil(share * n - 1e-6));
    const auto nth = ranks.begin() + static_cast<std::ptrdiff_t>(place) - 1;
    std::nth_element(ranks.begin(), nth, ranks.end());
    return *nth;
  }

 private:
  std::mutex fMutex;
  std::vector<std::size_t> fvRanks;
};

double NthOf(Values& values, std::size_t n) {
  const auto nth = values.begin() + static_cast<std::ptrdiff_t>(n);
  std::nth_element(values.begin(), nth, values.end());
  return *nth;
}

BayesEstimation Summary(const Values& sorted) {
  Moments moments;
  for (const double value : sorted) moments.Add(value, 1);
  const std::size_t half = sorted.size() / 2;
  BayesEstimation estimation;
  estimation.fMedian = Shown(sorted.size() % 2 == 1 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2);
  estimation.fMean = Shown(moments.Mean());
  estimation.fVariance = Shown(moments.SumOfSquares() / (moments.Count() - 1));
  return estimation;
}

}  // namespace

std::vector<BayesEstimation> SimulateInteractions(const ContingencyTable& counts,
                                                  const ContingencyTable& shapes,
                                                  const BSNSettings& settings) {
  const Cancellation isCancelled(settings);
  InteractionDraws draws(counts, shapes, settings);
  std::vector<BayesEstimation> estimations(draws.Cells());
  for (std::size_t cell = 0; cell < draws.Cells() && !isCancelled(); ++cell) draws.AddToMeans(cell);
  ExtremeRanks extremes(draws.Draws());
  RunTasks(settings, draws.Cells(), [&](std::size_t cell) {
    if (!isCancelled()) estimations[cell] = Summary(extremes.Add(draws.Of(cell)));
  });
  const std::size_t last = extremes.Within(settings.GetCILevel() / 100);
  RunTasks(settings, draws.Cells(), [&](std::size_t cell) {
    if (isCancelled()) return;
    Values values = draws.Of(cell);
    estimations[cell].fLower = Shown(NthOf(values, draws.Draws() - last));
    estimations[cell].fUpper = Shown(NthOf(values, last - 1));
  });
  return estimations;
}

}  // namespace BayesComponent
