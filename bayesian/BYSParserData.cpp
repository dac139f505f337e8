// DATA: what is known, or assumed, of single test variables of the one-sample command.
#include <algorithm>

#include "bayesian/BYSParser.h"

// Values are read once and then given to each of the subcommand's variables; what a subcommand doesn't give
// stays as an earlier one left it.
bool BYSParser::ProcessDataSubCom(const SubComObj& subcommand) {
  VarSpecObj variables("DATA", "VARIABLES", false, fDescriptor);
  const ParamObj* names = subcommand.getParamObj("VARIABLES");
  if (!variables.ValidateVariables(names->getTokenList()) || !variables.CheckVarListSubset(fInferenceVars)) {
    return false;
  }
  double variance = fMissing;
  double nullValue = fMissing;
  double g = fMissing;
  PriorParams nullPrior{fMissing, fMissing};
  PriorParams alterPrior{fMissing, fMissing};
  const bool read =
      ReadDataNumber(subcommand, "VARIANCE", variance) &&
      ReadDataNumber(subcommand, "NULLVALUE", nullValue) && CheckNullValue(nullValue, subcommand.getName()) &&
      ReadDataPair(subcommand, "NULLPRIORPARAM", nullPrior) && ReadDataNumber(subcommand, "ALTERGVALUE", g) &&
      ReadDataPair(subcommand, "ALTERPRIORPARAM", alterPrior);
  if (!read) return false;

  const auto set = [this](std::vector<double>& list, std::size_t test, double value) {
    if (value != fMissing) list[test] = value;
  };
  const std::vector<int>& tests = fInferenceVars.GetVariables();
  for (int variable : variables.GetVariables()) {
    const auto test =
        static_cast<std::size_t>(std::find(tests.begin(), tests.end(), variable) - tests.begin());
    set(fTests.fvDataVars, test, variance);
    set(fTests.fvNullValues, test, nullValue);
    set(fTests.fvNullPrior1s, test, nullPrior.fFirst);
    set(fTests.fvNullPrior2s, test, nullPrior.fSecond);
    set(fTests.fvAlterGValues, test, g);
    set(fTests.fvAlterPrior1s, test, alterPrior.fFirst);
    set(fTests.fvAlterPrior2s, test, alterPrior.fSecond);
    if (fSettings.GetTestDistType() == BSNConst::Binomial &&
        !ReadSuccess(subcommand, variable, fSpecs.GetBinInfoElems()[test])) {
      return false;
    }
  }
  return true;
}

bool BYSParser::ReadDataNumber(const SubComObj& subcommand, const char* name, double& value) const {
  const ParamObj* param = subcommand.getParamObj(name);
  if (param == nullptr || param->getNumberValue(value)) return true;
  fMessage.ParamNeedNumber(name, subcommand.getName());
  return false;
}

bool BYSParser::ReadDataPair(const SubComObj& subcommand, const char* name, PriorParams& values) {
  const ParamObj* param = subcommand.getParamObj(name);
  return param == nullptr || ReadTwoNumbers(param->getTokenList(), name, subcommand.getName(), values);
}

// A proportion lies between 0 and 1, a rate above 0.
bool BYSParser::CheckNullValue(double value, const std::string& subcommand) const {
  const BSNConst::DistTypes distribution = fSettings.GetTestDistType();
  if (value == fMissing || distribution == BSNConst::Normal) return true;
  if (distribution == BSNConst::Poisson) return RequirePositive(value, "NULLVALUE", subcommand);
  if (value > 0 && value < 1) return true;
  fMessage.ParamValueBreakBdry("NULLVALUE", subcommand, 0, UPSpecTypes::kGreaterThan, 1,
                               UPSpecTypes::kLessThan);
  return false;
}

bool BYSParser::ReadSuccess(const SubComObj& subcommand, int variable, BinInfoElem& elem) {
  struct Kind {
    const char* keyword;
    int kind;
    bool isString;
  };
  static constexpr Kind kKinds[] = {{"FIRST", BYSValidSpecs::kFirst, true},
                                    {"LAST", BYSValidSpecs::kLast, true},
                                    {"MIDPOINT", BYSValidSpecs::kMidpoint, false},
                                    {"CUTPOINT", BYSValidSpecs::kCutpoint, false},
                                    {"LEVEL", BYSValidSpecs::kLevel, true}};
  const ParamObj* param = subcommand.getParamObj("SUCCESS");
  std::string keyword;
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(keyword, values)) return true;

  const Kind& kind = *std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [&](const Kind& candidate) { return keyword == candidate.keyword; });
  elem = MakeBinInfoElem(variable, kind.kind, kind.isString);
  if (!kind.isString && fDataSource.GetVariable(variable).IsString()) {
    fMessage.VariableNotNumeric(fDataSource.GetVariable(variable).GetName(), "SUCCESS", subcommand.getName());
    return false;
  }
  if (kind.kind == BYSValidSpecs::kCutpoint && values.empty()) {
    fMessage.ParamNeedNumber("SUCCESS CUTPOINT", subcommand.getName());
    return false;
  }
  if (kind.kind == BYSValidSpecs::kLevel && values.empty()) {
    fMessage.GenericError("Param ^1, subcom ^2, at least one value ...", "SUCCESS LEVEL",
                          subcommand.getName());
    return false;
  }
  return AddValues(fInferenceVars, values, variable, elem);
}

// Takes each value into the element's three lists, as a number, as text and as a value of the variable.
bool BYSParser::AddValues(const VarSpecObj& variables, const Tokens& values, int variable,
                          BinInfoElem& elem) const {
  for (const ZARQ_Token& token : values) {
    const OBS* value = variables.ValidateCatValue(variable, token);
    if (value == nullptr) return false;
    elem._numValues.push_back(token.IsNumber() ? token.GetNumber() : fMissing);
    elem._strValues.push_back(token.GetText());
    elem._obsValues.push_back(value);
  }
  return true;
}
