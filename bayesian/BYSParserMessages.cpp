// Messages and conversions that several readers share.
#include <algorithm>

#include "bayesian/BYSParser.h"

void BYSParser::ParamNeed4NumVals(const std::string& parameter, const std::string& subcommand) const {
  fMessage.GenericError("Param ^1, subcom ^2, four numeric values ...", parameter, subcommand);
}

void BYSParser::ParamNeed2VarNames(const std::string& parameter, const std::string& subcommand) const {
  fMessage.GenericError("Param ^1, subcom ^2, two variable names ...", parameter, subcommand);
}

void BYSParser::ParamNeed2DistVals(const std::string& parameter, const std::string& subcommand) const {
  fMessage.GenericError("Param ^1, subcom ^2, two distinct values ...", parameter, subcommand);
}

void BYSParser::ParamNeed2Vals(const std::string& parameter, const std::string& subcommand) const {
  fMessage.GenericError("Param ^1, subcom ^2, two values ...", parameter, subcommand);
}

void BYSParser::ParamNeed2NumVals(const std::string& parameter, const std::string& subcommand) const {
  fMessage.GenericError("Param ^1, subcom ^2, two numeric values ...", parameter, subcommand);
}

bool BYSParser::RequirePositive(double value, const std::string& parameter,
                                const std::string& subcommand) const {
  if (value > 0) return true;
  fMessage.ParamValueBreakBdry(parameter, subcommand, 0, UPSpecTypes::kGreaterThan);
  return false;
}

bool BYSParser::ReadTwoNumbers(const Tokens& values, const std::string& parameter,
                               const std::string& subcommand, PriorParams& params) const {
  if (values.size() != 2 || !AllNumbers(values)) {
    ParamNeed2NumVals(parameter, subcommand);
    return false;
  }
  params = {values[0].GetNumber(), values[1].GetNumber()};
  return true;
}

bool BYSParser::AllNumbers(const Tokens& values) {
  return std::all_of(values.begin(), values.end(), [](const ZARQ_Token& token) { return token.IsNumber(); });
}

BYSValidSpecs::BinInfoElem BYSParser::MakeBinInfoElem(int variable, int kind, bool isString) const {
  constexpr int kUnit = 8;
  const ZARQ_Variable& zarqVariable = fDataSource.GetVariable(variable);
  BinInfoElem elem;
  elem._kind = kind;
  elem._isString = isString;
  elem._width = zarqVariable.IsString() ? std::max(1, (zarqVariable.GetWidth() + kUnit - 1) / kUnit) : 1;
  elem._format = zarqVariable.GetFormat();
  return elem;
}
