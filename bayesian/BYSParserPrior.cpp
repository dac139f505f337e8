// PRIOR of the sample tests: the prior of a proportion or rate, of the variance (or precision), of the mean.
#include <algorithm>

#include "bayesian/BYSAssert.h"
#include "bayesian/BYSParser.h"

namespace {

constexpr const char* kSource = "BYSParser";
constexpr const char* kPrior = "PRIOR";

// A distribution keyword: its code, and how many numbers it takes when it has any (0: none).
struct DistKeyword {
  const char* name;
  BSNConst::DistTypes type;
  std::size_t nValues;
};
constexpr DistKeyword kVarDists[] = {
    {"DIFFUSE", BSNConst::Diffuse, 0},     {"INVCHISQ", BSNConst::InvChiSquare, 2},
    {"INVGAMMA", BSNConst::InvGamma, 2},   {"JEFFREYS", BSNConst::Jeffreys2, 0},
    {"JEFFREYS2", BSNConst::Jeffreys2, 0}, {"JEFFREYS4", BSNConst::Jeffreys4, 0}};
constexpr DistKeyword kPrecDists[] = {{"GAMMA", BSNConst::Gamma, 2}, {"CHISQ", BSNConst::ChiSquare, 1}};

template <std::size_t N>
const DistKeyword& FindDist(const DistKeyword (&table)[N], const std::string& name) {
  const auto found = std::find_if(std::begin(table), std::end(table),
                                  [&](const DistKeyword& row) { return name == row.name; });
  return found == std::end(table) ? table[0] : *found;
}

// A variance prior with which a flat mean has no conjugate posterior, and the parameter that gave it.
const char* InformativeParameter(BSNConst::DistTypes type) {
  switch (type) {
    case BSNConst::InvChiSquare:
    case BSNConst::InvGamma:
      return "VARDIST";
    case BSNConst::ChiSquare:
    case BSNConst::Gamma:
      return "PRECDIST";
    default:
      return nullptr;
  }
}

}  // namespace

bool BYSParser::ProcessPriorSubCom(const SubComObj& subcommand) {
  const ParamObj* equal = subcommand.getParamObj("EQUALDATAVAR");
  fSettings.SetEqualDataVar(equal != nullptr && equal->isStringValueCase("TRUE"));
  if (IsModel(BSNConst::Regression) || IsModel(BSNConst::Anova)) return ProcessRegrPriorSubCom(subcommand);
  if (!ReadPriorType(subcommand)) return false;
  if (subcommand.getParamObj("VARDIST") != nullptr && subcommand.getParamObj("PRECDIST") != nullptr) {
    fMessage.ParamExclusive("VARDIST", "PRECDIST", kPrior);
    return false;
  }
  if (!ReadVarDist(subcommand) || !ReadPrecDist(subcommand) || !ReadMeanDist(subcommand)) return false;
  if (const ParamObj* kappa = subcommand.getParamObj("KAPPA")) {
    double value = 1.0;
    kappa->getNumberValue(value);
    fSettings.SetKappaValue(value);
  }
  return true;
}

bool BYSParser::ReadPriorType(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("TYPE");
  std::string keyword;
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(keyword, values)) {
    if (!IsModel(BSNConst::OneSample) || fSettings.GetTestDistType() != BSNConst::Poisson) return true;
    fMessage.GenericError("Param ^1, subcom ^2, need for Bayesian or Poisson ...", "TYPE", kPrior);
    return false;
  }
  const bool conjugate = keyword == "CONJUGATE";
  fSettings.SetPriorType(conjugate             ? BSNConst::Conjugate
                         : keyword == "CUSTOM" ? BSNConst::Custom
                                               : BSNConst::Reference);
  if (!conjugate || values.empty()) return true;
  if (!CheckConjugate(values)) return false;
  fSettings.SetPriorParam1(values[0].GetNumber());
  fSettings.SetPriorParam2(values[1].GetNumber());
  return true;
}

// The two numbers of a beta prior are both positive or (Haldane's prior) both zero; the rate of a gamma prior
// may be zero.
bool BYSParser::CheckConjugate(const Tokens& values) {
  PriorParams params{};
  const BSNConst::DistTypes distribution = fSettings.GetTestDistType();
  if (distribution == BSNConst::Normal) {
    fMessage.TokenNoQualif("TYPE CONJUGATE", kPrior);
    return false;
  }
  if (!ReadTwoNumbers(values, "TYPE CONJUGATE", kPrior, params)) return false;
  if (distribution == BSNConst::Binomial) {
    const bool haldane = params.fFirst == 0 && params.fSecond == 0;
    return haldane || (RequirePositive(params.fFirst, "TYPE CONJUGATE", kPrior) &&
                       RequirePositive(params.fSecond, "TYPE CONJUGATE", kPrior));
  }
  if (!RequirePositive(params.fFirst, "TYPE CONJUGATE 1", kPrior)) return false;
  if (params.fSecond >= 0) return true;
  fMessage.ParamValueBreakBdry("TYPE CONJUGATE 2", kPrior, 0, UPSpecTypes::kAtLeast);
  return false;
}

