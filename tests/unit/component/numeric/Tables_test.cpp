// The functions behind the log-linear analysis, against textbook forms, enumeration and simulation.
#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

#include "component/numeric/IndependenceTests.h"
#include "component/numeric/LogMeanExp.h"
#include "component/numeric/PartitionBayesFactor.h"
#include "component/numeric/TableBayesFactor.h"
#include "component/numeric/TrainingSample.h"
#include "gtest/gtest.h"

namespace {

using namespace BayesComponent;

ContingencyTable TableOf(const std::vector<std::vector<double>>& rows) {
  ContingencyTable table(rows.size(), rows.at(0).size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < rows[i].size(); ++j) table.At(i, j) = rows[i][j];
  }
  return table;
}

// Counts up to `largest` in every cell.
ContingencyTable RandomTable(std::size_t rows, std::size_t columns, double largest, RandomStream& random) {
  ContingencyTable table(rows, columns);
  for (double& cell : table.Cells()) cell = std::floor((largest + 1) * random.Uniform());
  return table;
}

// ln of the Dirichlet normaliser, as in the textbook.
double LnD(const std::vector<double>& values) {
  double sum = -std::lgamma(SumOf(values));
  for (const double value : values) sum += std::lgamma(value);
  return sum;
}

std::vector<double> Sum(std::vector<double> a, const std::vector<double>& b) {
  std::transform(a.begin(), a.end(), b.begin(), a.begin(), std::plus<>());
  return a;
}

double LnEvidence(const std::vector<double>& counts, const std::vector<double>& shapes) {
  return LnD(Sum(counts, shapes)) - LnD(shapes);
}

std::vector<double> Less(std::vector<double> values, double what) {
  for (double& value : values) value -= what;
  return values;
}

double TextbookConjugate(const ContingencyTable& n, const TablePrior& prior, TableDesign design) {
  const ContingencyTable& a = prior.fShapes;
  const double c = static_cast<double>(n.Columns()) - 1;
  const double r = static_cast<double>(n.Rows()) - 1;
  const double columns = LnEvidence(n.ColumnTotals(), Less(a.ColumnTotals(), r));
  const double rows = LnEvidence(n.RowTotals(), Less(a.RowTotals(), c));
  if (design == TableDesign::TotalFixed) return rows + columns - LnEvidence(n.Cells(), a.Cells());
  if (design == TableDesign::RowsFixed) {
    double association = 0;
    for (std::size_t i = 0; i < n.Rows(); ++i) association += LnEvidence(n.Row(i), a.Row(i));
    return columns - association;
  }
  const double b = prior.fRate;
  const double total = a.Total() - r * c;
  double association = a.Total() * std::log(b) - (a.Total() + n.Total()) * std::log1p(b);
  for (std::size_t i = 0; i < n.Cells().size(); ++i) {
    association += std::lgamma(n.Cells()[i] + a.Cells()[i]) - std::lgamma(a.Cells()[i]);
  }
  const double independence = total * std::log(b) - std::lgamma(total) + std::lgamma(total + n.Total()) -
                              (total + n.Total()) * std::log1p(b) + rows + columns;
  return independence - association;
}

const DrawLimits kLimits{2000, 100000};

constexpr TableDesign kDesigns[] = {TableDesign::Poisson, TableDesign::TotalFixed, TableDesign::RowsFixed};

TEST(TableBayesFactor, IsTheTextbookRatio) {
  RandomStream random(4);
  for (int i = 0; i < 30; ++i) {
    const ContingencyTable counts = RandomTable(2 + i % 3u, 2 + i % 4u, i % 2 ? 4 : 300, random);
    TablePrior prior{ContingencyTable(counts.Rows(), counts.Columns()), 0.1 + random.Uniform()};
    for (double& shape : prior.fShapes.Cells()) shape = 1 + 3 * random.Uniform();
    for (const TableDesign design : kDesigns) {
      const double expected = TextbookConjugate(counts, prior, design);
      EXPECT_NEAR(LogBF01Conjugate(counts, prior, design), expected, 1e-9 * (1 + std::abs(expected)));
    }
  }
}

