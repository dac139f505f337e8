#include "component/SettingsView.h"

namespace BayesComponent {

double EntryOf(const std::vector<double>& values, std::size_t i) {
  return i < values.size() ? values[i] : kMissing;
}

const std::vector<int>& TestSlots(const BSNSettings& settings) {
  const bool isBinomial =
      settings.GetModelType() == BSNConst::OneSample && settings.GetTestDistType() == BSNConst::Binomial;
  return isBinomial ? settings.GetFactors() : settings.GetCovariates();
}

bool WantsBayesFactor(const BSNSettings& settings) {
  return settings.GetAnalysType() != BSNConst::Posterior;
}

bool WantsPosterior(const BSNSettings& settings) {
  return settings.GetAnalysType() != BSNConst::BayesFactor;
}

GaussLobatto QuadratureOf(const BSNSettings& settings) {
  const int refinements = settings.GetMaxIterations();
  return {GivenOr(settings.GetTolValue(), 1e-6), refinements < 0 ? 2000 : refinements};
}

int SamplesOf(const BSNSettings& settings) {
  return settings.GetMCSamples() > 0 ? settings.GetMCSamples() : 10000;
}

long PosteriorSamplesOf(const BSNSettings& settings) {
  return settings.GetPosteriorSamples() > 0 ? settings.GetPosteriorSamples() : 10000;
}

}  // namespace BayesComponent
