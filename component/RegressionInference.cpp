#include "component/RegressionInference.h"

#include <algorithm>
#include <cmath>

#include "component/NormalMean.h"

namespace BayesComponent {

namespace {

using MCBSN_850::BayesEstimation;
using MCBSN_850::BayesFTest;
using MCMath_850::MCTestStats;

bool Contains(const std::vector<int>& list, int value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

BayesEstimation EstimationOf(const Distribution* posterior, double level, StatusList& statuses) {
  BayesEstimation estimation;
  if (!posterior) return estimation;
  const PosteriorRow row = Characterise(posterior, level, statuses);
  return {row.fMode, Shown(posterior->LowerQuantile(0.5)), row.fMean, row.fVariance, row.fLower, row.fUpper};
}

// A record whose predictors are at a point.
std::vector<double> RecordAt(const Predictors& predictors, const Values& point) {
  const std::vector<int> slots = SlotsOf(predictors);
  std::vector<double> record(static_cast<std::size_t>(*std::max_element(slots.begin(), slots.end())) + 1);
  for (std::size_t i = 0; i < slots.size(); ++i) record[static_cast<std::size_t>(slots[i])] = point[i];
  return record;
}

// p(sigma^2) ~ 1/sigma^2.
double ReferenceDensity(double variance) {
  return 1 / variance;
}

// Of the error variance, the coefficients at their least squares estimates.
Likelihood ErrorVarianceLikelihood(double n, double residualSum) {
  if (!(residualSum > 0) || n <= 2) return {};
  const double peak = residualSum / n;
  const auto lnL = [n, peak](double variance) {
    const double ratio = peak / variance;
    return n / 2 * (std::log(ratio) + 1 - ratio);
  };
  return {lnL, std::make_unique<InverseGammaDistribution>(n / 2 - 1, residualSum / 2)};
}

}  // namespace

RegressionInference::RegressionInference(const BSNSettings& settings, const Predictors& model,
                                         const ModelFit& fit, StatusList& statuses)
    : fSettings(settings),
      fModel(model),
      fFit(fit),
      fStatuses(statuses),
      fLeastSquares(NormalInverseGamma::UnderReferencePrior(fit.fEvidence)),
      fpPrior(ReadPrior()),
      fpPosterior(MakePosterior()) {}

std::unique_ptr<NormalInverseGamma> RegressionInference::ReadPrior() const {
  if (fSettings.GetPriorType() == BSNConst::Reference) return nullptr;
  const auto q = static_cast<int>(fFit.fvActive.size());
  const auto nMeans = static_cast<int>(fSettings.GetPriorMeans().size());
  const auto nCovariances = static_cast<int>(fSettings.GetPriorCovMatrix().size());
  const bool isConjugate = fSettings.GetPriorType() == BSNConst::Conjugate;
  if (isConjugate && nMeans != q) {
    fStatuses.Fail(kPriorMeansLength, q, nMeans);
  } else if (isConjugate && nCovariances != 0 && nCovariances != q * (q + 1) / 2) {
    fStatuses.Fail(kPriorCovarianceLength, q * (q + 1) / 2, nCovariances);
  } else {
    // A parameter that wasn't given is negative, too.
    const bool isPositive = fSettings.GetPriorShape() > 0 && fSettings.GetPriorScale() > 0;
    auto prior = isConjugate && isPositive
                     ? ConjugatePrior(fSettings.GetPriorMeans(), fSettings.GetPriorCovMatrix(),
                                      fSettings.GetPriorShape(), fSettings.GetPriorScale())
                     : nullptr;
    if (!prior) fStatuses.Warn(kPriorMadeDiffuse);
    return prior;
  }
  return nullptr;
}

std::unique_ptr<NormalInverseGamma> RegressionInference::MakePosterior() const {
  if (fpPrior) return std::make_unique<NormalInverseGamma>(fpPrior->UpdatedBy(fFit.fEvidence));
  if (fFit.ResidualDF() <= 0) return nullptr;
  return std::make_unique<NormalInverseGamma>(fLeastSquares);
}

// Points have a variance, of 0.
void RegressionInference::WarnOfMissingVariances() const {
  if (fpPosterior && fpPosterior->IsPoint()) return;
  const double df = fpPosterior ? fpPosterior->DF() : 0;
  if (df <= 4) fStatuses.Warn(kErrorVarianceTooUncertain);
  if (df <= 2) fStatuses.Warn(kCoefficientsTooUncertain);
}

const MCRegrParameter& RegressionInference::Active(std::size_t i) const {
  return fFit.fvParameters[static_cast<std::size_t>(fFit.fvActive[i])];
}

RegressionInference::Quantity RegressionInference::Coefficient(std::size_t i) const {
  const auto q = static_cast<Eigen::Index>(fFit.fvActive.size());
  return {Eigen::VectorXd::Unit(q, static_cast<Eigen::Index>(i)), false};
}

RegressionInference::Quantity RegressionInference::PredictedResponse(const Values& point) const {
  const std::vector<double> record = RecordAt(fModel, point);
  if (!IsComplete(fModel, record.data())) return {{}, true};
  Eigen::VectorXd terms(static_cast<Eigen::Index>(fFit.fvActive.size()));
  for (std::size_t i = 0; i < fFit.fvActive.size(); ++i) {
    terms[static_cast<Eigen::Index>(i)] = TermOf(Active(i), record.data());
  }
  return {terms, true};
}

BayesEstimation RegressionInference::Estimate(const Quantity& quantity) const {
  if (!fpPosterior || quantity.fTerms.size() == 0) return {};
  const auto posterior = quantity.fIsResponse ? fpPosterior->Response(quantity.fTerms)
                                              : fpPosterior->LinearFunction(quantity.fTerms);
  return EstimationOf(posterior.get(), fSettings.GetCILevel(), fStatuses);
}

// The likelihood of a response is that of the data with it as one case more.
CurveSet RegressionInference::Draw(const Quantity& quantity) const {
  if (quantity.fTerms.size() == 0) return {};
  const Eigen::VectorXd& x = quantity.fTerms;
  const double further = quantity.fIsResponse ? 1 : 0;
  const Likelihood likelihood =
      MeanProfileLikelihood(1 / (further + fLeastSquares.LeverageOf(x)), fLeastSquares.LocationOf(x),
                            fFit.fEvidence.fN + further, fFit.fEvidence.fResidualSum);
  const auto distribution = [&](const std::unique_ptr<NormalInverseGamma>& of) {
    if (!of) return std::unique_ptr<Distribution>();
    return quantity.fIsResponse ? of->Response(x) : of->LinearFunction(x);
  };
  return DrawCurves(fSettings, likelihood, distribution(fpPosterior).get(),
                    PriorDensity(distribution(fpPrior)));
}

CurveSet RegressionInference::DrawErrorVariance() const {
  const Likelihood likelihood = ErrorVarianceLikelihood(fFit.fEvidence.fN, fFit.fEvidence.fResidualSum);
  const auto posterior = fpPosterior ? fpPosterior->ErrorVariance() : nullptr;
  const Density prior = fpPrior ? PriorDensity(fpPrior->ErrorVariance()) : ReferenceDensity;
  return DrawCurves(fSettings, likelihood, posterior.get(), prior);
}

// Without lists of variables to plot, all are.
bool RegressionInference::IsPlotted(const MCRegrParameter& parameter) const {
  const bool isEverything = fSettings.GetPlotFactors().empty() && fSettings.GetPlotCovars().empty();
  if (parameter.IsIntercept()) return true;
  if (parameter.GetNCovariates() > 0) {
    return isEverything || Contains(fSettings.GetPlotCovars(), parameter.GetCovariates()[0]);
  }
  const int factor = parameter.GetFactors()[0];
  if (!IsLevelPlotted(factor, parameter.GetCategories()[0])) return false;
  return isEverything || Contains(fSettings.GetPlotFactors(), factor);
}

// A listed factor with too many levels is not plotted at all; a list of levels stands for the only factor.
bool RegressionInference::IsLevelPlotted(int factor, int level) const {
  const auto isFactor = [factor](const RegressionFactor& other) { return other.fSlot == factor; };
  const auto found = std::find_if(fModel.fvFactors.begin(), fModel.fvFactors.end(), isFactor);
  const bool isListed = Contains(fSettings.GetPlotFactors(), factor);
  if (isListed && found->fLevels > fSettings.GetMaxNPlotCategories()) return false;
  return fSettings.GetPlotFactorCats().empty() || Contains(fSettings.GetPlotFactorCats(), level);
}

// Positions among the active parameters: the intercept, then variable by variable as the test lists them.
std::vector<int> RegressionInference::TestedParameters(const BayesFTest& test) const {
  std::vector<int> tested;
  if (test.HasIntercept()) tested.push_back(0);
  for (const int slot : test.GetVariables()) {
    for (std::size_t i = 1; i < fFit.fvActive.size(); ++i) {
      const MCRegrParameter& parameter = Active(i);
      const bool isOfVariable =
          Contains(parameter.GetFactors(), slot) || Contains(parameter.GetCovariates(), slot);
      if (isOfVariable && !Contains(tested, static_cast<int>(i))) tested.push_back(static_cast<int>(i));
    }
  }
  return tested;
}

MCTestStats RegressionInference::Test(int number, const BayesFTest& test) const {
  const std::vector<int> tested = TestedParameters(test);
  const auto q = static_cast<int>(tested.size());
  std::vector<double> values = test.GetTestValues();
  if (values.empty()) values.assign(tested.size(), 0);
  if (tested.empty()) {
    fStatuses.Warn(kNothingToTest);
  } else if (values.size() != tested.size()) {
    fStatuses.Warn(kTestValuesLength, number, q);
  } else if (fpPosterior && !fpPosterior->IsPoint()) {
    const double f = fpPosterior->FStatistic(tested, values);
    const double df = fpPosterior->DF();
    return {Shown(f), static_cast<double>(q), df, Shown(FSignificance(f, q, df))};
  }
  return {};
}

void RegressionInference::Report(Data& record) const {
  WarnOfMissingVariances();
  record.fvCoefficients.assign(fFit.fvParameters.size(), {});
  std::vector<CurveSet> curves(fFit.fvParameters.size());
  for (std::size_t i = 0; i < fFit.fvActive.size(); ++i) {
    const auto position = static_cast<std::size_t>(fFit.fvActive[i]);
    record.fvCoefficients[position] = Estimate(Coefficient(i));
    if (IsPlotted(Active(i))) curves[position] = Draw(Coefficient(i));
  }
  for (const CurveSet& curve : curves) record.fCoefficientCurves.Append(curve);

  const auto errorVariance = fpPosterior ? fpPosterior->ErrorVariance() : nullptr;
  record.fErrorVariance = EstimationOf(errorVariance.get(), fSettings.GetCILevel(), fStatuses);
  record.fErrorVarianceCurves = DrawErrorVariance();
  const Quantity response = PredictedResponse(record.fvPredictionPoint);
  record.fPredicted = Estimate(response);
  record.fPredictedCurves = Draw(response);
  for (const BayesFTest& test : fSettings.GetFTests()) {
    record.fvFTests.push_back(Test(static_cast<int>(record.fvFTests.size()), test));
  }
}

std::optional<RegressionScorer> RegressionInference::Scorer() const {
  if (!fpPosterior) return {};
  std::vector<MCRegrParameter> parameters;
  for (std::size_t i = 0; i < fFit.fvActive.size(); ++i) parameters.push_back(Active(i));
  return RegressionScorer(fModel, std::move(parameters), *fpPosterior, fSettings.GetCILevel(),
                          fSettings.GetComputeVarianceInScoring());
}

}  // namespace BayesComponent