// With a single lambda the mixture has the margins' sums for shapes.
TEST(TableBayesFactor, MixtureOfOneIsItsComponent) {
  const ContingencyTable n = TableOf({{4, 0, 7}, {2, 9, 1}});
  const TablePrior prior{TableOf({{1, 0.5, 2}, {0.3, 1, 1}}), 0.7};
  const double lambda = 1.5;
  ContingencyTable a = prior.fShapes;
  for (double& shape : a.Cells()) shape *= lambda;
  const double margins =
      LnEvidence(n.RowTotals(), a.RowTotals()) + LnEvidence(n.ColumnTotals(), a.ColumnTotals());
  EXPECT_NEAR(LogBF01Mixture(n, prior, TableDesign::TotalFixed, {lambda}),
              margins - LnEvidence(n.Cells(), a.Cells()), 1e-10);
  // The total of a Poisson design has the same evidence under both models.
  EXPECT_NEAR(LogBF01Mixture(n, prior, TableDesign::Poisson, {lambda}),
              margins - LnEvidence(n.Cells(), a.Cells()), 1e-10);
}

TEST(TableBayesFactor, MixturePoissonWeighsLambdasByTheirTotals) {
  const ContingencyTable n = TableOf({{4, 0, 7}, {2, 9, 1}});
  const TablePrior prior{ContingencyTable(2, 3, 1), 0.2};
  double independence = 0, association = 0;
  for (const double lambda : {0.5, 4.0}) {
    ContingencyTable a = prior.fShapes;
    for (double& shape : a.Cells()) shape *= lambda;
    const double total = std::exp(std::lgamma(a.Total() + 23) - std::lgamma(a.Total()) +
                                  a.Total() * std::log(0.2 / 1.2) - 23 * std::log(12.0));
    independence += total * std::exp(LnEvidence(n.RowTotals(), a.RowTotals()) +
                                     LnEvidence(n.ColumnTotals(), a.ColumnTotals()));
    association += total * std::exp(LnEvidence(n.Cells(), a.Cells()));
  }
  EXPECT_NEAR(LogBF01Mixture(n, prior, TableDesign::Poisson, {0.5, 4.0}),
              std::log(independence / association), 1e-9);
}

TEST(TableBayesFactor, KnowsWhichMarginsADesignNeeds) {
  const ContingencyTable shapes = TableOf({{0.5, 0.5, 0.5}, {5, 5, 5}});
  EXPECT_TRUE(HasIndependencePrior(shapes, TableDesign::RowsFixed));
  EXPECT_FALSE(HasIndependencePrior(shapes, TableDesign::TotalFixed));
  EXPECT_FALSE(HasIndependencePrior(shapes, TableDesign::Poisson));
  EXPECT_FALSE(HasIndependencePrior(shapes.Transposed(), TableDesign::RowsFixed));
}

// Calls `visit` with every table of these dimensions and this sum, or with these row sums.
void VisitTables(ContingencyTable& table, std::size_t cell, double rest, TableDesign design,
                 const std::function<void()>& visit) {
  const std::size_t columns = table.Columns();
  const bool isRowDone = design == TableDesign::RowsFixed && cell % columns == 0 && cell > 0;
  if (isRowDone) {
    if (rest > 0) return;
    rest = static_cast<double>(columns);
  }
  if (cell == table.Cells().size()) {
    if (isRowDone || rest == 0) visit();
    return;
  }
  for (double x = 0; x <= rest; ++x) {
    table.Cells()[cell] = x;
    VisitTables(table, cell + 1, rest - x, design, visit);
  }
}

// ln of the probability of a training table under independence with uniform margins.
double LnTraining(const ContingencyTable& x, TableDesign design) {
  const auto uniform = [](std::size_t size) { return std::vector<double>(size, 1.0); };
  double sum = LnEvidence(x.ColumnTotals(), uniform(x.Columns()));
  if (design == TableDesign::TotalFixed) {
    sum += LnEvidence(x.RowTotals(), uniform(x.Rows())) + std::lgamma(x.Total() + 1);
  } else {
    for (const double rowTotal : x.RowTotals()) sum += std::lgamma(rowTotal + 1);
  }
  for (const double cell : x.Cells()) sum -= std::lgamma(cell + 1);
  return sum;
}

