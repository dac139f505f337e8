// INFERENCE: what is tested, and how. PAIR: the pairs of the related samples command.
#include <algorithm>

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
  if (!ReadGroup(subcommand)) return false;
  if (const ParamObj* param = subcommand.getParamObj("ANALYSIS")) {
    fSettings.SetAnalysType(param->isStringValueCase("BAYESFACTOR") ? BSNConst::BayesFactor
                            : param->isStringValueCase("BOTH")      ? BSNConst::Both
                                                                    : BSNConst::Posterior);
  }
  ReadCorrelation(subcommand);
  return ReadDataVar(subcommand);
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

bool BYSParser::ReadGroup(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("GROUP");
  if (param == nullptr) return true;
  if (!fGroupVar.ValidateVariables(param->getTokenList()) || !fGroupVar.CheckCommonVars(fWeightVar) ||
      !fGroupVar.CheckCommonVars(fInferenceVars)) {
    return false;
  }
  fSettings.SetGroupVar(fGroupVar.GetVariables().front());
  return ReadSelect(subcommand, fGroupVar.GetVariables().front());
}

// Which values, or which sides of a cut, make the two groups. There is no sensible default.
bool BYSParser::ReadSelect(const SubComObj& subcommand, int group) {
  const ParamObj* param = subcommand.getParamObj("SELECT");
  std::string keyword;
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(keyword, values)) {
    ParamNeed2Vals("SELECT", subcommand.getName());
    return false;
  }
  const bool isLevel = keyword == "LEVEL";
  const int kind = isLevel                 ? BYSValidSpecs::kLevel
                   : keyword == "CUTPOINT" ? BYSValidSpecs::kCutpoint
                                           : BYSValidSpecs::kMidpoint;
  BinInfoElem& elem = fSpecs.GetGroupInfoElem();
  elem = MakeBinInfoElem(group, kind, isLevel);
  if (!isLevel && fDataSource.GetVariable(group).IsString()) {
    fMessage.VariableNotNumeric(fDataSource.GetVariable(group).GetName(), "GROUP", subcommand.getName());
    return false;
  }
  if (isLevel) return ReadGroupLevels(values, group, elem);
  if (kind == BYSValidSpecs::kMidpoint) return true;
  if (values.empty()) {
    fMessage.ParamNeedNumber("SELECT CUTPOINT", subcommand.getName());
    return false;
  }
  elem._numValues.push_back(values.front().GetNumber());
  elem._strValues.push_back(values.front().GetText());
  return true;
}

bool BYSParser::ReadGroupLevels(const Tokens& values, int group, BinInfoElem& elem) const {
  if (values.size() != 2) {
    ParamNeed2Vals("SELECT LEVEL", "INFERENCE");
    return false;
  }
  if (!AddValues(fGroupVar, values, group, elem)) return false;
  if (*elem._obsValues[0] != *elem._obsValues[1]) return true;
  ParamNeed2DistVals("SELECT LEVEL", "INFERENCE");
  return false;
}

// The known variances of the two groups.
bool BYSParser::ReadDataVar(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("DATAVAR");
  PriorParams variances{};
  if (param == nullptr) return true;
  if (!ReadTwoNumbers(param->getTokenList(), "DATAVAR", subcommand.getName(), variances)) return false;
  fSettings.SetDataVarVals({variances.fFirst, variances.fSecond});
  return true;
}

// A pair that was given before is analysed once, with the values given first.
bool BYSParser::ProcessPairSubCom(const SubComObj& subcommand) {
  VarSpecObj pair("PAIR", "VARIABLES", true, fDescriptor);
  Tokens names;
  subcommand.getParamObj("VARIABLES")->getVarList(names);
  if (!pair.ValidateVariables(names) || !pair.CheckCommonVars(fWeightVar)) return false;
  if (pair.GetNValidVars() != 2) {
    ParamNeed2VarNames("PAIR", subcommand.getName());
    return false;
  }
  double variance = fMissing;
  double nullValue = 0;
  double g = fMissing;
  if (!ReadDataNumber(subcommand, "VARIANCE", variance) ||
      !ReadDataNumber(subcommand, "NULLVALUE", nullValue) || !ReadDataNumber(subcommand, "ALTERGVALUE", g)) {
    return false;
  }
  const int first = pair.GetVariables()[0];
  const int second = pair.GetVariables()[1];
  for (std::size_t i = 0; i < fvPairFirsts.size(); ++i) {
    if (fvPairFirsts[i] == first && fvPairSeconds[i] == second) return true;
  }
  fvPairFirsts.push_back(first);
  fvPairSeconds.push_back(second);
  fTests.fvDataVars.push_back(variance);
  fTests.fvNullValues.push_back(nullValue);
  fTests.fvAlterGValues.push_back(g);
  return true;
}

bool BYSParser::CompletePairs(const CommandSpec& spec) {
  std::vector<const SubComObj*> pairs;
  const auto nPairs = static_cast<std::size_t>(spec.getSubComObj("PAIR", pairs));
  if (nPairs == 0) return true;
  if (fvPairFirsts.size() < nPairs) {
    fMessage.GenericWarning("Param ^1, subcom ^2, variable pair repeat ...", "VARIABLES", "PAIR");
  }
  fSettings.SetCovariates(fvPairFirsts);
  fSettings.Set2ndRelatedList(fvPairSeconds);
  return true;
}
