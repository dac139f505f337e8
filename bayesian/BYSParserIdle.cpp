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

// Null for `isIdle`: always; for `neededWith`: nothing would give it an effect.
struct Idle {
  BSNConst::ModelTypes model;
  const char* subcommand;
  const char* parameter;
  bool (*isIdle)(const Settings&);
  const char* neededWith;
};
constexpr Idle kIdle[] = {
    {BSNConst::Correlation, "ESTBF", "TYPE", &IsRankCorrelation, "CORR=PEARSON"},
    // Nothing is integrated numerically.
    {BSNConst::LogLinear, "CRITERIA", "TOL", nullptr, nullptr},
    {BSNConst::LogLinear, "CRITERIA", "MAXITER", nullptr, nullptr},
    {BSNConst::LogLinear, "ESTBF", "SCALEPARAM", &HasNoScale, "MODEL=POISSON"},
    {BSNConst::LogLinear, "ESTBF", "LAMBDAS", &HasNoLambdas,
     "PRIOR_TYPE=MIXTURE_DIRICHLET, MODEL=NONPARAMETRIC"},
};

}  // namespace

void BYSParser::WarnAboutIdle(const CommandSpec& spec) const {
  for (const Idle& row : kIdle) {
    const SubComObj* subcommand = spec.getSubComObj(row.subcommand);
    if (!IsModel(row.model) || subcommand == nullptr) continue;
    if (row.isIdle != nullptr && !row.isIdle(fSettings)) continue;
    if (subcommand->getParamObj(row.parameter) == nullptr) continue;
    if (row.neededWith != nullptr) {
      WarnUsedOnlyWith(row.parameter, row.subcommand, row.neededWith);
    } else {
      fMessage.GenericWarning("Param ^1, subcom ^2, no effect in command ^3 ...", row.parameter,
                              row.subcommand, fDescriptor.GetCommandName());
    }
  }
}