bool BYSParser::ReadVarDist(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("VARDIST");
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(fPriorDistQualifier, values)) return true;
  const DistKeyword& dist = FindDist(kVarDists, fPriorDistQualifier);
  PriorParams params{fMissing, fMissing};
  if (dist.nValues == 2 && !values.empty() &&
      !ReadTwoNumbers(values, "VARDIST " + fPriorDistQualifier, kPrior, params)) {
    return false;
  }
  if (IsModel(BSNConst::Independent) && !fSettings.GetEqualDataVar() && dist.type != BSNConst::Diffuse) {
    fMessage.GenericWarning("Indep var not Diffuse, param ^1, subcom ^2 ...", "VARDIST", kPrior);
    SetPriorDist(BSNConst::Diffuse, {fMissing, fMissing});
    return true;
  }
  SetPriorDist(dist.type, params);
  return true;
}

bool BYSParser::ReadPrecDist(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("PRECDIST");
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(fPriorDistQualifier, values)) return true;
  const DistKeyword& dist = FindDist(kPrecDists, fPriorDistQualifier);
  PriorParams params{fMissing, fMissing};
  if (dist.nValues == 2 && !values.empty() && !ReadTwoNumbers(values, "PRECDIST GAMMA", kPrior, params)) {
    return false;
  }
  if (dist.nValues == 1 && !values.empty()) params.fFirst = values[0].GetNumber();
  SetPriorDist(dist.type, params);
  return true;
}

bool BYSParser::ReadMeanDist(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("MEANDIST");
  std::string keyword;
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(keyword, values)) return true;
  if (keyword == "NORMAL")
    return IsModel(BSNConst::Independent) ? ReadMeanNormals(values) : ReadMeanNormal(values);

  SetMeanDist(BSNConst::Diffuse, {});
  const char* informative = InformativeParameter(fSettings.GetPriorDistType());
  if (!IsModel(BSNConst::Independent) && !HasKnownVariances() && informative != nullptr) {
    fMessage.GenericWarning("Option ^1, param ^2, subcom ^3, convert to diffuse ...", fPriorDistQualifier,
                            informative, kPrior);
    SetPriorDist(BSNConst::Diffuse, {fMissing, fMissing});
  }
  return true;
}

// MEANDIST=NORMAL(location [variance]). With an unknown variance, the mean's variance is sigma^2/kappa, so a
// second number has no use; and a noninformative variance prior has no conjugate normal mean.
bool BYSParser::ReadMeanNormal(const Tokens& values) {
  const bool known = HasKnownVariances();
  std::vector<double> params;
  for (const ZARQ_Token& token : values) params.push_back(token.GetNumber());
  BYS::Assert(params.size() == values.size(), kSource, "meanDistVals.size() == meanDistTokens.size()");
  if (known && !params.empty() && params.size() != 2) {
    ParamNeed2NumVals("MEANDIST NORMAL", kPrior);
    return false;
  }
  if (!known && params.size() > 2) {
    fMessage.ParamNeedNumber("MEANDIST NORMAL", kPrior);
    return false;
  }
  if (!known && params.size() == 2) {
    fMessage.GenericWarning("Ignore value ^1, param ^2 subcom ^3, no variance ...", values[1].GetText(),
                            "MEANDIST NORMAL 2", kPrior);
  }
  if (params.size() == 2 && !RequirePositive(params[1], "MEANDIST NORMAL 2", kPrior)) return false;
  if (!params.empty() && !known && InformativeParameter(fSettings.GetPriorDistType()) == nullptr) {
    fMessage.GenericWarning("Option ^1, param ^2, subcom ^3, convert to diffuse ...", "NORMAL", "MEANDIST",
                            kPrior);
    SetMeanDist(BSNConst::Diffuse, {});
    return true;
  }
  SetMeanDist(BSNConst::Normal, params);
  return true;
}

// MEANDIST=NORMAL(location 1, location 2, variance 1, variance 2) of two groups, whose variances must be
// known.
bool BYSParser::ReadMeanNormals(const Tokens& values) {
  constexpr std::size_t kNValues = 4;
  std::vector<double> params;
  for (const ZARQ_Token& token : values) params.push_back(token.GetNumber());
  if (!params.empty() && params.size() != kNValues) {
    ParamNeed4NumVals("MEANDIST NORMAL", kPrior);
    return false;
  }
  if (!params.empty() && (!RequirePositive(params[2], "MEANDIST NORMAL 3", kPrior) ||
                          !RequirePositive(params[3], "MEANDIST NORMAL 4", kPrior))) {
    return false;
  }
  if (!params.empty() && fSettings.GetDataVarVals().size() != 2) {
    fMessage.GenericError("Indep Miss Variance ...");
    return false;
  }
  SetMeanDist(BSNConst::Normal, params);
  return true;
}

void BYSParser::SetPriorDist(BSNConst::DistTypes type, PriorParams params) {
  fSettings.SetPriorDistType(type);
  fSettings.SetPriorDistParam1(params.fFirst);
  fSettings.SetPriorDistParam2(params.fSecond);
}

void BYSParser::SetMeanDist(BSNConst::DistTypes type, const std::vector<double>& params) {
  const auto get = [&](std::size_t i) { return i < params.size() ? params[i] : fMissing; };
  fSettings.SetMeanDistType(type);
  fSettings.SetMeanDistParam1(get(0));
  fSettings.SetMeanDistParam2(get(1));
  fSettings.SetMeanDistParam3(get(2));
  fSettings.SetMeanDistParam4(get(3));
}

bool BYSParser::HasKnownVariances() const {
  return std::any_of(fTests.fvDataVars.begin(), fTests.fvDataVars.end(),
                     [this](double variance) { return variance != fMissing; });
}
