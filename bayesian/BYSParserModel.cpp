// The model of a regression or an analysis of variance: its variables, the response that it predicts, its
// F-tests.
#include <algorithm>

#include "bayesian/BYSAssert.h"
#include "bayesian/BYSParser.h"

namespace {

constexpr const char* kSource = "BYSParser";

std::vector<int> Join(std::vector<int> first, const std::vector<int>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

}  // namespace

// The subcommands behind PRIOR. DESIGN comes first: the others speak of the predictors that it leaves.
bool BYSParser::ProcessModelSubCommands(const CommandSpec& spec) {
  return ReadOne(spec, "DESIGN", &BYSParser::ProcessDesignSubCom) && CompleteDesign() &&
         ReadOne(spec, "PREDICT", &BYSParser::ProcessPredictSubCom) &&
         ReadOne(spec, "SAVE", &BYSParser::ProcessSaveSubCom) &&
         ReadOne(spec, "OUTFILE", &BYSParser::ProcessOutFileSubCom) &&
         ReadEach(spec, "FTEST", &BYSParser::ProcessFTestSubCom) && CompleteFTests(spec) &&
         ReadOne(spec, "PLOT", &BYSParser::ProcessPlotSubCom);
}

// `dependent BY factors WITH covariates`.
bool BYSParser::ProcessNoNameSubCom(const SubComObj& subcommand) {
  const ParamObj* body = subcommand.getExportParamObj();
  BYS::Assert(body != nullptr && !body->getTokenList().empty(), kSource, "!tokens.empty()");
  if (!fDependentVar.ValidateRegrVarList(body->getTokenList(), fFullFactors, "BY", fFullCovariates, "WITH",
                                         0) ||
      !fDependentVar.CheckCommonVars(fWeightVar) || !fFullFactors.CheckCommonVars(fWeightVar) ||
      !fFullCovariates.CheckCommonVars(fWeightVar)) {
    return false;
  }
  const int dependent = fDependentVar.GetVariables().front();
  BYS::Assert(dependent >= 0, kSource, "dependent >= 0");
  fSettings.SetDependVar(dependent);
  fSettings.SetFullModFactors(fFullFactors.GetVariables());
  fSettings.SetFullModCovariates(fFullCovariates.GetVariables());
  return CheckPredictorCounts(fFullFactors.GetNValidVars(), fFullCovariates.GetNValidVars());
}

bool BYSParser::CheckPredictorCounts(int nFactors, int nCovariates) const {
  const bool oneWay = nFactors == 1 && nCovariates == 0;
  if (IsModel(BSNConst::Anova) ? oneWay : nFactors + nCovariates > 0) return true;
  fMessage.GenericError(IsModel(BSNConst::Anova) ? "Exactly one factor, no covariates, command ^1 ..."
                                                 : "No factors, no covariates, command ^1 ...",
                        fDescriptor.GetCommandName());
  return false;
}

bool BYSParser::ProcessDesignSubCom(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("REGWGT")) {
    VarSpecObj weight("DESIGN", "REGWGT", true, fDescriptor);
    if (!weight.ValidateVariables(param->getTokenList()) || !weight.CheckCommonVars(fWeightVar) ||
        !weight.CheckCommonVars(fDependentVar) || !weight.CheckCommonVars(fFullFactors) ||
        !weight.CheckCommonVars(fFullCovariates)) {
      return false;
    }
    fSettings.SetRegrWeightVar(weight.GetVariables().front());
  }
  return ReadSubset(subcommand, "FACTORS", fFullFactors, fDesignFactors) &&
         ReadSubset(subcommand, "COVARIATES", fFullCovariates, fDesignCovariates);
}

// A list of variables that must be among those of `whole`; left alone when the parameter is absent.
bool BYSParser::ReadSubset(const SubComObj& subcommand, const char* name, const VarSpecObj& whole,
                           VarSpecObj& list) const {
  const ParamObj* param = subcommand.getParamObj(name);
  return param == nullptr ||
         (list.ValidateVariables(param->getTokenList()) && list.CheckVarListSubset(whole));
}

