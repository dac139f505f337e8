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

bool HasReferencePrior(const Settings& settings) {
  return settings.GetPriorType() != BSNConst::Conjugate;
}

bool Always(const Settings& /*settings*/) {
  return true;
}

constexpr unsigned Bit(BSNConst::ModelTypes type) {
  return 1U << static_cast<unsigned>(type);
}
constexpr unsigned kModels = Bit(BSNConst::Regression) | Bit(BSNConst::Anova);

struct Idle {
  unsigned commands;
  const char* subcommand;
  const char* parameter;
  bool (*isIdle)(const Settings&);
  const char* neededWith;  // what would give it an effect
};
constexpr Idle kIdle[] = {
    {Bit(BSNConst::Correlation), "ESTBF", "TYPE", &IsRankCorrelation, "CORR=PEARSON"},
    {Bit(BSNConst::LogLinear), "ESTBF", "SCALEPARAM", &HasNoScale, "MODEL=POISSON"},
    {Bit(BSNConst::LogLinear), "ESTBF", "LAMBDAS", &HasNoLambdas,
     "PRIOR_TYPE=MIXTURE_DIRICHLET, MODEL=NONPARAMETRIC"},
    {kModels, "PRIOR", "SHAPEPARAM", &HasReferencePrior, "TYPE=CONJUGATE"},
    {kModels, "PRIOR", "SCALEPARAM", &HasReferencePrior, "TYPE=CONJUGATE"},
    {kModels, "PRIOR", "MEANVECTOR", &HasReferencePrior, "TYPE=CONJUGATE"},
    {kModels, "PRIOR", "VMATRIX", &HasReferencePrior, "TYPE=CONJUGATE"},
    {Bit(BSNConst::Anova), "PREDICT", "REGRESSORS", &Always, "BAYES REGRESSION"},
};

}  // namespace

void BYSParser::WarnAboutIdle(const CommandSpec& spec) const {
  for (const Idle& row : kIdle) {
    const SubComObj* subcommand = spec.getSubComObj(row.subcommand);
    if ((row.commands & Bit(fModelType)) == 0 || subcommand == nullptr || !row.isIdle(fSettings)) continue;
    if (subcommand->getParamObj(row.parameter) == nullptr) continue;
    fMessage.GenericWarning("Param ^1, subcom ^2, used only with ^3 ...", row.parameter, row.subcommand,
                            row.neededWith);
  }
}
