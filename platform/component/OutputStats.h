// The results of an analysis. One entry per test variable or pair; what could not be computed is missing.
#pragma once

#include <iosfwd>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Visibility.h"
#include "platform/component/Common.h"
#include "platform/component/Math.h"
#include "platform/component/VarList.h"

namespace MCBSN_850 {

using Indices = std::vector<int>;
using Values = std::vector<double>;
using Flags = std::vector<bool>;
using Curves = std::vector<std::vector<double>>;
using Matrix = std::vector<std::vector<double>>;

// The posterior of one quantity in numbers; missing where it has no such number, or where the analysis
// doesn't report it.
struct BAYES_PLATFORM BayesEstimation {
  double fMode = MCCommon_850::MCMV::Missing();
  double fMedian = MCCommon_850::MCMV::Missing();
  double fMean = MCCommon_850::MCMV::Missing();
  double fVariance = MCCommon_850::MCMV::Missing();
  // Limits of the credible interval.
  double fLower = MCCommon_850::MCMV::Missing();
  double fUpper = MCCommon_850::MCMV::Missing();
};

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

// Correlations of all pairs of variables: Pearson's r, Spearman's rho or Kendall's tau-b, as the settings
// say. One entry per pair, (0, 1), (0, 2), ... (1, 2), ...
class BAYES_PLATFORM BSNPearsonCorrelationOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSNPearsonCorrelationOutputStats(std::shared_ptr<const Data> data);

  // Positions in the list of covariates.
  const std::vector<std::pair<int, int>>& GetVarPairIndices() const;
  // The sample's coefficient.
  const Values& GetPearsonCorrelation() const;
  // Bayes factor of null over alternative; its natural logarithm where the flag is set.
  const Values& GetBayesFactor() const;
  const Flags& GetIsLogBayesFactor() const;
  // Whether the quadrature behind the Bayes factor failed, so that it is a Monte Carlo estimate.
  const Flags& GetIndIntegralFailed() const;
  // Valid cases of each variable, and of each pair.
  const Values& GetVarN() const;
  const Values& GetVarPairN() const;
  // Posterior of the population coefficient.
  const Values& GetPosteriorMode() const;
  const Values& GetPosteriorMean() const;
  const Values& GetPosteriorVariance() const;
  const Values& GetPosteriorLowerBound() const;
  const Values& GetPosteriorUpperBound() const;
  // Curves of the charts, on one list of arguments for each pair; empty beyond the number of plots set.
  const Curves& GetPlotXAxis() const;
  const Curves& GetPlotLogLikelihood() const;
  const Curves& GetPlotPosterior() const;
  const Curves& GetPlotPrior() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

// The cross-tabulation of two factors: cases by category codes, with those that independence expects.
class BAYES_PLATFORM BSNContingency {
 public:
  struct Data;
  explicit BSNContingency(std::shared_ptr<const Data> data);

  // By row and column, empty ones included.
  const Matrix& GetAllCounts() const;
  double GetTotalWeight() const;
  const Values& GetRowTotals() const;
  const Values& GetColTotals() const;
  const Matrix& GetExpectedCounts() const;
  // Codes of the categories that have cases, ascending.
  const Indices& GetNonEmptyRows() const;
  const Indices& GetNonEmptyCols() const;
  // Of the cells of those: how many expect less than 5 cases, that in percent, and the smallest expectation.
  double GetNCellsExpLess5() const;
  double GetPctCellsExpLess5() const;
  double GetMinExpectedCount() const;

 private:
  std::shared_ptr<const Data> fpData;
};

// Test of independence of two factors, and their interactions. Without two categories with cases in each
// factor there is the table and nothing else.
class BAYES_PLATFORM BSNLogLinearOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSNLogLinearOutputStats(std::shared_ptr<const Data> data);

