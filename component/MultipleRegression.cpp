// Linear regression and one-way analysis of variance.
#include <limits>

#include "component/Analysis.h"
#include "component/RegressionData.h"
#include "component/RegressionInference.h"
#include "component/RegressionRecord.h"
#include "component/Results.h"

namespace BayesComponent {

namespace {

using Record = MCBSN_850::BSNMultiRegOutputStats;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class MultipleRegression : public Analysis {
 public:
  MultipleRegression(const BSNSettings& settings, StatusList& statuses)
      : fSettings(settings),
        fStatuses(statuses),
        fModel(ModelPredictors(settings)),
        fFullModel(IsFullModelNeeded() ? FullModelPredictors(settings) : Predictors()),
        fData(settings, Union(fModel, fFullModel)) {}

  std::vector<int> RequiredSlots() const override {
    std::vector<int> slots = SlotsOf(Union(fModel, fFullModel));
    slots.push_back(fSettings.GetDependentVar());
    return slots;
  }

  void Accumulate(const double* record, double weight) override { fData.Add(record, weight); }

  std::unique_ptr<BSNOutputStats> Finish() override;

 private:
  bool IsAnova() const { return fSettings.GetModelType() == BSNConst::Anova; }
  bool IsFullModelNeeded() const {
    return WantsBayesFactor(fSettings) && fSettings.GetCompareType() == BSNConst::FullModel;
  }
  bool IsFittable(const ModelFit& fit) const;
  void Summarise(const ModelFit& fit, Record::Data& record) const;
  void FillBayesFactor(const ModelFit& fit, Record::Data& record) const;
  std::optional<LogIntegral> LogBayesFactor(const ModelFit& fit, const ModelFit* full) const;
  LogIntegral LogBF10(const ModelFit& fit) const;
  LogIntegral LogBF10Rouder(const ModelFit& fit) const;
  Values PredictionPoint() const;

  const BSNSettings& fSettings;
  StatusList& fStatuses;
  Predictors fModel;
  Predictors fFullModel;
  RegressionData fData;
};

bool MultipleRegression::IsFittable(const ModelFit& fit) const {
  if (fit.fTotalSum == 0) {
    fStatuses.Fail(kDependentConstant);
  } else if (fit.SlopeCount() == 0) {
    fStatuses.Fail(kPredictorsConstant);
  }
  return !fStatuses.Error().IsError();
}

void MultipleRegression::Summarise(const ModelFit& fit, Record::Data& record) const {
  const double p = fit.SlopeCount();
  const double residualDF = fit.ResidualDF();
  const double totalDF = p + residualDF;
  const double regressionMean = fit.fExplainedSum / p;
  const double residualMean = fit.fEvidence.fResidualSum / residualDF;
  const double f = regressionMean / residualMean;
  record.fvAnova = {fit.fExplainedSum,
                    p,
                    regressionMean,
                    f,
                    FSignificance(f, p, residualDF),
                    fit.fEvidence.fResidualSum,
                    residualDF,
                    residualMean,
                    fit.fTotalSum,
                    totalDF};
  for (double& value : record.fvAnova) value = Shown(value);
  record.fRSquared = Shown(fit.Shares().fExplained);
  record.fAdjRSquared = Shown(1 - residualMean / (fit.fTotalSum / totalDF));

  record.fvParameters = fit.fvParameters;
  record.fRedundancy = MCMath_850::MCBitSet(fit.fvParameters.size());
  for (std::size_t i = 0; i < fit.fvParameters.size(); ++i) record.fRedundancy.Insert(i);
  for (const int active : fit.fvActive) record.fRedundancy.Remove(static_cast<std::size_t>(active));
}

LogIntegral MultipleRegression::LogBF10Rouder(const ModelFit& fit) const {
  const double scale = GivenOr(fSettings.GetRegrComPar(), 1);
  if (!(scale > 0)) return {kNaN, false};
  const GaussLobatto quadrature = QuadratureOf(fSettings);
  if (!IsAnova()) return LogBF10Cauchy(fit.Shares(), scale, quadrature);
  return LogBF10Effects(fData.FitEffects(fit.fEvidence.fResidualSum), scale, quadrature);
}

LogIntegral MultipleRegression::LogBF10(const ModelFit& fit) const {
  const double parameter = fSettings.GetRegrComPar();
  const double g = GivenOr(parameter, fit.fEvidence.fN);
  const double a = GivenOr(parameter, 3);
  switch (fSettings.GetRegrCompType()) {
    case BSNConst::JZS:
      return LogBF10Cauchy(fit.Shares(), 1, QuadratureOf(fSettings));
    case BSNConst::Zellner:
      return {g > 0 ? LogBF10GivenG(fit.Shares(), g) : kNaN, true};
    case BSNConst::Hyper:
      if (a > 2 && a <= 4) return LogBF10HyperG(fit.Shares(), a, QuadratureOf(fSettings));
      break;
    case BSNConst::Rouder:
      return LogBF10Rouder(fit);
    default:
      break;
  }
  return {kNaN, false};
}

// Over the full model, where there is one. Nothing, with a status, where there is no Bayes factor.
std::optional<LogIntegral> MultipleRegression::LogBayesFactor(const ModelFit& fit,
                                                              const ModelFit* full) const {
  const bool isEstimable = fit.ResidualDF() > 0;
  const bool isFullEstimable = !full || full->ResidualDF() > 0;
  if (!isEstimable) fStatuses.Warn(kTooManyParameters);
  if (!isFullEstimable) fStatuses.Warn(kFullModelTooLarge);
  if (!isEstimable || !isFullEstimable) return {};
  if (fit.IsPerfect() || (full && full->IsPerfect())) {
    fStatuses.Warn(kPerfectFit);
    return {};
  }
  LogIntegral result = LogBF10(fit);
  if (full) {
    const LogIntegral ofFull = LogBF10(*full);
    result = {result.fLogValue - ofFull.fLogValue, result.fConverged && ofFull.fConverged};
  }
  return result;
}

void MultipleRegression::FillBayesFactor(const ModelFit& fit, Record::Data& record) const {
  std::optional<ModelFit> full;
  if (IsFullModelNeeded()) full = fData.Fit(fFullModel);
  if (full) record.fRSquaredFull = Shown(full->Shares().fExplained);
  const std::optional<LogIntegral> lnBayesFactor = LogBayesFactor(fit, full ? &*full : nullptr);
  if (!lnBayesFactor) return;
  if (IsAnova()) {
    record.fBayesFactor = BayesFactorOf(*lnBayesFactor, fStatuses);
    return;
  }
  LoggableColumns column;
  AppendBayesFactor(*lnBayesFactor, column, fStatuses);
  record.fBayesFactor = column.fvValues.front();
  record.fIsLogBayesFactor = column.fvAreLogs.front();
}

// As the settings give it; else factors at their last level and covariates at their means.
Values MultipleRegression::PredictionPoint() const {
  Values point;
  for (const RegressionFactor& factor : fModel.fvFactors) point.push_back(factor.fLevels - 1);
  for (const int covariate : fModel.fvCovariates) point.push_back(Shown(fData.MeanOf(covariate)));
  for (std::size_t i = 0; i < point.size(); ++i) {
    point[i] = GivenOr(EntryOf(fSettings.GetRegressors(), i), point[i]);
  }
  return point;
}

std::unique_ptr<BSNOutputStats> MultipleRegression::Finish() {
  if (fData.CaseCount() == 0) {
    fStatuses.Fail(kNoValidCases);
    return nullptr;
  }
  const ModelFit fit = fData.Fit(fModel);
  if (!IsFittable(fit)) return nullptr;
  if (fit.fHasAliased) fStatuses.Warn(kRedundantParameter);
  auto record = std::make_shared<Record::Data>();
  Summarise(fit, *record);
  if (WantsBayesFactor(fSettings)) FillBayesFactor(fit, *record);
  record->fvPredictionPoint = PredictionPoint();
  const RegressionInference inference(fSettings, fModel, fit, fStatuses);
  if (fStatuses.Error().IsError()) return nullptr;
  if (WantsPosterior(fSettings)) inference.Report(*record);
  record->fDependent = fSettings.GetDependentVar();
  record->fFrequencyWeight = fSettings.GetFrequencyWeightVar();
  record->fRegressionWeight = fSettings.GetRegrWeightVar();
  record->fLevel = fSettings.GetCILevel();
  record->fScorer = inference.Scorer();
  return std::make_unique<Record>(record);
}

}  // namespace

std::unique_ptr<Analysis> MakeMultipleRegression(const BSNSettings& settings, StatusList& statuses) {
  return std::make_unique<MultipleRegression>(settings, statuses);
}

}  // namespace BayesComponent
