// Parameters that another choice of the same command leaves without effect: they are not passed over in
// silence.
#include "bayesian/BYSParser.h"

namespace {

using Settings = MCBSN_850::BSNSettings;

bool IsRankCorrelation(const Settings& settings) {
  return settings.GetCorrTest() != BSNConst::Pearson;
}

bool HasNoScale(const Settings& settings) {
  return settings.GetLogLinModel() != BSNConst::Poisson;
}

bool HasNoLambdas(const Settings& settings) {
  return settings.GetLogLinModel() != BSNConst::Nonparametric &&
         settings.GetLogLinPriorType() != BSNConst::PriorMixtureDirichlet;
}

struct Idle {
  BSNConst::ModelTypes model;
  const char* subcommand;
  const char* parameter;
  bool (*isIdle)(const Settings&);
  const char* neededWith;  // what would give it an effect
};
constexpr Idle kIdle[] = {
    {BSNConst::Correlation, "ESTBF", "TYPE", &IsRankCorrelation, "CORR=PEARSON"},
    {BSNConst::LogLinear, "ESTBF", "SCALEPARAM", &HasNoScale, "MODEL=POISSON"},
    {BSNConst::LogLinear, "ESTBF", "LAMBDAS", &HasNoLambdas,
     "PRIOR_TYPE=MIXTURE_DIRICHLET, MODEL=NONPARAMETRIC"},
};

}  // namespace

void BYSParser::WarnAboutIdle(const CommandSpec& spec) const {
  for (const Idle& row : kIdle) {
    const SubComObj* subcommand = spec.getSubComObj(row.subcommand);
    if (!IsModel(row.model) || subcommand == nullptr || !row.isIdle(fSettings)) continue;
    if (subcommand->getParamObj(row.parameter) == nullptr) continue;
    WarnUsedOnlyWith(row.parameter, row.subcommand, row.neededWith);
  }
}