// ln of the evidence of the counts after the training table, over that without it.
double LnWeight(const ContingencyTable& n, const ContingencyTable& x, TableDesign design) {
  const auto ratio = [](const std::vector<double>& counts, const std::vector<double>& training) {
    const std::vector<double> uniform(counts.size(), 1.0);
    return LnEvidence(counts, Sum(training, uniform)) - LnEvidence(counts, uniform);
  };
  if (design == TableDesign::TotalFixed) return ratio(n.Cells(), x.Cells());
  double sum = 0;
  for (std::size_t i = 0; i < n.Rows(); ++i) sum += ratio(n.Row(i), x.Row(i));
  return sum;
}

TEST(TrainingSample, RecursionIsTheSumOverAllTables) {
  for (const auto& counts :
       {TableOf({{5, 1}, {2, 7}}), TableOf({{9, 0, 1}, {2, 3, 4}}), TableOf({{8, 2}, {1, 1}, {0, 6}})}) {
    for (const TableDesign design : {TableDesign::TotalFixed, TableDesign::RowsFixed}) {
      ContingencyTable training(counts.Rows(), counts.Columns());
      double probability = 0, mean = 0;
      const double size =
          static_cast<double>(design == TableDesign::TotalFixed ? counts.Cells().size() : counts.Columns());
      VisitTables(training, 0, size, design, [&] {
        const double p = std::exp(LnTraining(training, design));
        probability += p;
        mean += p * std::exp(LnWeight(counts, training, design));
      });
      ASSERT_NEAR(probability, 1, 1e-12);
      EXPECT_NEAR(LogTrainingMean(counts, design), std::log(mean), 1e-11);
    }
  }
}

// Four standard errors of 0.01 at most.
TEST(TrainingSample, DrawsAgreeWithTheRecursion) {
  RandomStream random(12);
  const ContingencyTable tables[] = {TableOf({{5, 1}, {2, 7}}),
                                     TableOf({{90, 0, 1}, {2, 3, 400}}),
                                     TableOf({{0, 12, 3}, {50, 2, 2}, {1, 1, 9}}),
                                     RandomTable(4, 4, 200, random),
                                     TableOf({{1000000, 2000000}, {1003000, 1999000}}),
                                     RandomTable(6, 3, 5, random)};
  for (const ContingencyTable& counts : tables) {
    for (const TableDesign design : {TableDesign::TotalFixed, TableDesign::RowsFixed}) {
      ASSERT_TRUE(IsTrainingMeanFeasible(counts, design));
      const LogIntegral drawn = LogTrainingMeanByDraws(counts, design, kLimits, random);
      EXPECT_TRUE(drawn.fConverged);
      EXPECT_NEAR(drawn.fLogValue, LogTrainingMean(counts, design), 0.04)
          << counts.Rows() << counts.Columns();
    }
  }
}

// Beyond the recursion: training tables drawn one by one, whose weights vary much more.
TEST(TrainingSample, DrawsAgreeWithPlainSimulationOfALargerTable) {
  RandomStream random(21);
  const ContingencyTable counts = RandomTable(6, 6, 4, random);
  EXPECT_FALSE(IsTrainingMeanFeasible(counts, TableDesign::TotalFixed));
  LogMeanExp plain;
  for (int i = 0; i < 200000; ++i) {
    std::vector<double> probabilities[2];
    for (auto& margin : probabilities) {
      for (int k = 0; k < 6; ++k) margin.push_back(-std::log(random.Uniform()));
      const double sum = SumOf(margin);
      for (double& p : margin) p /= sum;
    }
    const auto draw = [&](const std::vector<double>& margin) {
      double rest = random.Uniform();
      std::size_t k = 0;
      for (; k + 1 < margin.size() && rest > margin[k]; ++k) rest -= margin[k];
      return k;
    };
    ContingencyTable training(6, 6);
    for (int k = 0; k < 36; ++k) {
      const std::size_t row = draw(probabilities[0]);
      ++training.At(row, draw(probabilities[1]));
    }
    plain.Add(LnWeight(counts, training, TableDesign::TotalFixed));
  }
  const LogIntegral drawn = LogTrainingMeanByDraws(counts, TableDesign::TotalFixed, kLimits, random);
  EXPECT_TRUE(drawn.fConverged);
  EXPECT_NEAR(drawn.fLogValue, plain.Value(), 4 * std::hypot(0.01, plain.StandardError()));
  EXPECT_LT(plain.StandardError(), 0.05);
}