// Without lists in DESIGN the whole model is the design.
bool BYSParser::CompleteDesign() {
  if (!IsModel(BSNConst::Regression) && !IsModel(BSNConst::Anova)) return true;
  if (fDesignFactors.GetNValidVars() + fDesignCovariates.GetNValidVars() == 0) {
    fDesignFactors = fFullFactors;
    fDesignCovariates = fFullCovariates;
  }
  fSettings.SetFactors(fDesignFactors.GetVariables());
  fSettings.SetCovariates(fDesignCovariates.GetVariables());
  return true;
}

// One value for each predictor: a level of every factor, then a number for every covariate. Analysis of
// variance predicts nothing.
bool BYSParser::ProcessPredictSubCom(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("REGRESSORS");
  if (param == nullptr) return true;
  const std::vector<int> predictors = Join(fSettings.GetFactors(), fSettings.GetCovariates());
  const Tokens& values = param->getTokenList();
  if (values.size() != predictors.size()) {
    fMessage.GenericError("Param ^1 need N vals same as N pred, subcom ^2 ...", "REGRESSORS",
                          subcommand.getName());
    return false;
  }
  std::vector<BinInfoElem> elems;
  for (std::size_t i = 0; i < predictors.size(); ++i) {
    const bool isFactor = i < fSettings.GetFactors().size();
    elems.push_back(MakeBinInfoElem(predictors[i], BYSValidSpecs::kLevel, isFactor));
    if (!AddModelValue(values[i], predictors[i], "REGRESSORS", "PREDICT", elems.back())) return false;
  }
  if (IsModel(BSNConst::Regression)) fSpecs.SetBinInfoElems(elems);
  return true;
}

// Takes a value that the variable can have into the element.
bool BYSParser::AddModelValue(const ZARQ_Token& value, int variable, const std::string& parameter,
                              const std::string& subcommand, BinInfoElem& elem) const {
  VarSpecObj silent(subcommand, parameter, false, fDescriptor);
  silent.SetErrorReport(false);
  if (value.GetKind() != ZARQ_Token::Kind::Operator && AddValues(silent, {value}, variable, elem))
    return true;
  fMessage.GenericError("Invalid value ^1, variable ^2, param ^3, subcom ^4 ...", value.GetText(),
                        fDataSource.GetVariable(variable).GetName(), parameter, subcommand);
  return false;
}

// How many values a test takes depends on the factors' levels: the component counts them.
bool BYSParser::ProcessFTestSubCom(const SubComObj& subcommand) {
  const bool hasDesign = fDesignFactors.GetNValidVars() + fDesignCovariates.GetNValidVars() <
                         fFullFactors.GetNValidVars() + fFullCovariates.GetNValidVars();
  VarSpecObj predictors(hasDesign ? "DESIGN" : "BY, WITH", false);
  predictors.SetVariables(Join(fSettings.GetFactors(), fSettings.GetCovariates()));
  VarSpecObj tested("FTEST", "VARIABLES", false, fDescriptor);
  MCBSN_850::BayesFTest test;
  std::vector<double> values;
  if (!ReadSubset(subcommand, "VARIABLES", predictors, tested)) return false;
  test.SetVariables(tested.GetVariables());
  if (const ParamObj* param = subcommand.getParamObj("LABEL")) {
    test.SetLabel(param->getTokenList().front().GetText());
  }
  if (const ParamObj* param = subcommand.getParamObj("INTERCEPT")) {
    test.SetIntercept(param->isStringValueCase("TRUE"));
  }
  if (const ParamObj* param = subcommand.getParamObj("TESTVALUES")) param->getNumberList(values);
  test.SetTestValues(values);
  if (test.GetVariables().empty() && !test.HasIntercept()) {
    fMessage.GenericError("No F test effects subcom ^1 ...", subcommand.getName());
    return false;
  }
  fvFTests.push_back(test);
  return true;
}

bool BYSParser::CompleteFTests(const CommandSpec& spec) {
  std::vector<const SubComObj*> subcommands;
  const auto nTests = static_cast<std::size_t>(spec.getSubComObj("FTEST", subcommands));
  BYS::Assert(fvFTests.size() == nTests, kSource, "fvFTests.size() == nTests");
  fSettings.SetFTests(fvFTests);
  return true;
}
