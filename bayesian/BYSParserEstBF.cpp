// ESTBF: how the Bayes factor is computed.
#include <algorithm>

#include "bayesian/BYSParser.h"

namespace {

// A computation of two independent samples: its code, and the parameter that the bare keyword stands for.
struct Computation {
  const char* name;
  BSNConst::RegrCompute type;
  double defaultValue;
};
constexpr Computation kComputations[] = {
    {"ROUDER", BSNConst::Rouder, 1.0}, {"HYPER", BSNConst::Hyper, -0.75}, {"GONEN", BSNConst::Gonen, 0.0}};

}  // namespace

bool BYSParser::ProcessEstBFSubCom(const SubComObj& subcommand) {
  ReadCorrelationBF(subcommand);
  return ReadComputation(subcommand) && ReadLogLinear(subcommand);
}

bool BYSParser::ReadComputation(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("COMPUTATION");
  std::string keyword;
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(keyword, values)) return true;
  const auto* computation = std::find_if(std::begin(kComputations), std::end(kComputations),
                                         [&](const Computation& row) { return keyword == row.name; });
  fSettings.SetRegrCompType(computation->type);
  if (computation->type == BSNConst::Gonen) return values.empty() || ReadGonen(values, subcommand.getName());
  fSettings.SetRegrComPar(values.empty() ? computation->defaultValue : values.front().GetNumber());
  return true;
}

// Mean and variance of the effect size.
bool BYSParser::ReadGonen(const Tokens& values, const std::string& subcommand) {
  PriorParams params{};
  if (!ReadTwoNumbers(values, "COMPUTATION GONEN", subcommand, params)) return false;
  if (!RequirePositive(params.fSecond, "COMPUTATION GONEN 2", subcommand)) return false;
  fSettings.SetRegrComPar(params.fFirst);
  fSettings.SetSecondGonenPar(params.fSecond);
  return true;
}
