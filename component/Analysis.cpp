#include "component/Analysis.h"

namespace BayesComponent {

namespace {

struct AnalysisKind {
  BSNConst::ModelTypes fModel;
  BSNConst::DistTypes fTestDistribution;
  std::unique_ptr<Analysis> (*fMake)(const BSNSettings&, StatusList&);
};

constexpr AnalysisKind kKinds[] = {
    {BSNConst::OneSample, BSNConst::Normal, MakeOneSampleNormal},
    {BSNConst::OneSample, BSNConst::Binomial, MakeOneSampleBinomial},
    {BSNConst::OneSample, BSNConst::Poisson, MakeOneSamplePoisson},
    {BSNConst::Related, BSNConst::Normal, MakeRelatedSamples},
    {BSNConst::Independent, BSNConst::Normal, MakeIndependentSamples},
    {BSNConst::Regression, BSNConst::Normal, MakeMultipleRegression},
    {BSNConst::Anova, BSNConst::Normal, MakeMultipleRegression},
    {BSNConst::Correlation, BSNConst::Normal, MakeCorrelation},
    {BSNConst::LogLinear, BSNConst::Normal, MakeLogLinear},
};

}  // namespace

std::unique_ptr<Analysis> MakeAnalysis(const BSNSettings& settings, StatusList& statuses) {
  for (const AnalysisKind& kind : kKinds) {
    if (kind.fModel == settings.GetModelType() && kind.fTestDistribution == settings.GetTestDistType()) {
      return kind.fMake(settings, statuses);
    }
  }
  return nullptr;
}

}  // namespace BayesComponent
