// The results of an analysis. One entry per test variable or pair; what could not be computed is missing.
#pragma once

#include <iosfwd>
#include <memory>
#include <vector>

#include "platform/Visibility.h"

namespace MCBSN_850 {

using Indices = std::vector<int>;
using Values = std::vector<double>;
using Flags = std::vector<bool>;
using Curves = std::vector<std::vector<double>>;

class BAYES_PLATFORM BSNOutputStats {
 public:
  virtual ~BSNOutputStats();
  // A developer's dump of the record.
  virtual void Write(std::ostream& stream) const = 0;
};

// One-sample test of a normal mean.
class BAYES_PLATFORM BSN1SampleNormOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSN1SampleNormOutputStats(std::shared_ptr<const Data> data);

  // Record slots of the test variables.
  const Indices& GetVarIndices() const;
  // Valid (weighted) cases, sample mean, standard deviation, standard error, t (z with a known variance),
  // degrees of freedom (missing with a known variance), two-sided significance, Bayes factor of null over
  // alternative.
  const Values& GetNs() const;
  const Values& GetMeanValues() const;
  const Values& GetStdDevs() const;
  const Values& GetEMs() const;
  const Values& GetTValues() const;
  const Values& GetDFValues() const;
  const Values& GetSigs() const;
  const Values& GetBayesFactors() const;
  // Posterior of the mean.
  const Values& GetModeValues() const;
  const Values& GetPostMeanValues() const;
  const Values& GetVarianceValues() const;
  const Values& GetLowerLimits() const;
  const Values& GetUpperLimits() const;
  // Curves of the charts: one list of arguments and one of values for each variable or pair.
  const Curves& GetPlotArguments4Likelihoods() const;
  const Curves& GetPlotLikelihoods() const;
  const Curves& GetPlotArguments4Posterior() const;
  const Curves& GetPlotPosterior() const;
  const Curves& GetPlotArguments4Prior() const;
  const Curves& GetPlotPrior() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

// One-sample test of a binomial proportion.
class BAYES_PLATFORM BSN1SampleBinoOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSN1SampleBinoOutputStats(std::shared_ptr<const Data> data);

  // Record slots of the recoded test variables.
  const Indices& GetVarIndices() const;
  // Cases; successes (1) and failures (2); codes that count as success; observed proportions.
  const Values& GetNs() const;
  const Values& GetCat1Ns() const;
  const Values& GetCat2Ns() const;
  const Indices& GetCat1Indices() const;
  const Values& GetCat1Props() const;
  const Values& GetCat2Props() const;
  // Bayes factor of null over alternative; its natural logarithm where the flag is set.
  const Values& GetBayesFactors() const;
  const Flags& GetIsLogBayesFactor() const;
  // Posterior of the proportion.
  const Values& GetModeValues() const;
  const Values& GetMeanValues() const;
  const Values& GetVarianceValues() const;
  const Values& GetLowerLimits() const;
  const Values& GetUpperLimits() const;
  // Curves of the charts, on one list of arguments for each variable.
  const Curves& GetPlotArguments() const;
  const Curves& GetPlotLikelihoods() const;
  const Curves& GetPlotPosterior() const;
  const Curves& GetPlotPrior() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

// One-sample test of a Poisson rate.
class BAYES_PLATFORM BSN1SamplePoisnOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSN1SamplePoisnOutputStats(std::shared_ptr<const Data> data);

  // Record slots of the test variables.
  const Indices& GetVarIndices() const;
  // Cases, smallest and largest count.
  const Values& GetNs() const;
  const Values& GetMinCnts() const;
  const Values& GetMaxCnts() const;
  // Bayes factor of null over alternative; its natural logarithm where the flag is set.
  const Values& GetBayesFactors() const;
  const Flags& GetIsLogBayesFactor() const;
  // Posterior of the rate.
  const Values& GetModeValues() const;
  const Values& GetMeanValues() const;
  const Values& GetVarianceValues() const;
  const Values& GetLowerLimits() const;
  const Values& GetUpperLimits() const;
  // Curves of the charts: one list of arguments and one of values for each variable or pair.
  const Curves& GetPlotArguments4Likelihoods() const;
  const Curves& GetPlotLikelihoods() const;
  const Curves& GetPlotArguments4Posterior() const;
  const Curves& GetPlotPosterior() const;
  const Curves& GetPlotArguments4Prior() const;
  const Curves& GetPlotPrior() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

// Test of the mean difference (first minus second) of pairs.
class BAYES_PLATFORM BSN2SampleRelatedOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSN2SampleRelatedOutputStats(std::shared_ptr<const Data> data);

  // Record slots of the pairs.
  const Indices& Get1ndRelatedList() const;
  const Indices& Get2ndRelatedList() const;
  // As for one sample, of the differences.
  const Values& GetNs() const;
  const Values& GetMeanDiffValues() const;
  const Values& GetStdDevs() const;
  const Values& GetEMs() const;
  const Values& GetTValues() const;
  const Values& GetDFValues() const;
  const Values& GetSigs() const;
  const Values& GetBayesFactors() const;
  // Posterior of the mean difference.
  const Values& GetModeValues() const;
  const Values& GetPostMeanValues() const;
  const Values& GetVarianceValues() const;
  const Values& GetLowerLimits() const;
  const Values& GetUpperLimits() const;
  // Curves of the charts: one list of arguments and one of values for each variable or pair.
  const Curves& GetPlotArguments4Likelihoods() const;
  const Curves& GetPlotLikelihoods() const;
  const Curves& GetPlotArguments4Posterior() const;
  const Curves& GetPlotPosterior() const;
  const Curves& GetPlotArguments4Prior() const;
  const Curves& GetPlotPrior() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

// Test of the difference (group 1 minus group 2) of two independent means.
class BAYES_PLATFORM BSN2SampleIndOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSN2SampleIndOutputStats(std::shared_ptr<const Data> data);

  // Record slots of the test variables of the group statistics.
  const Indices& GetGroupStatsVarIndices() const;
  const Values& GetGroup1StatsNs() const;
  const Values& GetGroup1MeanValues() const;
  const Values& GetGroup1StdDevs() const;
  const Values& GetGroup1EMs() const;
  const Values& GetGroup2StatsNs() const;
  const Values& GetGroup2MeanValues() const;
  const Values& GetGroup2StdDevs() const;
  const Values& GetGroup2EMs() const;
  const Values& GetMeanDiffValues() const;
  const Values& GetPStdEDDevs() const;
  const Values& GetTValues() const;
  const Values& GetDFValues() const;
  const Values& GetSigs() const;
  const Values& GetBayesFactors() const;
  // Posterior of the difference, for these slots.
  const Indices& GetPostVarIndices() const;
  const Values& GetModeValues() const;
  const Values& GetPostMeanValues() const;
  const Values& GetVarianceValues() const;
  const Values& GetLowerLimits() const;
  const Values& GetUpperLimits() const;
  // Curves: X and Y are the two group means, the rest the difference.
  const Curves& GetPlotXArguments() const;
  const Curves& GetPlotXLikelihoods() const;
  const Curves& GetPlotXPriorArguments() const;
  const Curves& GetPlotXPrior() const;
  const Curves& GetPlotYArguments() const;
  const Curves& GetPlotYLikelihoods() const;
  const Curves& GetPlotYPriorArguments() const;
  const Curves& GetPlotYPrior() const;
  const Curves& GetPlotArguments() const;
  const Curves& GetPlotPosterior() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

}  // namespace MCBSN_850