  const BSNContingency& GetContingencyMatrix() const;
  // Bayes factor of independence over association; its natural logarithm when the flag is set.
  double GetBayesFactor() const;
  bool IsLogBayesFactor() const;
  // Pearson's and the likelihood ratio statistic; the continuity correction and Fisher's test of a table with
  // two rows and two columns, else missing.
  const MCMath_850::MCTestStats& GetChiSquareResult() const;
  const MCMath_850::MCTestStats& GetLikeRatioResult() const;
  const MCMath_850::MCTestStats& GetContCorrectResult() const;
  double GetFisher2SidedSig() const;
  double GetFisher1SidedSig() const;
  // The training sample of an intrinsic prior: its cases; with a fixed margin, that margin's categories and
  // the cases of each.
  double GetT() const;
  double GetT1() const;
  double GetT2() const;
  // Interactions of the categories with cases, row by row: median, mean, variance and simultaneous interval.
  const std::vector<BayesEstimation>& GetPosteriorEstimations() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

// Linear regression, and one-way analysis of variance as a regression on the levels of its factor.
//
// The parameters are the intercept, then one for every level of every factor, then one for every covariate,
// in the order of the settings. All lists "per parameter" follow it.
class BAYES_PLATFORM BSNMultiRegOutputStats : public BSNOutputStats {
 public:
  struct Data;
  explicit BSNMultiRegOutputStats(std::shared_ptr<const Data> data);

  // Ten numbers: regression sum of squares, its df, mean square, F, significance; residual sum of squares,
  // df, mean square; total sum of squares, df. Sums are corrected for the mean and weighted.
  const Values& GetAnova() const;
  // Bayes factor of the model over the intercept alone, or over the full model where the settings say so; its
  // natural logarithm where the flag is set, which analysis of variance never does.
  double GetBayesFactor() const;
  bool IsLogBayesFactor() const;
  double GetRSquared() const;
  double GetAdjRSquared() const;
  // Missing unless the settings compare with the full model.
  double GetRSquaredFull() const;

  const std::vector<MCMath_850::MCRegrParameter>& GetRegrParameters() const;
  // Parameters that the ones before them determine, and the last level of every factor: they are zero.
  const MCMath_850::MCBitSet& GetRedundancy() const;
  // Posteriors per parameter, all missing for a redundant one; of the error variance; of the response of one
  // further case (of regression weight 1) at the prediction point.
  const std::vector<BayesEstimation>& GetVarCoeffBayesEstimations() const;
  const BayesEstimation& GetErrorBayesEstimation() const;
  const BayesEstimation& GetPredictedBayesEstimation() const;
  // Where the response is predicted: a category code for each factor, then a number for each covariate.
  const Values& GetPredictionPoint() const;
  // One for each F-test of the settings, all missing where it could not be computed.
  const std::vector<MCMath_850::MCTestStats>& GetFTestResults() const;

  // The posterior of the expected response of one case: mode, mean and credible interval; the variance,
  // computed when the settings ask for it, is that of the response itself. False when there is no model or
  // the case lacks a predictor's value, and the estimation is then left alone.
  bool Score(const MCCommon_850::Record& record, BayesEstimation& estimation) const;

  // A PMML 4.4 document: the fields as the variable list describes them and the model at its posterior
  // location, with `isModel` also the squared scales and the credible bounds of its parameters. A posterior
  // that is improper has no model in its document.
  void ExportPMML(const MCXML_850::MCVarList& variables, std::ostream& stream, bool isModel,
                  const MCCommon_850::MCApplicInfo4XML& application) const;

  // Curves per parameter, empty for those that are not plotted. The likelihoods are logarithms.
  const Curves& GetParamsArgumentsPlots4Likelihoods() const;
  const Curves& GetLikelihoodParamPlots() const;
  const Curves& GetParamsArgumentsPlots4Posterior() const;
  const Curves& GetPosteriorParamPlots() const;
  const Curves& GetParamsArgumentsPlots4Prior() const;
  const Curves& GetPriorParamPlots() const;
  // Curves of the error variance and of the predicted response.
  const Values& GetArgumentErrorVarPlot4Likelihoods() const;
  const Values& GetLikelihoodErrorVarPlot() const;
  const Values& GetArgumentErrorVarPlot4Posterior() const;
  const Values& GetPosteriorErrorVarPlot() const;
  const Values& GetArgumentErrorVarPlot4Prior() const;
  const Values& GetPriorErrorVarPlot() const;
  const Values& GetArgumentPredictedPlot4Likelihoods() const;
  const Values& GetLikelihoodPredictedPlot() const;
  const Values& GetArgumentPredictedPlot4Posterior() const;
  const Values& GetPosteriorPredictedPlot() const;
  const Values& GetArgumentPredictedPlot4Prior() const;
  const Values& GetPriorPredictedPlot() const;

  void Write(std::ostream& stream) const override;

 private:
  std::shared_ptr<const Data> fpData;
};

}  // namespace MCBSN_850
