// What a statistics component is told: the analysis, its variables, priors and limits.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/component/Common.h"

// The codes of settings. The numbers are fixed: command readers and result readers rely on them.
namespace BSNConst {
enum ModelTypes {
  OneSample = 0,
  Related = 1,
  Independent = 2,
  Correlation = 3,
  Regression = 4,
  Anova = 5,
  LogLinear = 6
};
enum AnalysTypes { Posterior = 0, BayesFactor = 1, Both = 2 };
enum DistTypes {
  Normal = 0,
  Binomial = 1,
  Poisson = 2,
  ChiSquare = 3,     // on the precision
  InvChiSquare = 4,  // on the variance
  Gamma = 5,         // on the precision
  InvGamma = 6,      // on the variance
  Jeffreys2 = 7,     // p(sigma^2) ~ sigma^-2
  Jeffreys4 = 8,     // p(sigma^2) ~ sigma^-4
  Diffuse = 9,       // p(sigma^2) ~ 1; for a mean: flat
  Multinomial = 10,
  Nonparametric = 11
};
enum MissScope { ByTest = 0, Listwise = 1 };
enum MethodTypes { AGL = 0, MCA = 1 };  // adaptive Gauss-Lobatto, Monte Carlo
enum CompareTypes { NullModel = 0, FullModel = 1 };
enum EstBFTypes { EstJZS = 0, EstFraction = 2 };
enum FixType { FixTotal = 0, FixColumn = 1, FixRow = 2, FixNone = 3 };
enum RegrCompute { JZS = 0, Zellner = 1, Hyper = 2, Rouder = 3, Gonen = 4 };
enum LogLinPriorType { PriorConjugate = 0, PriorMixtureDirichlet = 1, PriorIntrinsic = 2 };
enum CorrTests { Pearson = 0, Spearman = 1, Kendall = 2 };
enum PriorTypes { Conjugate = 0, Reference = 1, Custom = 2 };
}  // namespace BSNConst

namespace MCBSN_850 {

// One F-test of regression parameters.
class BAYES_PLATFORM BayesFTest {
 public:
  bool HasIntercept() const { return fIntercept; }
  void SetIntercept(bool on) { fIntercept = on; }
  // Record slots or dictionary indices, as in the settings that hold the test.
  const std::vector<int>& GetVariables() const { return fvVariables; }
  void SetVariables(std::vector<int> variables) { fvVariables = std::move(variables); }
  const std::string& GetLabel() const { return fLabel; }
  void SetLabel(std::string label) { fLabel = std::move(label); }
  // One value for each tested parameter; empty: zeros.
  const std::vector<double>& GetTestValues() const { return fvTestValues; }
  void SetTestValues(std::vector<double> values) { fvTestValues = std::move(values); }

 private:
  bool fIntercept = false;
  std::vector<int> fvVariables;
  std::string fLabel;
  std::vector<double> fvTestValues;
};

// A value: copies are independent. Default construction gives the documented defaults: credible level 95,
// posterior analysis, AGL, null comparison, Pearson, JZS, null value 0, normal data, diffuse priors, kappa 1,
// multinomial model with conjugate prior and no fixed margin, 10 plots, 2 plotted categories; every other
// number is missing and every variable -1.
class BAYES_PLATFORM BSNSettings {
 public:
  BSNSettings();
  ~BSNSettings();
  BSNSettings(const BSNSettings& other);
  BSNSettings& operator=(const BSNSettings& other);

  // `fixed` is reserved; pass true.
  void SetModelType(BSNConst::ModelTypes type, bool fixed);
  BSNConst::ModelTypes GetModelType() const;

  // Model.
  void SetAnalysType(BSNConst::AnalysTypes value);
  BSNConst::AnalysTypes GetAnalysType() const;
  // One-sample test: normal, binomial or Poisson.
  void SetTestDistType(BSNConst::DistTypes value);
  BSNConst::DistTypes GetTestDistType() const;
  void SetCorrTest(BSNConst::CorrTests value);
  BSNConst::CorrTests GetCorrTest() const;
  // How an integral over g is taken.
  void SetMethodType(BSNConst::MethodTypes value);
  BSNConst::MethodTypes GetMethodType() const;
  void SetCompareType(BSNConst::CompareTypes value);
  BSNConst::CompareTypes GetCompareType() const;
  void SetEstBFType(BSNConst::EstBFTypes value);
  BSNConst::EstBFTypes GetEstBFType() const;
  // Any value outside the enumeration: no margin named.
  void SetFixType(BSNConst::FixType value);
  BSNConst::FixType GetFixType() const;
  void SetRegrCompType(BSNConst::RegrCompute value);
  BSNConst::RegrCompute GetRegrCompType() const;
  // Parameter of the computation: g, a, s or b; missing when not given.
  void SetRegrComPar(double value);
  double GetRegrComPar() const;

