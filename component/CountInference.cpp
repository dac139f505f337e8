#include "component/CountInference.h"

#include <limits>

namespace BayesComponent {

namespace {

// Both parameters of a null prior, where none were given.
constexpr double kNullPrior = 2;

}  // namespace

CountInference::CountInference(const BSNSettings& settings, const CountModel& model, StatusList& statuses)
    : fSettings(settings), fModel(model), fStatuses(statuses) {}

void CountInference::Append(const CountSample& sample, std::size_t test, CountColumns columns) {
  AppendBayesFactorOf(sample, test, columns.fBayesFactors);
  std::unique_ptr<const Distribution> posterior;
  CurveSet curves;
  if (WantsPosterior(fSettings)) {
    const ConjugatePrior prior = Prior();
    const ConjugatePrior updated = fModel.Update(prior, sample);
    if (sample.fN > 0 && updated.IsProper()) {
      posterior = fModel.DistributionOf(updated);
    } else {
      fStatuses.Warn(kNoPosteriorOfCounts);
    }
    if (sample.fN > 0)
      curves = DrawCurves(fSettings, fModel.LikelihoodOf(sample), posterior.get(), DensityOf(prior));
  }
  columns.fPosterior.Append(Characterise(posterior.get(), fSettings.GetCILevel(), fStatuses));
  columns.fCurves.Append(curves);
}

void CountInference::AppendBayesFactorOf(const CountSample& sample, std::size_t test,
                                         LoggableColumns& columns) {
  if (!WantsBayesFactor(fSettings)) return AppendNoBayesFactor(columns);
  if (sample.fN == 0) {
    fStatuses.Warn(kNoCasesForBayesFactor);
    return AppendNoBayesFactor(columns);
  }
  AppendBayesFactor({LogBayesFactor(sample, test), true}, columns, fStatuses);
}

// NaN where a hypothesis has no marginal likelihood.
double CountInference::LogBayesFactor(const CountSample& sample, std::size_t test) const {
  constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();
  const ConjugatePrior alternative{EntryOf(fSettings.GetAlterPrior1s(), test),
                                   EntryOf(fSettings.GetAlterPrior2s(), test)};
  if (!alternative.IsProper()) return kUndefined;
  const double nullValue = EntryOf(fSettings.GetNullValues(), test);
  if (IsGiven(nullValue)) {
    return fModel.IsNullValue(nullValue) ? fModel.LogBF01(sample, nullValue, alternative) : kUndefined;
  }
  const ConjugatePrior null{GivenOr(EntryOf(fSettings.GetNullPrior1s(), test), kNullPrior),
                            GivenOr(EntryOf(fSettings.GetNullPrior2s(), test), kNullPrior)};
  return null.IsProper() ? fModel.LogBF01(sample, null, alternative) : kUndefined;
}

// What was given; Jeffreys' where nothing was, and where a custom prior was asked for, which counts don't
// have.
ConjugatePrior CountInference::Prior() {
  const ConjugatePrior jeffreys = fModel.JeffreysPrior();
  const ConjugatePrior prior{GivenOr(fSettings.GetPriorParam1(), jeffreys.fFirst),
                             GivenOr(fSettings.GetPriorParam2(), jeffreys.fSecond)};
  if (fSettings.GetPriorType() != BSNConst::Custom && prior.fFirst >= 0 && prior.fSecond >= 0) return prior;
  fStatuses.Warn(kPriorMadeDiffuse);
  return jeffreys;
}

Density CountInference::DensityOf(const ConjugatePrior& prior) const {
  return prior.IsProper() ? PriorDensity(fModel.DistributionOf(prior)) : fModel.KernelOf(prior);
}

}  // namespace BayesComponent
