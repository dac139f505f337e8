#include "component/numeric/TableBayesFactor.h"

#include <algorithm>
#include <cmath>

#include "component/numeric/DirichletMarginal.h"
#include "component/numeric/LogMeanExp.h"

namespace BayesComponent {

namespace {

// Shapes of the margins under independence, and of the total of a Poisson design.
struct IndependencePrior {
  std::vector<double> fvRows;
  std::vector<double> fvColumns;
  double fTotal;
};

std::vector<double> LessEach(std::vector<double> values, double what) {
  for (double& value : values) value -= what;
  return values;
}

// Gunel and Dickey's: independence is a section through the prior of association.
IndependencePrior SectionOf(const ContingencyTable& shapes) {
  const auto rows = static_cast<double>(shapes.Rows());
  const auto columns = static_cast<double>(shapes.Columns());
  return {LessEach(shapes.RowTotals(), columns - 1), LessEach(shapes.ColumnTotals(), rows - 1),
          shapes.Total() - (rows - 1) * (columns - 1)};
}

IndependencePrior MarginsOf(const ContingencyTable& shapes) {
  return {shapes.RowTotals(), shapes.ColumnTotals(), shapes.Total()};
}

// All evidence is relative to the likelihood at the proportions that independence expects; of a Poisson
// design, a factor that both models share is left out.
double LogRateFactor(double shape, double rate) {
  return -shape * std::log1p(1 / rate);
}

double LogIndependence(const ContingencyTable& counts, const IndependencePrior& prior, double rate,
                       TableDesign design) {
  double sum = LogDirichletMarginal(counts.ColumnTotals(), prior.fvColumns);
  if (design != TableDesign::RowsFixed) sum += LogDirichletMarginal(counts.RowTotals(), prior.fvRows);
  if (design == TableDesign::Poisson) {
    sum += LogGammaMarginal(counts.Total(), prior.fTotal) + LogRateFactor(prior.fTotal, rate);
  }
  return sum;
}

double LogAssociation(const ContingencyTable& counts, const ContingencyTable& shapes, double rate,
                      TableDesign design) {
  double sum = LogLikelihoodRatio(counts);
  if (design == TableDesign::TotalFixed) return sum + LogDirichletMarginal(counts.Cells(), shapes.Cells());
  if (design == TableDesign::RowsFixed) {
    for (std::size_t i = 0; i < counts.Rows(); ++i) sum += LogDirichletMarginal(counts.Row(i), shapes.Row(i));
    return sum;
  }
  for (std::size_t i = 0; i < counts.Cells().size(); ++i) {
    sum += LogGammaMarginal(counts.Cells()[i], shapes.Cells()[i]);
  }
  return sum + LogRateFactor(shapes.Total(), rate);
}

ContingencyTable Scaled(ContingencyTable table, double factor) {
  for (double& cell : table.Cells()) cell *= factor;
  return table;
}

bool AreAllPositive(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double value) { return value > 0; });
}

}  // namespace

bool HasIndependencePrior(const ContingencyTable& shapes, TableDesign design) {
  const IndependencePrior prior = SectionOf(shapes);
  return AreAllPositive(prior.fvColumns) &&
         (design == TableDesign::RowsFixed || AreAllPositive(prior.fvRows));
}

double LogBF01Conjugate(const ContingencyTable& counts, const TablePrior& prior, TableDesign design) {
  return LogIndependence(counts, SectionOf(prior.fShapes), prior.fRate, design) -
         LogAssociation(counts, prior.fShapes, prior.fRate, design);
}

double LogBF01Mixture(const ContingencyTable& counts, const TablePrior& prior, TableDesign design,
                      const std::vector<double>& lambdas) {
  LogMeanExp independence;
  LogMeanExp association;
  for (const double lambda : lambdas) {
    const ContingencyTable shapes = Scaled(prior.fShapes, lambda);
    independence.Add(LogIndependence(counts, MarginsOf(shapes), prior.fRate, design));
    association.Add(LogAssociation(counts, shapes, prior.fRate, design));
  }
  return independence.Value() - association.Value();
}

}  // namespace BayesComponent
