// Parameters that another choice of the same command leaves without effect: they are not passed over in
// silence.
#include <algorithm>
#include <set>

#include "bayesian/BYSCommandSets.h"
#include "bayesian/BYSParser.h"

namespace {

using namespace BYSCommandSets;
using Settings = MCBSN_850::BSNSettings;
using Words = std::vector<const char*>;

bool Always(const Settings& /*settings*/) {
  return true;
}

bool HasNoPosterior(const Settings& settings) {
  return settings.GetAnalysType() == BSNConst::BayesFactor;
}

bool HasNoBayesFactor(const Settings& settings) {
  return settings.GetAnalysType() == BSNConst::Posterior;
}

bool IsCount(const Settings& settings) {
  return settings.GetTestDistType() != BSNConst::Normal;
}

bool IsNormal(const Settings& settings) {
  return !IsCount(settings);
}

bool IsNotBinomial(const Settings& settings) {
  return settings.GetTestDistType() != BSNConst::Binomial;
}

bool IsGiven(const std::vector<double>& values, std::size_t test) {
  return test < values.size() && values[test] != MCCommon_850::MCMV::Missing();
}

bool AreAllGiven(const std::vector<double>& values) {
  const double missing = MCCommon_850::MCMV::Missing();
  return !values.empty() && std::find(values.begin(), values.end(), missing) == values.end();
}

// Every test has a known variance or a fixed g, so that its Bayes factor is a closed form.
bool HasNoIntegral(const Settings& settings) {
  const std::vector<double>& variances = settings.GetDataVarVals();
  for (std::size_t test = 0; test < variances.size(); ++test) {
    if (!IsGiven(variances, test) && !IsGiven(settings.GetAlterGValues(), test)) return false;
  }
  return !variances.empty();
}

bool HasKnownVariances(const Settings& settings) {
  return AreAllGiven(settings.GetDataVarVals());
}

bool HasNullValues(const Settings& settings) {
  return AreAllGiven(settings.GetNullValues());
}

bool IsQuadrature(const Settings& settings) {
  return settings.GetMethodType() == BSNConst::AGL;
}

bool IsMonteCarlo(const Settings& settings) {
  return settings.GetMethodType() == BSNConst::MCA;
}

bool HasFlatMean(const Settings& settings) {
  return settings.GetMeanDistType() == BSNConst::Diffuse;
}

bool HasFlatVariance(const Settings& settings) {
  const BSNConst::DistTypes prior = settings.GetPriorDistType();
  return prior == BSNConst::Diffuse || prior == BSNConst::Jeffreys2 || prior == BSNConst::Jeffreys4;
}

bool HasFlatPrior(const Settings& settings) {
  return IsNormal(settings) && settings.GetPriorType() == BSNConst::Conjugate && HasFlatVariance(settings) &&
         HasFlatMean(settings);
}

bool IsPearsonSix(const Settings& settings) {
  return settings.GetRegrCompType() == BSNConst::Hyper;
}

bool IsZellner(const Settings& settings) {
  return settings.GetRegrCompType() == BSNConst::Zellner;
}

bool IsRankCorrelation(const Settings& settings) {
  return settings.GetCorrTest() != BSNConst::Pearson;
}

bool IsSpearman(const Settings& settings) {
  return settings.GetCorrTest() == BSNConst::Spearman;
}

bool IsNotSpearman(const Settings& settings) {
  return !IsSpearman(settings);
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

// How the message names the reason.
constexpr const char* kOnlyWith = "Param ^1, subcom ^2, used only with ^3 ...";
constexpr const char* kBeside = "Param ^1, subcom ^2, no effect beside ^3 ...";
constexpr const char* kInCommand = "Param ^1, subcom ^2, no effect in command ^3 ...";

constexpr const char* kWithPosterior = "ANALYSIS=POSTERIOR, BOTH";
constexpr const char* kWithBayesFactor = "ANALYSIS=BAYESFACTOR, BOTH";

struct Idle {
  unsigned commands;
  const char* subcommand;
  Words parameters;
  bool (*isIdle)(const Settings&);
  const char* message;
  const char* reason = nullptr;   // null: the command's name
  const char* partner = nullptr;  // idle only in a subcommand that gives this parameter too; null: in any
};

// The first reason that holds for a parameter is the one that is told.
// clang-format off
const std::vector<Idle>& Rows() {
  static const std::vector<Idle> rows{
    {kOne, "CRITERIA", {"METHOD", "SEED", "TOL", "MAXITER", "MCSAMPLES"}, &IsCount, kOnlyWith, "DISTRIBUTION=NORMAL"},
    {kOne, "PRIOR", {"VARDIST", "PRECDIST", "MEANDIST", "KAPPA"}, &IsCount, kOnlyWith, "DISTRIBUTION=NORMAL"},
    {kOne, "DATA", {"VARIANCE", "ALTERGVALUE"}, &IsCount, kOnlyWith, "DISTRIBUTION=NORMAL"},
    {kOne, "DATA", {"NULLPRIORPARAM", "ALTERPRIORPARAM"}, &IsNormal, kOnlyWith, "DISTRIBUTION=BINOMIAL, POISSON"},
    {kOne, "DATA", {"SUCCESS"}, &IsNotBinomial, kOnlyWith, "DISTRIBUTION=BINOMIAL"},
    {kInd, "PRIOR", {"KAPPA"}, &Always, kInCommand},
    {kLog, "CRITERIA", {"TOL", "MAXITER"}, &Always, kInCommand},  // nothing is integrated numerically
    {kAnv, "PREDICT", {"REGRESSORS"}, &Always, kOnlyWith, "BAYES REGRESSION"},

    {kAll & ~kModels, "CRITERIA", {"CILEVEL"}, &HasNoPosterior, kOnlyWith, kWithPosterior},
    {kTests, "PRIOR", {"TYPE", "VARDIST", "PRECDIST", "MEANDIST", "KAPPA"}, &HasNoPosterior, kOnlyWith, kWithPosterior},
    {kOne | kRel | kCor, "CRITERIA", {"METHOD", "MCSAMPLES"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},
    {kOne | kRel, "CRITERIA", {"SEED"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},
    {kTests | kModels, "CRITERIA", {"TOL", "MAXITER"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},
    {kOne, "DATA", {"NULLVALUE", "ALTERGVALUE", "NULLPRIORPARAM", "ALTERPRIORPARAM"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},
    {kRel, "PAIR", {"NULLVALUE", "ALTERGVALUE"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},
    {kInd | kCor | kModels, "ESTBF", {"COMPUTATION", "COMPARE", "TYPE", "NULLVALUE"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},

    {kOne, "DATA", {"NULLPRIORPARAM"}, &HasNullValues, kBeside, "NULLVALUE"},
    {kOne, "DATA", {"NULLPRIORPARAM"}, &Always, kBeside, "NULLVALUE", "NULLVALUE"},
    {kOne | kRel, "CRITERIA", {"METHOD", "SEED", "TOL", "MAXITER", "MCSAMPLES"}, &HasNoIntegral, kBeside, "VARIANCE, ALTERGVALUE"},
    {kOne | kRel, "CRITERIA", {"SEED", "MCSAMPLES"}, &IsQuadrature, kOnlyWith, "METHOD=MCA"},
    {kOne | kRel, "CRITERIA", {"TOL", "MAXITER"}, &IsMonteCarlo, kOnlyWith, "METHOD=AGL"},
    {kInd, "CRITERIA", {"TOL", "MAXITER"}, &IsPearsonSix, kBeside, "COMPUTATION=HYPER"},
    {kModels, "CRITERIA", {"TOL", "MAXITER"}, &IsZellner, kBeside, "COMPUTATION=ZELLNER"},
    {kCor, "CRITERIA", {"TOL", "MAXITER", "MCSAMPLES"}, &IsSpearman, kOnlyWith, "CORR=PEARSON, KENDALL"},
    {kCor, "CRITERIA", {"POSTSAMPLES"}, &IsNotSpearman, kOnlyWith, "CORR=SPEARMAN"},
    {kLog, "CRITERIA", {"POSTSAMPLES"}, &HasNoPosterior, kOnlyWith, kWithPosterior},

    {kOne | kRel, "PRIOR", {"VARDIST", "PRECDIST", "KAPPA"}, &HasKnownVariances, kBeside, "VARIANCE"},
    {kInd, "PRIOR", {"VARDIST", "PRECDIST", "EQUALDATAVAR"}, &HasKnownVariances, kBeside, "DATAVAR"},
    {kOne | kRel, "PRIOR", {"KAPPA"}, &HasFlatMean, kOnlyWith, "MEANDIST=NORMAL"},
    {kOne | kRel, "PRIOR", {"KAPPA"}, &HasFlatVariance, kOnlyWith, "VARDIST=INVCHISQ, INVGAMMA, PRECDIST"},
    {kTests, "PRIOR", {"TYPE"}, &HasFlatPrior, kOnlyWith, "VARDIST, PRECDIST, MEANDIST=NORMAL"},

    {kCor, "ESTBF", {"TYPE"}, &IsRankCorrelation, kOnlyWith, "CORR=PEARSON"},
    {kLog, "ESTBF", {"MODEL", "FIX_MARGIN", "PRIOR_TYPE", "SCALEPARAM", "LAMBDAS"}, &HasNoBayesFactor, kOnlyWith, kWithBayesFactor},
    {kLog, "ESTBF", {"SCALEPARAM"}, &HasNoScale, kOnlyWith, "MODEL=POISSON"},
    {kLog, "ESTBF", {"LAMBDAS"}, &HasNoLambdas, kOnlyWith, "PRIOR_TYPE=MIXTURE_DIRICHLET, MODEL=NONPARAMETRIC"},
    {kModels, "PRIOR", {"SHAPEPARAM", "SCALEPARAM", "MEANVECTOR", "VMATRIX"}, &HasReferencePrior, kOnlyWith, "TYPE=CONJUGATE"},
  };
  return rows;
}
// clang-format on

bool Names(const std::vector<const SubComObj*>& subcommands, const char* parameter, const char* partner) {
  return std::any_of(subcommands.begin(), subcommands.end(), [&](const SubComObj* subcommand) {
    return subcommand->getParamObj(parameter) != nullptr &&
           (partner == nullptr || subcommand->getParamObj(partner) != nullptr);
  });
}

}  // namespace

void BYSParser::WarnAboutIdle(const CommandSpec& spec) const {
  std::set<std::pair<std::string, std::string>> told;
  for (const Idle& row : Rows()) {
    if ((row.commands & Bit(fModelType)) == 0 || !row.isIdle(fSettings)) continue;
    std::vector<const SubComObj*> subcommands;
    spec.getSubComObj(row.subcommand, subcommands);
    for (const char* parameter : row.parameters) {
      if (!Names(subcommands, parameter, row.partner)) continue;
      if (!told.emplace(row.subcommand, parameter).second) continue;
      fMessage.GenericWarning(row.message, parameter, row.subcommand,
                              row.reason == nullptr ? fDescriptor.GetCommandName() : row.reason);
    }
  }
}
