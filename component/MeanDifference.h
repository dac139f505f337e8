// Inference on the difference of two independent normal means, group 1 minus group 2.
#pragma once

#include <array>
#include <memory>

#include "component/Records.h"
#include "component/Results.h"
#include "component/SettingsView.h"
#include "component/StatusList.h"
#include "component/VariancePrior.h"
#include "component/numeric/Moments.h"
#include "component/numeric/NormalBayesFactor.h"

namespace BayesComponent {

class MeanDifference {
 public:
  using Data = MCBSN_850::BSN2SampleIndOutputStats::Data;

  MeanDifference(const BSNSettings& settings, StatusList& statuses);

  // Adds a row with everything that the settings ask for; statuses point to the variable's slot.
  void Append(const std::array<Moments, 2>& groups, int slot, Data& data);

 private:
  enum class Variances { Known, Equal, Unequal };

  // A group's mean with what is known of its spread.
  struct Group {
    double fN;
    double fMean;
    double fSumOfSquares;
    double fKnownVariance;  // missing: unknown
    double SquaredError() const;
  };
  using Groups = std::array<Group, 2>;

  struct TestRow {
    double fDifference = kMissing;
    double fStdError = kMissing;
    double fT = kMissing;
    double fDF = kMissing;
    double fSig = kMissing;
    double fBayesFactor = kMissing;
  };

  Variances KindOfVariances() const;
  bool IsTestable(const Groups& groups);
  void ReportConstants(const Groups& groups);
  TestRow Test(const Groups& groups, double difference);
  double StdError(const Groups& groups) const;
  double DegreesOfFreedom(const Groups& groups) const;
  LogIntegral LogBayesFactor(const MeanTest& test, double pooledDF);
  LogIntegral LogBayesFactorCauchy(const MeanTest& test, double scale);

  std::unique_ptr<const Distribution> Infer(const Groups& groups, double difference, int slot);
  std::unique_ptr<const Distribution> InferWithKnownVariances(const Groups& groups, double difference) const;
  std::unique_ptr<const Distribution> InferWithEqualVariances(const Groups& groups, double difference,
                                                              int slot);
  std::unique_ptr<const Distribution> InferWithUnequalVariances(const Groups& groups, int slot);
  // The normal prior of a group's mean; null: flat.
  std::shared_ptr<const NormalDistribution> MeanPrior(std::size_t group) const;
  void ReportUnusableMeanPrior();
  VariancePrior UsableVariancePrior();
  CurveSet DrawGroup(const Groups& groups, std::size_t group) const;

  const BSNSettings& fSettings;
  StatusList& fStatuses;
  Variances fVariances;
  GaussLobatto fQuadrature;
  RandomStream fRandom;
};

}  // namespace BayesComponent