  // Variables: record slots in component settings, dictionary indices in statistical settings; -1 (or an
  // empty list) when there is none.
  void SetDependVar(int value);
  int GetDependentVar() const;
  void SetFrequencyWeightVar(int value);
  int GetFrequencyWeightVar() const;
  void SetRegrWeightVar(int value);
  int GetRegrWeightVar() const;
  void SetFullModFactors(const std::vector<int>& value);
  const std::vector<int>& GetFullModFactors() const;
  void SetFullModFactorNCategs(const std::vector<int>& value);
  const std::vector<int>& GetFullModFactorSizes() const;
  void SetFullModCovariates(const std::vector<int>& value);
  const std::vector<int>& GetFullModCovariates() const;
  // Also the binomial test variables.
  void SetFactors(const std::vector<int>& value);
  const std::vector<int>& GetFactors() const;
  void SetFactorNCategs(const std::vector<int>& value);
  const std::vector<int>& GetFactorSizes() const;
  // Also the numeric test variables and the first variables of pairs.
  void SetCovariates(const std::vector<int>& value);
  const std::vector<int>& GetCovariates() const;
  // Second variables of pairs, aligned with the covariates.
  void Set2ndRelatedList(const std::vector<int>& value);
  const std::vector<int>& Get2ndRelatedList() const;
  void SetGroupVar(int value);
  int GetGroupVar() const;
  void SetPlotFactors(const std::vector<int>& value);
  const std::vector<int>& GetPlotFactors() const;
  void SetPlotCovars(const std::vector<int>& value);
  const std::vector<int>& GetPlotCovars() const;
  void SetPlotFactorCats(const std::vector<int>& value);
  const std::vector<int>& GetPlotFactorCats() const;

  // Test values. Lists are aligned with the test variables; an entry that was not given is missing; an empty
  // list gives none. Null correlation, in (-1, 1).
  void SetNullValue(double value);
  double GetNullValue() const;
  void SetNullValues(const std::vector<double>& value);
  const std::vector<double>& GetNullValues() const;
  // Known variances, > 0.
  void SetDataVarVals(const std::vector<double>& value);
  const std::vector<double>& GetDataVarVals() const;
  // g of the alternative, > 0.
  void SetAlterGValues(const std::vector<double>& value);
  const std::vector<double>& GetAlterGValues() const;
  void SetSecondGonenPar(double value);
  double GetSecondGonenPar() const;
  void SetLambdas(const std::vector<double>& value);
  const std::vector<double>& GetLambdas() const;
  void SetRegressors(const std::vector<double>& value);
  const std::vector<double>& GetRegressors() const;
  void SetCorrCValue(double value);
  double GetCorrCValue() const;
  void SetEqualDataVar(bool value);
  bool GetEqualDataVar() const;
  // Prior sample size behind the mean, > 0.
  void SetKappaValue(double value);
  double GetKappaValue() const;
  void SetFTests(const std::vector<BayesFTest>& tests);
  const std::vector<BayesFTest>& GetFTests() const;

