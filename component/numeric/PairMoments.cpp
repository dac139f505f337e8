#include "component/numeric/PairMoments.h"

#include <cmath>

namespace BayesComponent {

namespace {

constexpr Eigen::Index kBlockCases = 256;

}  // namespace

PairMoments::PairMoments(std::size_t variables, std::vector<std::pair<int, int>> pairs)
    : fvPairs(std::move(pairs)), fvMoments(fvPairs.size()), fvParts(variables), fWeights(kBlockCases) {
  const auto columns = static_cast<Eigen::Index>(variables);
  for (Eigen::MatrixXd* matrix : {&fValues, &fDistances, &fWeightedDistances}) {
    matrix->resize(kBlockCases, columns);
  }
}

void PairMoments::Add(const std::vector<double>& values, double weight) {
  fWeights[fCases] = weight;
  fValues.row(fCases) = Eigen::Map<const Eigen::RowVectorXd>(values.data(), fValues.cols());
  if (++fCases == kBlockCases) Close();
}

void PairMoments::Close() {
  if (fCases == 0) return;
  const double count = fWeights.head(fCases).sum();
  for (std::size_t i = 0; i < fvParts.size(); ++i) fvParts[i] = Centre(static_cast<Eigen::Index>(i));
  for (std::size_t i = 0; i < fvPairs.size(); ++i) {
    const auto [first, second] = fvPairs[i];
    const Part& x = fvParts[static_cast<std::size_t>(first)];
    const Part& y = fvParts[static_cast<std::size_t>(second)];
    if (x.fIsComplete && y.fIsComplete) {
      const double products =
          fWeightedDistances.col(first).head(fCases).dot(fDistances.col(second).head(fCases));
      fvMoments[i].Merge({count, x.fMargin, y.fMargin, products});
    } else {
      AddByCase(i);
    }
  }
  fCases = 0;
}

// The first value is the origin, so that the distances of a constant are exactly 0.
PairMoments::Part PairMoments::Centre(Eigen::Index variable) {
  const auto values = fValues.col(variable).head(fCases);
  if (values.hasNaN()) return {false, {}};
  const auto weights = fWeights.head(fCases);
  auto distances = fDistances.col(variable).head(fCases);
  auto weighted = fWeightedDistances.col(variable).head(fCases);
  const double origin = values[0];
  distances.array() = values.array() - origin;
  const double offset = weights.dot(distances) / weights.sum();
  distances.array() -= offset;
  weighted = weights.cwiseProduct(distances);
  return {true, {origin, offset, weighted.dot(distances)}};
}

void PairMoments::AddByCase(std::size_t pair) {
  const auto [first, second] = fvPairs[pair];
  for (Eigen::Index i = 0; i < fCases; ++i) {
    const double x = fValues(i, first);
    const double y = fValues(i, second);
    if (!std::isnan(x) && !std::isnan(y)) fvMoments[pair].Add(x, y, fWeights[i]);
  }
}

}  // namespace BayesComponent
