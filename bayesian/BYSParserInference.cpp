// INFERENCE: what is tested, and how.
#include "bayesian/BYSParser.h"

bool BYSParser::ProcessInferenceSubCom(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("DISTRIBUTION")) {
    fSettings.SetTestDistType(param->isStringValueCase("BINOMIAL")  ? BSNConst::Binomial
                              : param->isStringValueCase("POISSON") ? BSNConst::Poisson
                                                                    : BSNConst::Normal);
  }
  if (const ParamObj* param = subcommand.getParamObj("VARIABLES")) {
    if (!ReadTestVariables(*param, subcommand.getName())) return false;
  }
  if (const ParamObj* param = subcommand.getParamObj("ANALYSIS")) {
    fSettings.SetAnalysType(param->isStringValueCase("BAYESFACTOR") ? BSNConst::BayesFactor
                            : param->isStringValueCase("BOTH")      ? BSNConst::Both
                                                                    : BSNConst::Posterior);
  }
  return true;
}

// A proportion can be that of any variable's values; everything else needs numbers.
bool BYSParser::ReadTestVariables(const ParamObj& param, const std::string& subcommand) {
  constexpr int kMinCorrelationVars = 2;
  const bool binomial = fSettings.GetTestDistType() == BSNConst::Binomial;
  fInferenceVars.SetNumericVars(!binomial);
  if (!fInferenceVars.ValidateVariables(param.getTokenList()) ||
      !fInferenceVars.CheckCommonVars(fWeightVar)) {
    return false;
  }
  const std::vector<int>& variables = fInferenceVars.GetVariables();
  if (binomial) {
    fSettings.SetFactors(variables);
    fSpecs.SetBinInfoElems(std::vector<BinInfoElem>(variables.size()));
    return true;
  }
  fSettings.SetCovariates(variables);
  if (IsModel(BSNConst::Correlation) && fInferenceVars.GetNValidVars() < kMinCorrelationVars) {
    fMessage.GenericError("Not enough corr var, param ^1, subcom ^2 ...", "VARIABLES", subcommand);
    return false;
  }
  return true;
}