  // Priors. A parameter that was not given is missing.
  void SetPriorType(BSNConst::PriorTypes value);
  BSNConst::PriorTypes GetPriorType() const;
  // Conjugate prior of a binomial or Poisson test.
  void SetPriorParam1(double value);
  double GetPriorParam1() const;
  void SetPriorParam2(double value);
  double GetPriorParam2() const;
  // Prior of the variance (or of the precision).
  void SetPriorDistType(BSNConst::DistTypes value);
  BSNConst::DistTypes GetPriorDistType() const;
  void SetPriorDistParam1(double value);
  double GetPriorDistParam1() const;
  void SetPriorDistParam2(double value);
  double GetPriorDistParam2() const;
  // Prior of the mean: normal or diffuse.
  void SetMeanDistType(BSNConst::DistTypes value);
  BSNConst::DistTypes GetMeanDistType() const;
  void SetMeanDistParam1(double value);
  double GetMeanDistParam1() const;
  void SetMeanDistParam2(double value);
  double GetMeanDistParam2() const;
  void SetMeanDistParam3(double value);
  double GetMeanDistParam3() const;
  void SetMeanDistParam4(double value);
  double GetMeanDistParam4() const;
  void SetPriorShape(double value);
  double GetPriorShape() const;
  void SetPriorScale(double value);
  double GetPriorScale() const;
  void SetPriorMeans(const std::vector<double>& value);
  const std::vector<double>& GetPriorMeans() const;
  // Lower triangle with its diagonal, row by row; empty: identity.
  void SetPriorCovMatrix(const std::vector<double>& value);
  const std::vector<double>& GetPriorCovMatrix() const;
  void SetNullPrior1s(const std::vector<double>& value);
  const std::vector<double>& GetNullPrior1s() const;
  void SetNullPrior2s(const std::vector<double>& value);
  const std::vector<double>& GetNullPrior2s() const;
  void SetAlterPrior1s(const std::vector<double>& value);
  const std::vector<double>& GetAlterPrior1s() const;
  void SetAlterPrior2s(const std::vector<double>& value);
  const std::vector<double>& GetAlterPrior2s() const;

  // Log-linear models.
  // Multinomial, Poisson or nonparametric.
  void SetLogLinModel(BSNConst::DistTypes value);
  BSNConst::DistTypes GetLogLinModel() const;
  void SetLogLinPriorType(BSNConst::LogLinPriorType value);
  BSNConst::LogLinPriorType GetLogLinPriorType() const;
  // Training tables at least.
  void SetLogLinIntrinsicT(int value);
  int GetLogLinIntrinsicT() const;
  // One shape for all cells, or one for each cell by rows.
  void SetLogLinShapes(const std::vector<double>& value);
  const std::vector<double>& GetLogLinShapes() const;

  // Computation and plots.
  // Credible level in percent, [0, 100).
  void SetCILevel(double value);
  double GetCILevel() const;
  // Relative tolerance of quadratures.
  void SetTolValue(double value);
  double GetTolValue() const;
  // Interval refinements of a quadrature.
  void SetMaxIterations(int value);
  int GetMaxIterations() const;
  void SetMCSamples(int value);
  int GetMCSamples() const;
  void SetPosteriorSamples(long value);
  long GetPosteriorSamples() const;
  // 0: no seed was chosen.
  void SetRandomSeed(unsigned long value);
  unsigned long GetRandomSeed() const;
  void SetMissScope(BSNConst::MissScope value);
  BSNConst::MissScope GetMissScope() const;
  void SetComputeVarianceInScoring(bool value);
  bool GetComputeVarianceInScoring() const;
  void SetMaxNPlots(int value);
  int GetMaxNPlots() const;
  void SetMaxNPlotCategories(int value);
  int GetMaxNPlotCategories() const;
  // False: nobody will look at the curves of plots, only ask whether there are any; of each that there is the
  // points up to its first number are enough. Default: true.
  void SetPlotsShown(bool value);
  bool GetPlotsShown() const;

  // Run. Not owned; may be null.
  void SetThreadFactory(MCCommon_850::MCThreadFactory* value);
  MCCommon_850::MCThreadFactory* GetThreadFactory() const;
  // 0: the component decides.
  void SetMaxThreadNum(int value);
  int GetMaxThreadNum() const;
  void SetMemCacheKB(int value);
  int GetMemCacheKB() const;
  void SetCancelPointer(const MCCommon_850::MCCancelQuery* value);
  const MCCommon_850::MCCancelQuery* GetCancelPointer() const;
  void SetProgressListener(MCCommon_850::ProgressListener* value);
  MCCommon_850::ProgressListener* GetProgressListener() const;

  // False when the settings can't describe an analysis (no variables, a list of the wrong length, a value out
  // of range).
  bool IsValidSettings() const;
  // A developer's dump, one setting a line.
  void Display(std::ostream& stream) const;

 private:
  struct State;
  std::unique_ptr<State> fpState;
};

}  // namespace MCBSN_850