// Every partition of the rows from `row` on, as cluster numbers.
void VisitPartitions(std::vector<int>& clusters, std::size_t row, int nClusters,
                     const std::function<void(int)>& visit) {
  if (row == clusters.size()) return visit(nClusters);
  for (int k = 0; k <= nClusters; ++k) {
    clusters[row] = k;
    VisitPartitions(clusters, row + 1, std::max(nClusters, k + 1), visit);
  }
}

double DirectPartitionBF01(const ContingencyTable& counts, const PartitionPrior& prior) {
  std::vector<int> clusters(counts.Rows());
  double one = 0, others = 0, probabilityOfOthers = 0;
  VisitPartitions(clusters, 0, 0, [&](int nClusters) {
    // Up to a constant, which cancels in the end.
    double lnPrior = nClusters * std::log(prior.fPrecision);
    double lnEvidence = 0;
    for (int k = 0; k < nClusters; ++k) {
      std::vector<double> sums(counts.Columns(), 0);
      double size = 0;
      for (std::size_t i = 0; i < clusters.size(); ++i) {
        if (clusters[i] != k) continue;
        sums = Sum(sums, counts.Row(i));
        ++size;
      }
      lnPrior += std::lgamma(size);
      lnEvidence += LnEvidence(sums, prior.fvShapes);
    }
    if (nClusters == 1) one = lnEvidence;
    if (nClusters > 1) others += std::exp(lnPrior + lnEvidence);
    if (nClusters > 1) probabilityOfOthers += std::exp(lnPrior);
  });
  return one - std::log(others / probabilityOfOthers);
}

TEST(PartitionBayesFactor, IsTheSumOverAllPartitions) {
  RandomStream random(5);
  for (const std::size_t rows : {2u, 3u, 6u}) {
    const ContingencyTable counts = RandomTable(rows, 3, 9, random);
    for (const double precision : {1e-9, 0.8, 1e8, 1e16}) {
      const PartitionPrior prior{precision, {1, 0.5, 2}};
      EXPECT_NEAR(LogBF01Partition(counts, prior, kLimits, random).fLogValue,
                  DirectPartitionBF01(counts, prior), 1e-10);
    }
  }
}

TEST(PartitionBayesFactor, DrawsAgreeWithTheRecursion) {
  RandomStream random(6);
  ContingencyTable equal(9, 2), outlier(9, 2);
  for (std::size_t i = 0; i < 9; ++i) {
    equal.At(i, 0) = outlier.At(i, 0) = 20;
    equal.At(i, 1) = outlier.At(i, 1) = 30;
  }
  outlier.At(4, 0) = 90;
  const PartitionPrior prior{1.3, {1, 1}};
  for (const ContingencyTable& counts : {equal, outlier, RandomTable(8, 2, 40, random)}) {
    const LogIntegral drawn = LogEvidenceOfPartitionsByDraws(counts, prior, kLimits, random);
    EXPECT_TRUE(drawn.fConverged);
    EXPECT_NEAR(drawn.fLogValue, LogEvidenceOfPartitions(counts, prior), 0.04);
  }
}

// Sixteen rows are beyond the recursion that the Bayes factor uses, not beyond the recursion itself.
TEST(PartitionBayesFactor, ChangesMethodWithoutAStep) {
  RandomStream random(7);
  const ContingencyTable counts = RandomTable(16, 2, 6, random);
  const PartitionPrior prior{1, {1, 1}};
  const LogIntegral sampled = LogBF01Partition(counts, prior, kLimits, random);
  // The pooled evidence relative to its own proportions, as the evidence of the partitions is.
  double pooled = LnEvidence(counts.ColumnTotals(), prior.fvShapes);
  for (const double total : counts.ColumnTotals()) pooled -= total * std::log(total / counts.Total());
  EXPECT_NEAR(sampled.fLogValue, pooled - LogEvidenceOfPartitions(counts, prior), 0.04);
}

