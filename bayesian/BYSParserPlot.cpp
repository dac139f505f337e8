// PLOT: which posterior curves of a regression or an analysis of variance are drawn.
#include "bayesian/BYSParser.h"

bool BYSParser::ProcessPlotSubCom(const SubComObj& subcommand) {
  VarSpecObj factors("PLOT", "FACTORS", false, fDescriptor);
  VarSpecObj covariates("PLOT", "COVARIATES", true, fDescriptor);
  if (!ReadSubset(subcommand, "FACTORS", fDesignFactors, factors) ||
      !ReadSubset(subcommand, "COVARIATES", fDesignCovariates, covariates)) {
    return false;
  }
  fSettings.SetPlotFactors(factors.GetVariables());
  fSettings.SetPlotCovars(covariates.GetVariables());
  if (const ParamObj* param = subcommand.getParamObj("MAX_CATEGORY")) {
    long count = 2;
    param->getIntegerValue(count);
    fSettings.SetMaxNPlotCategories(static_cast<int>(count));
  }
  ReadPlotFlags(subcommand);
  return ReadPlotMeans(subcommand);
}

void BYSParser::ReadPlotFlags(const SubComObj& subcommand) {
  struct Flag {
    const char* name;
    void (BYSValidSpecs::*set)(bool);
  };
  static constexpr Flag kFlags[] = {{"INTERCEPT", &BYSValidSpecs::SetPlotIntercept},
                                    {"ERRORVAR", &BYSValidSpecs::SetPlotErrorVar},
                                    {"BAYESPRED", &BYSValidSpecs::SetPlotBayesPred}};
  for (const Flag& flag : kFlags) {
    if (const ParamObj* param = subcommand.getParamObj(flag.name)) {
      (fSpecs.*flag.set)(param->isStringValueCase("TRUE"));
    }
  }
}

// Levels of the one factor of an analysis of variance.
bool BYSParser::ReadPlotMeans(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("MEANS");
  if (param == nullptr) return true;
  const int factor = fFullFactors.GetVariables().front();
  BinInfoElem elem = MakeBinInfoElem(factor, BYSValidSpecs::kLevel, true);
  for (const ZARQ_Token& value : param->getTokenList()) {
    if (!AddModelValue(value, factor, "MEANS", "PLOT", elem)) return false;
  }
  fSpecs.SetBinInfoElems({elem});
  return true;
}
