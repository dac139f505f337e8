// ESTBF: how the Bayes factor is computed.
#include <algorithm>

#include "bayesian/BYSParser.h"

namespace {

constexpr double kMissing = MCCommon_850::MCMV::Missing();

// A computation: its code, and the parameter that the bare keyword stands for, with two independent samples
// and with a model. Missing: the component's own choice.
struct Computation {
  const char* name;
  BSNConst::RegrCompute type;
  double groupDefault;
  double modelDefault;
};
constexpr Computation kComputations[] = {{"JZS", BSNConst::JZS, kMissing, kMissing},
                                         {"ZELLNER", BSNConst::Zellner, kMissing, kMissing},
                                         {"HYPER", BSNConst::Hyper, -0.75, 3.0},
                                         {"ROUDER", BSNConst::Rouder, 1.0, 1.0},
                                         {"GONEN", BSNConst::Gonen, kMissing, kMissing}};

}  // namespace

bool BYSParser::ProcessEstBFSubCom(const SubComObj& subcommand) {
  ReadCompare(subcommand);
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
  if (values.size() > 1) {
    fMessage.ParamNeedNumber("COMPUTATION " + keyword, subcommand.getName());
    return false;
  }
  const bool groups = IsModel(BSNConst::Independent);
  const double bare = groups ? computation->groupDefault : computation->modelDefault;
  fSettings.SetRegrComPar(values.empty() ? bare : values.front().GetNumber());
  return true;
}

// The model that a model is compared with.
void BYSParser::ReadCompare(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("COMPARE");
  if (param == nullptr) return;
  fSettings.SetCompareType(param->isStringValueCase("FULL") ? BSNConst::FullModel : BSNConst::NullModel);
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
