#include "component/CorrelationInference.h"

#include <cmath>
#include <limits>

#include "component/numeric/KendallCorrelation.h"
#include "component/numeric/LatentNormalRanks.h"
#include "component/numeric/PearsonCorrelation.h"

namespace BayesComponent {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Latent values are kept for every case: beyond this they would take gigabytes and days.
constexpr double kMostLatentCases = 5e6;

// Takes the quadrature's result or, where it failed or the settings want one, the Monte Carlo estimate.
template <class Quadrature, class Estimate>
void SetBayesFactor(PairInference& inference, const BSNSettings& settings, Quadrature quadrature,
                    Estimate estimate) {
  if (!WantsBayesFactor(settings)) return;
  const bool isMonteCarlo = settings.GetMethodType() == BSNConst::MCA;
  if (!isMonteCarlo) inference.fLogBF01 = quadrature();
  inference.fIsEstimate = !isMonteCarlo && !inference.fLogBF01->fConverged;
  if (isMonteCarlo || inference.fIsEstimate) inference.fLogBF01 = LogIntegral{estimate(), true};
}

Density PriorOf(const BSNSettings& settings, const CoefficientScale& scale) {
  const CorrelationPrior prior(settings.GetCorrCValue());
  return [prior, scale](double value) { return prior.Density(scale, value); };
}

void SetPosterior(PairInference& inference, std::unique_ptr<const CorrelationDistribution> posterior) {
  inference.fPosteriorConverged = !posterior || posterior->HasConverged();
  inference.fPosterior = std::move(posterior);
}

// The posterior's logarithm less the prior's, its maximum 0.
Likelihood LikelihoodBehind(const RankPosterior& posterior, const Density& prior) {
  const auto distribution = std::make_shared<RankPosterior>(posterior);
  const auto lnL = [distribution, prior](double x) {
    return std::log(distribution->Density(x)) - std::log(prior(x));
  };
  constexpr double kTail = 0.0005;
  const double peak = FindPeak(lnL, posterior.LowerQuantile(kTail), posterior.UpperQuantile(kTail));
  const double largest = lnL(peak);
  return {[lnL, largest](double x) { return lnL(x) - largest; }, std::make_unique<RankPosterior>(posterior)};
}

}  // namespace

PairInference InferPearson(const PairSample& sample, const BSNSettings& settings, RandomStream& random,
                           const std::function<bool()>&) {
  const PearsonSample pearson{sample.fCoefficient, sample.fN};
  const GaussLobatto quadrature = QuadratureOf(settings);
  const double null = settings.GetNullValue();
  const double c = settings.GetCorrCValue();
  const int samples = SamplesOf(settings);
  PairInference inference;
  if (settings.GetEstBFType() == BSNConst::EstFraction) {
    const FractionalPrior prior{c, GivenOr(settings.GetRegrComPar(), 0.5)};
    SetBayesFactor(
        inference, settings, [&] { return LogBF01Fractional(pearson, null, prior, quadrature); },
        [&] { return LogBF01Fractional(pearson, null, prior, samples, random); });
  } else {
    SetBayesFactor(
        inference, settings, [&] { return LogBF01Jzs(pearson, null, quadrature); },
        [&] { return LogBF01Jzs(pearson, null, samples, random); });
  }
  if (!WantsPosterior(settings)) return inference;
  SetPosterior(inference, PearsonPosterior(pearson, c, quadrature));
  inference.fPrior = PriorOf(settings, kPearsonScale);
  if (!sample.fIsDrawn) return inference;
  const auto lnL = [pearson](double rho) {
    return LogProfileLikelihood(pearson, std::atanh(rho) - std::atanh(pearson.fR));
  };
  inference.fLikelihood = {lnL, NormalisedProfileLikelihood(pearson, quadrature)};
  return inference;
}

// The Bayes factor is the ratio of posterior to prior density at the null value (Savage and Dickey).
PairInference InferSpearman(const PairSample& sample, const BSNSettings& settings, RandomStream& random,
                            const std::function<bool()>& isCancelled) {
  const CorrelationPrior prior(settings.GetCorrCValue());
  PairInference inference;
  inference.fPrior = PriorOf(settings, kSpearmanScale);
  if (WantsBayesFactor(settings)) inference.fLogBF01 = LogIntegral{kNaN, true};
  if (!prior.IsProper() || sample.fN > kMostLatentCases) return inference;
  const double nullU = kSpearmanScale.fInverse(settings.GetNullValue());
  const LatentQuestion question{settings.GetCorrCValue(), nullU, PosteriorSamplesOf(settings)};
  const LatentAnswer answer = InferLatentRanks(sample.fvCases, question, random, isCancelled);
  if (!answer.fPosterior) return inference;
  if (WantsBayesFactor(settings)) {
    inference.fLogBF01 = LogIntegral{answer.fLogDensityAtNull - prior.LogDensity(nullU), true};
  }
  if (!WantsPosterior(settings)) return inference;
  inference.fPosterior = answer.fPosterior;
  if (!sample.fIsDrawn) return inference;
  inference.fLikelihood = LikelihoodBehind(*answer.fPosterior, inference.fPrior);
  return inference;
}

// The Bayes factor as for Spearman's coefficient.
PairInference InferKendall(const PairSample& sample, const BSNSettings& settings, RandomStream& random,
                           const std::function<bool()>&) {
  const KendallLikelihood likelihood(sample.fCoefficient, sample.fN);
  const GaussLobatto quadrature = QuadratureOf(settings);
  const double c = settings.GetCorrCValue();
  PairInference inference;
  inference.fPrior = PriorOf(settings, kKendallScale);
  if (!CorrelationPrior(c).IsProper()) {
    if (WantsBayesFactor(settings)) inference.fLogBF01 = LogIntegral{kNaN, true};
    return inference;
  }
  const LogFunction lnF = likelihood.Times(c);
  const auto bayesFactorOf = [&](double lnIntegral) {
    return likelihood.LogBF01(settings.GetNullValue(), c, lnIntegral);
  };
  SetBayesFactor(
      inference, settings,
      [&] {
        const LogIntegral integral = PeakedIntegral(lnF, likelihood.WidthTimes(c), quadrature).Result();
        return LogIntegral{bayesFactorOf(integral.fLogValue), integral.fConverged};
      },
      [&] {
        return bayesFactorOf(LogPeakedIntegral(lnF, likelihood.WidthTimes(c), SamplesOf(settings), random));
      });
  if (!WantsPosterior(settings)) return inference;
  SetPosterior(inference, likelihood.Posterior(c, quadrature));
  if (!sample.fIsDrawn) return inference;
  inference.fLikelihood = {[likelihood](double tau) { return likelihood.LogOf(tau); },
                           likelihood.Normalised(quadrature)};
  return inference;
}

}  // namespace BayesComponent
