#include "component/NormalMean.h"

#include <cmath>
#include <limits>

namespace BayesComponent {

Likelihood MeanLikelihood(double n, double mean, double variance) {
  const auto lnL = [=](double mu) { return -n * (mean - mu) * (mean - mu) / (2 * variance); };
  return {lnL, std::make_unique<NormalDistribution>(mean, variance / n)};
}

Likelihood MeanProfileLikelihood(double n, double mean, double allCases, double sumOfSquares) {
  if (!(sumOfSquares > 0)) return {};
  const auto lnL = [=](double mu) {
    return -allCases / 2 * std::log1p(n * (mean - mu) * (mean - mu) / sumOfSquares);
  };
  const double df = allCases - 1;
  return {lnL, std::make_unique<StudentDistribution>(df, mean, sumOfSquares / n / df)};
}

NormalMean::NormalMean(const BSNSettings& settings, const MeanStatusCodes& codes, StatusList& statuses)
    : fSettings(settings),
      fCodes(codes),
      fStatuses(statuses),
      fQuadrature(QuadratureOf(settings)),
      fRandom(settings.GetRandomSeed()) {}

void NormalMean::Append(const Moments& sample, double roundingNoise, std::size_t test, int statusDatum,
                        MeanTestColumns& columns) {
  const double nullValue = GivenOr(EntryOf(fSettings.GetNullValues(), test), 0);
  const MeanQuestion question{nullValue, EntryOf(fSettings.GetDataVarVals(), test),
                              EntryOf(fSettings.GetAlterGValues(), test), statusDatum};
  const double sumOfSquares = sample.SumOfSquares() <= roundingNoise ? 0 : sample.SumOfSquares();
  const Sample data{sample.Count(), sample.Mean(), sample.MeanMinus(nullValue), sumOfSquares};
  Report(data, question);
  columns.Append(Test(data, question));

  Inference inference;
  CurveSet curves;
  if (WantsPosterior(fSettings) && data.fN > 0) {
    inference = Infer(data, question);
    const bool isKnown = IsGiven(question.fKnownVariance);
    const Likelihood likelihood =
        isKnown ? MeanLikelihood(data.fN, data.fMean, question.fKnownVariance)
                : MeanProfileLikelihood(data.fN, data.fMean, data.fN, data.fSumOfSquares);
    curves = DrawCurves(fSettings, likelihood, inference.fPosterior.get(), PriorDensity(inference.fPrior));
  }
  columns.fPosterior.Append(Characterise(inference.fPosterior.get(), fSettings.GetCILevel(), fStatuses));
  columns.fCurves.Append(curves);
}

void NormalMean::Report(const Sample& sample, const MeanQuestion& question) {
  if (sample.fN < 2) {
    fStatuses.Warn(fCodes.fTooFewCases, question.fStatusDatum);
  } else if (sample.fSumOfSquares == 0) {
    fStatuses.Warn(fCodes.fConstant, question.fStatusDatum);
    const bool isLost = WantsBayesFactor(fSettings) && !IsGiven(question.fKnownVariance);
    if (isLost) fStatuses.Warn(kConstantNoBayesFactor);
  }
}

MeanTestRow NormalMean::Test(const Sample& sample, const MeanQuestion& question) {
  const double n = sample.fN;
  const bool isKnown = IsGiven(question.fKnownVariance);
  MeanTestRow row{n, kMissing, kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};
  if (n == 0) return row;
  row.fMean = Shown(sample.fMean);
  const double variance = n > 1 ? sample.fSumOfSquares / (n - 1) : kMissing;
  if (n > 1) row.fStdDev = Shown(std::sqrt(variance));
  if (n < 2 && !isKnown) return row;
  if (!isKnown) row.fDF = n - 1;

  const double stdError = std::sqrt((isKnown ? question.fKnownVariance : variance) / n);
  row.fStdError = Shown(stdError);
  if (stdError == 0) return row;
  const MeanTest test{sample.fDistance / stdError, n,
                      isKnown ? std::numeric_limits<double>::infinity() : n - 1};
  // Sums that left the range of a double.
  const bool isTestable = std::isfinite(stdError) && std::isfinite(test.fT);
  if (isTestable) {
    row.fT = test.fT;
    row.fSig = Shown(TwoSidedSignificance(test.fT, test.fDF));
  }
  if (WantsBayesFactor(fSettings)) {
    const LogIntegral failed{std::numeric_limits<double>::quiet_NaN(), false};
    row.fBayesFactor = BayesFactorOf(isTestable ? LogBayesFactor(test, question) : failed, fStatuses);
  }
  return row;
}

// Rouder et al. (2009): with a fixed g eq. (1) without its integral, else the integral.
LogIntegral NormalMean::LogBayesFactor(const MeanTest& test, const MeanQuestion& question) {
  const bool isKnown = IsGiven(question.fKnownVariance);
  if (isKnown || IsGiven(question.fG)) return {-LogBF10GivenG(test, GivenOr(question.fG, 1)), true};
  if (fSettings.GetMethodType() == BSNConst::AGL) return LogBF01Cauchy(test, 1, fQuadrature);
  return {LogBF01Cauchy(test, 1, SamplesOf(fSettings), fRandom), true};
}

NormalMean::Inference NormalMean::Infer(const Sample& sample, const MeanQuestion& question) {
  if (IsGiven(question.fKnownVariance)) return InferWithKnownVariance(sample, question.fKnownVariance);
  const VariancePrior prior = UsableVariancePrior();
  return prior.IsInformative() ? InferConjugate(sample, prior)
                               : InferNoninformative(sample, prior, question.fStatusDatum);
}

// The normal prior of the mean needs an informative variance prior beside it, and the reverse.
VariancePrior NormalMean::UsableVariancePrior() {
  const std::optional<VariancePrior> prior = VariancePriorOf(fSettings);
  const bool isFlatMean = fSettings.GetMeanDistType() == BSNConst::Diffuse;
  const bool isNormalMean = fSettings.GetMeanDistType() == BSNConst::Normal;
  if (prior && (prior->IsInformative() ? isNormalMean : isFlatMean)) return *prior;
  fStatuses.Warn(kPriorMadeDiffuse);
  return prior && !prior->IsInformative() ? *prior : kDiffuseVariance;
}

NormalMean::Inference NormalMean::InferWithKnownVariance(const Sample& sample, double variance) {
  const double precision = sample.fN / variance;
  const double location = GivenOr(fSettings.GetMeanDistParam1(), 0);
  const double priorVariance = GivenOr(fSettings.GetMeanDistParam2(), 1);
  if (fSettings.GetMeanDistType() == BSNConst::Normal && priorVariance > 0) {
    const double total = precision + 1 / priorVariance;
    const double mean = (precision * sample.fMean + location / priorVariance) / total;
    return {std::make_unique<NormalDistribution>(mean, 1 / total),
            std::make_shared<NormalDistribution>(location, priorVariance)};
  }
  if (fSettings.GetMeanDistType() != BSNConst::Diffuse) fStatuses.Warn(kPriorMadeDiffuse);
  return {std::make_unique<NormalDistribution>(sample.fMean, 1 / precision), nullptr};
}

// mu | sigma^2 ~ N(location, sigma^2/kappa) under an inverse chi-square variance.
// Gelman et al., Bayesian Data Analysis, 3rd ed., section 3.3.
NormalMean::Inference NormalMean::InferConjugate(const Sample& sample, const VariancePrior& prior) const {
  const double n = sample.fN;
  const double kappa = fSettings.GetKappaValue();
  const double location = GivenOr(fSettings.GetMeanDistParam1(), 0);
  const double kappaN = kappa + n;
  const double locationN = (kappa * location + n * sample.fMean) / kappaN;
  const double dfN = prior.fDF + n;
  const double shift = sample.fMean - location;
  const double sumN = prior.fSum + sample.fSumOfSquares + kappa * n / kappaN * shift * shift;
  return {std::make_unique<StudentDistribution>(dfN, locationN, sumN / dfN / kappaN),
          std::make_shared<StudentDistribution>(prior.fDF, location, prior.fSum / prior.fDF / kappa)};
}

// A flat mean: Student with n - 1 degrees of freedom, less or more by the power of sigma in the prior.
NormalMean::Inference NormalMean::InferNoninformative(const Sample& sample, const VariancePrior& prior,
                                                      int statusDatum) {
  if (sample.fSumOfSquares == 0) return {};
  const double n = sample.fN;
  const double df = prior.fDF + n - 1;
  if (prior.fDF == kDiffuseVariance.fDF && n <= 5) fStatuses.Warn(kDiffuseTooFewCases, statusDatum);
  if (prior.fDF == 0 && n <= 3) fStatuses.Warn(kJeffreysTooFewCases, statusDatum);
  if (df <= 0) return {};
  return {std::make_unique<StudentDistribution>(df, sample.fMean, sample.fSumOfSquares / df / n), nullptr};
}

}  // namespace BayesComponent