double LnChoose(double n, double k) {
  return std::lgamma(n + 1) - std::lgamma(k + 1) - std::lgamma(n - k + 1);
}

FisherSignificance DirectFisher(const ContingencyTable& counts) {
  const double row = counts.RowTotals()[0], column = counts.ColumnTotals()[0], total = counts.Total();
  const auto probability = [&](double x) {
    return std::exp(LnChoose(column, x) + LnChoose(total - column, row - x) - LnChoose(total, row));
  };
  const double observed = probability(counts.At(0, 0));
  double two = 0, below = 0, above = 0;
  for (double x = std::max(0.0, row + column - total); x <= std::min(row, column); ++x) {
    const double p = probability(x);
    if (p <= observed * (1 + 1e-7)) two += p;
    if (x <= counts.At(0, 0)) below += p;
    if (x >= counts.At(0, 0)) above += p;
  }
  return {two, std::min(below, above)};
}

TEST(IndependenceTests, FisherSumsTheTablesThatAreNoMoreProbable) {
  RandomStream random(8);
  for (int i = 0; i < 300; ++i) {
    const ContingencyTable counts = RandomTable(2, 2, i % 3 == 0 ? 3 : 40, random);
    if (*std::min_element(counts.Cells().begin(), counts.Cells().end()) == 0 && i % 3 != 0) continue;
    const auto isEmpty = [](double total) { return total == 0; };
    const std::vector<double> rows = counts.RowTotals(), columns = counts.ColumnTotals();
    if (std::any_of(rows.begin(), rows.end(), isEmpty) ||
        std::any_of(columns.begin(), columns.end(), isEmpty))
      continue;
    const FisherSignificance fisher = FisherExactTest(counts);
    const FisherSignificance direct = DirectFisher(counts);
    EXPECT_NEAR(fisher.fTwoSided, direct.fTwoSided, 1e-11);
    EXPECT_NEAR(fisher.fOneSided, direct.fOneSided, 1e-11);
  }
}

// In large tables it approaches the corrected chi-square, two-sided.
TEST(IndependenceTests, FisherTakesABillionCases) {
  const ContingencyTable counts = TableOf({{250000000, 250040000}, {250030000, 250000000}});
  const double asymptotic = ChiSquareSignificance(ContinuityCorrectedChiSquare(counts), 1);
  EXPECT_NEAR(FisherExactTest(counts).fTwoSided / asymptotic, 1, 1e-3);
  EXPECT_EQ(FisherExactTest(TableOf({{1e6, 0}, {0, 1e6}})).fTwoSided, 0);
}

TEST(IndependenceTests, CorrectionStopsAtHalfACase) {
  EXPECT_EQ(ContinuityCorrectedChiSquare(TableOf({{5, 5}, {5, 6}})), 0);
  EXPECT_GT(PearsonChiSquare(TableOf({{5, 5}, {5, 6}})), 0);
}

TEST(DrawnMean, StopsWhenPreciseExhaustedOrCancelled) {
  RandomStream random(1);
  int draws = 0;
  const auto draw = [&] {
    ++draws;
    return random.Normal();
  };
  const LogIntegral precise = LogMeanOfDraws(draw, {100, 1e6});
  EXPECT_TRUE(precise.fConverged);
  EXPECT_NEAR(precise.fLogValue, 0.5, 0.04);
  // The variance of a lognormal variable over its squared mean is e - 1.
  EXPECT_NEAR(draws, (std::exp(1.0) - 1) * 1e4, 4000);
  draws = 0;
  EXPECT_FALSE(LogMeanOfDraws(draw, {100, 200}).fConverged);
  EXPECT_EQ(draws, 200);
  draws = 0;
  LogMeanOfDraws(draw, {100, 200, 0, [&] { return draws == 7; }});
  EXPECT_EQ(draws, 7);
}

}  // namespace
