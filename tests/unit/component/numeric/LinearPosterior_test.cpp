#include "component/numeric/LinearPosterior.h"

#include <Eigen/LU>
#include <Eigen/QR>

#include "gtest/gtest.h"

namespace {

using namespace BayesComponent;

const Eigen::MatrixXd kX{{1, 0.5, 3}, {1, 1.5, 1}, {1, 4, 2}, {1, 2, 8}, {1, 7, 5}, {1, 3, 3.5}, {1, 9, 0}};
const Eigen::VectorXd kY{{2.5, 3.1, 7.9, 4.4, 12.8, 6.6, 15.1}};
const Eigen::MatrixXd kV{{4, 0.5, 0}, {0.5, 1, 0.1}, {0, 0.1, 0.5}};
const Eigen::VectorXd kMean{{1, 2, -1}};
constexpr double kShape = 2;
constexpr double kScale = 3;

// Rows `first` to `last` of the data.
LinearEvidence EvidenceOf(Eigen::Index first, Eigen::Index last) {
  const Eigen::MatrixXd x = kX.middleRows(first, last - first);
  const Eigen::HouseholderQR<Eigen::MatrixXd> qr(x);
  const Eigen::VectorXd rotated = qr.householderQ().adjoint() * kY.segment(first, last - first);
  return {qr.matrixQR().topRows(3).triangularView<Eigen::Upper>(), rotated.head(3),
          rotated.tail(rotated.size() - 3).squaredNorm(), static_cast<double>(last - first)};
}

std::unique_ptr<NormalInverseGamma> Prior() {
  return ConjugatePrior({1, 2, -1}, {4, 0.5, 1, 0, 0.1, 0.5}, kShape, kScale);
}

// The formulas of the textbook, with their inverses and differences.
TEST(NormalInverseGamma, UpdatesByTheDefinition) {
  const Eigen::MatrixXd precision = kV.inverse();
  const Eigen::MatrixXd v = (precision + kX.transpose() * kX).inverse();
  const Eigen::VectorXd mean = v * (precision * kMean + kX.transpose() * kY);
  const double scale = kScale + (kY.squaredNorm() + kMean.dot(precision * kMean) -
                                 mean.dot((precision + kX.transpose() * kX) * mean)) /
                                    2;
  const NormalInverseGamma posterior = Prior()->UpdatedBy(EvidenceOf(0, 7));
  EXPECT_EQ(posterior.DF(), 2 * kShape + 7);
  EXPECT_NEAR(posterior.SquaredScale(), scale / (kShape + 3.5), 1e-12);
  for (const Eigen::VectorXd& x : {Eigen::VectorXd{{1, 0, 0}}, Eigen::VectorXd{{1, -2, 7}}}) {
    EXPECT_NEAR(posterior.LocationOf(x), x.dot(mean), 1e-12);
    EXPECT_NEAR(posterior.LeverageOf(x), x.dot(v * x), 1e-12);
    const double variance = scale / (kShape + 2.5);
    EXPECT_NEAR(posterior.LinearFunction(x)->Variance().value(), variance * x.dot(v * x), 1e-11);
    EXPECT_NEAR(posterior.Response(x)->Variance().value(), variance * (1 + x.dot(v * x)), 1e-11);
  }
  EXPECT_NEAR(posterior.ErrorVariance()->Mean().value(), scale / (kShape + 2.5), 1e-12);

  // Two of the three parameters.
  Eigen::MatrixXd part{{v(2, 2), v(2, 0)}, {v(0, 2), v(0, 0)}};
  const Eigen::VectorXd distance{{mean[2] - 0.3, mean[0] - 1.1}};
  const double f = distance.dot((part * posterior.SquaredScale()).inverse() * distance) / 2;
  EXPECT_NEAR(posterior.FStatistic({2, 0}, {0.3, 1.1}) / f, 1, 1e-11);
}

TEST(NormalInverseGamma, LearnsInStepsWhatItLearnsAtOnce) {
  const NormalInverseGamma atOnce = Prior()->UpdatedBy(EvidenceOf(0, 7));
  const NormalInverseGamma inSteps = Prior()->UpdatedBy(EvidenceOf(0, 3)).UpdatedBy(EvidenceOf(3, 7));
  const Eigen::VectorXd x{{1, 2, -3}};
  EXPECT_NEAR(inSteps.DF(), atOnce.DF(), 1e-14);
  EXPECT_NEAR(inSteps.LocationOf(x), atOnce.LocationOf(x), 1e-12);
  EXPECT_NEAR(inSteps.LeverageOf(x), atOnce.LeverageOf(x), 1e-12);
  EXPECT_NEAR(inSteps.SquaredScale(), atOnce.SquaredScale(), 1e-12);
}

TEST(ConjugatePrior, NeedsACovarianceMatrix) {
  EXPECT_EQ(ConjugatePrior({0, 0}, {1, 2, 1}, 1, 1), nullptr);
  EXPECT_EQ(ConjugatePrior({0, 0}, {1, 1, 1}, 1, 1), nullptr);
  const auto identity = ConjugatePrior({0, 0}, {}, 1, 1);
  ASSERT_NE(identity, nullptr);
  EXPECT_NEAR(identity->LeverageOf(Eigen::VectorXd{{3, 4}}), 25, 1e-13);
}

}  // namespace
