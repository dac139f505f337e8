#include "bayesian/BYSParser.h"

#include <algorithm>
#include <limits>

#include "bayesian/BYSAssert.h"
#include "platform/component/Common.h"

namespace {

constexpr const char* kSource = "BYSParser";

constexpr double kDefaultCILevel = 95.0;
constexpr double kDefaultTol = 1e-6;
constexpr double kCorrelationTol = 0.0001;
constexpr long kDefaultMaxIterations = 2000;
constexpr long kDefaultSamples = 10000;
constexpr double kDefaultNullPrior = 2.0;

bool Contains(const std::vector<double>& values, double value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

double ReadNumber(const ParamObj& param, double defaultValue) {
  param.getNumberValue(defaultValue);
  return defaultValue;
}

// A number beyond int means as many as there can be.
int ReadInteger(const ParamObj& param, long defaultValue) {
  param.getIntegerValue(defaultValue);
  return static_cast<int>(std::min<long>(defaultValue, std::numeric_limits<int>::max()));
}

}  // namespace

BYSParser::BYSParser(ZARQ_TokenSequence& tokens, BYSValidSpecs& specs, const ProcedureDataSource& dataSource,
                     const std::string& commandName, const std::string& procTitle)
    : fTokens(tokens),
      fSpecs(specs),
      fDataSource(dataSource),
      fSettings(*specs.GetStatSettingsPtr()),
      fModelType(fSettings.GetModelType()),
      fDescriptor(commandName, procTitle),
      fSplitVars("SPLIT FILE", false),
      fWeightVar("WEIGHT", true),
      fInferenceVars("INFERENCE", "VARIABLES", false, fDescriptor),
      fTableVars("TABLE", "TABLE", false, fDescriptor),
      fGroupVar("INFERENCE", "GROUP", false, fDescriptor),
      fDependentVar("", "", false, fDescriptor),
      fFullFactors("", "BY", false, fDescriptor),
      fFullCovariates("", "WITH", true, fDescriptor),
      fDesignFactors("DESIGN", "FACTORS", false, fDescriptor),
      fDesignCovariates("DESIGN", "COVARIATES", true, fDescriptor),
      fMissing(MCCommon_850::MCMV::Missing()) {
  fMessage.SetCommandName(commandName);
  fMessage.SetProcedureTitle(procTitle);
}

bool BYSParser::GetCommandSpecifications() {
  CommandSpec spec;
  SetCommandDescriptor(fModelType, fDescriptor);
  UniversalParser parser(fTokens, spec, fDescriptor);
  return parser.getCommandSpecifications() == 0 && ProcessCommandSpec(spec);
}

bool BYSParser::ProcessCommandSpec(const CommandSpec& spec) {
  if (spec.getSubComListSize() == 0) {
    fMessage.NoSubCom();
    return false;
  }
  if (!ProcessSubCommands(spec)) return false;
  WarnAboutIdle(spec);
  return true;
}

// The order matters: DATA needs the INFERENCE variables, PRIOR needs the known variances of DATA.
bool BYSParser::ProcessSubCommands(const CommandSpec& spec) {
  InitSettings();
  ProcessExternVars();
  return ReadOne(spec, "", &BYSParser::ProcessNoNameSubCom) &&
         ReadOne(spec, "MISSING", &BYSParser::ProcessMissingSubCom) &&
         ReadOne(spec, "CRITERIA", &BYSParser::ProcessCriteriaSubCom) &&
         ReadOne(spec, "INFERENCE", &BYSParser::ProcessInferenceSubCom) &&
         ReadOne(spec, "TABLE", &BYSParser::ProcessTableSubCom) && CheckTableGiven() &&
         ReadOne(spec, "ESTBF", &BYSParser::ProcessEstBFSubCom) && CheckPriorGiven(spec) &&
         ReadEach(spec, "DATA", &BYSParser::ProcessDataSubCom) &&
         ReadEach(spec, "PAIR", &BYSParser::ProcessPairSubCom) && CompletePairs(spec) &&
         CompleteTestValues() && ReadOne(spec, "PRIOR", &BYSParser::ProcessPriorSubCom) &&
         ProcessModelSubCommands(spec) && ReadOne(spec, "PRINT", &BYSParser::ProcessPrintSubCom);
}

bool BYSParser::ReadOne(const CommandSpec& spec, const char* name, Reader reader) {
  const SubComObj* subcommand = spec.getSubComObj(name);
  return subcommand == nullptr || (this->*reader)(*subcommand);
}

bool BYSParser::ReadEach(const CommandSpec& spec, const char* name, Reader reader) {
  std::vector<const SubComObj*> subcommands;
  spec.getSubComObj(name, subcommands);
  return std::all_of(subcommands.begin(), subcommands.end(),
                     [&](const SubComObj* subcommand) { return (this->*reader)(*subcommand); });
}

// The defaults that differ from those of the settings record, command by command.
void BYSParser::InitSettings() {
  const bool simulates = IsModel(BSNConst::Correlation) || IsModel(BSNConst::LogLinear);
  const bool model = IsModel(BSNConst::Regression) || IsModel(BSNConst::Anova);
  fSettings.SetMaxIterations(static_cast<int>(kDefaultMaxIterations));
  if (IsModel(BSNConst::OneSample) || IsModel(BSNConst::Related) || IsModel(BSNConst::Correlation)) {
    fSettings.SetMCSamples(static_cast<int>(kDefaultSamples));
  }
  if (IsModel(BSNConst::Related)) {
    fSettings.SetMeanDistType(BSNConst::Diffuse);
    fSettings.SetPriorDistType(BSNConst::Diffuse);
  }
  if (IsModel(BSNConst::Independent)) fSettings.SetRegrCompType(BSNConst::Rouder);
  if (simulates) fSettings.SetPosteriorSamples(kDefaultSamples);
  fSettings.SetRandomSeed(0);
  fSettings.SetTolValue(IsModel(BSNConst::Correlation) ? kCorrelationTol : kDefaultTol);
  if (model) {
    fSettings.SetMissScope(BSNConst::Listwise);
    fSettings.SetPriorType(BSNConst::Reference);
    fSettings.SetRegrCompType(BSNConst::JZS);
  }
  if (IsModel(BSNConst::LogLinear)) {
    fSettings.SetMissScope(BSNConst::Listwise);
    fSettings.SetLogLinShapes({1.0});
    fSettings.SetLambdas({1.0});
    fSettings.SetLogLinIntrinsicT(500);
  }
}

void BYSParser::ProcessExternVars() {
  std::vector<int> splitVars;
  splitVars.reserve(static_cast<std::size_t>(fDataSource.GetNSplitVars()));
  for (int i = 0; i < fDataSource.GetNSplitVars(); ++i) splitVars.push_back(fDataSource.GetSplitVarIndex(i));
  fSplitVars.SetVariables(splitVars);
  if (const int weight = fDataSource.GetWeightVarIndex(); weight >= 0) {
    fWeightVar.SetVariable(weight);
    fSettings.SetFrequencyWeightVar(weight);
  }
}

// A posterior of a proportion or a rate needs a prior that somebody chose.
bool BYSParser::CheckPriorGiven(const CommandSpec& spec) {
  if (!IsModel(BSNConst::OneSample)) return true;
  if (fSettings.GetTestDistType() != BSNConst::Normal && fSettings.GetAnalysType() != BSNConst::BayesFactor &&
      spec.getSubComObj("PRIOR") == nullptr) {
    fMessage.GenericError("Bayesian or Poisson need subcommand ^1 ...", "PRIOR");
    return false;
  }
  SizeTestValues();
  return true;
}

void BYSParser::SizeTestValues() {
  const std::vector<double> notGiven(static_cast<std::size_t>(fInferenceVars.GetNValidVars()), fMissing);
  fTests = {notGiven, notGiven, notGiven, notGiven, notGiven, notGiven, notGiven};
}

// Hands the tests' values to the settings, once all DATA or PAIR subcommands are read.
bool BYSParser::CompleteTestValues() {
  const bool counts = IsModel(BSNConst::OneSample) && fSettings.GetTestDistType() != BSNConst::Normal;
  if (counts) {
    if (fTests.fvNullPrior1s.empty()) return false;
    std::replace(fTests.fvNullPrior1s.begin(), fTests.fvNullPrior1s.end(), fMissing, kDefaultNullPrior);
    std::replace(fTests.fvNullPrior2s.begin(), fTests.fvNullPrior2s.end(), fMissing, kDefaultNullPrior);
  }
  if (IsModel(BSNConst::OneSample) || IsModel(BSNConst::Related)) {
    fSettings.SetDataVarVals(fTests.fvDataVars);
    fSettings.SetNullValues(fTests.fvNullValues);
    fSettings.SetNullPrior1s(fTests.fvNullPrior1s);
    fSettings.SetNullPrior2s(fTests.fvNullPrior2s);
    fSettings.SetAlterGValues(fTests.fvAlterGValues);
  }
  if (counts && fSettings.GetAnalysType() != BSNConst::Posterior &&
      (Contains(fTests.fvAlterPrior1s, fMissing) || Contains(fTests.fvAlterPrior2s, fMissing))) {
    fMessage.GenericError("Param ^1, subcom ^2, need all Alter Prior ...", "ALTERPRIORPARAM", "DATA");
    return false;
  }
  fSettings.SetAlterPrior1s(fTests.fvAlterPrior1s);
  fSettings.SetAlterPrior2s(fTests.fvAlterPrior2s);
  return true;
}

bool BYSParser::ProcessMissingSubCom(const SubComObj& subcommand) {
  const ParamObj* scope = subcommand.getParamObj("SCOPE");
  BYS::Assert(scope != nullptr, kSource, "scope != 0");
  fSettings.SetMissScope(scope->isStringValueCase("LISTWISE") ? BSNConst::Listwise : BSNConst::ByTest);
  return true;
}

bool BYSParser::ProcessCriteriaSubCom(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("CILEVEL")) {
    fSettings.SetCILevel(ReadNumber(*param, kDefaultCILevel));
  }
  if (const ParamObj* param = subcommand.getParamObj("METHOD")) {
    fSettings.SetMethodType(param->isStringValueCase("MCA") ? BSNConst::MCA : BSNConst::AGL);
  }
  if (const ParamObj* param = subcommand.getParamObj("SEED")) {
    long seed = 0;
    if (!param->isStringValueCase("RANDOM")) param->getIntegerValue(seed);
    fSettings.SetRandomSeed(static_cast<unsigned long>(seed));
  }
  if (const ParamObj* param = subcommand.getParamObj("TOL")) {
    fSettings.SetTolValue(ReadNumber(*param, kDefaultTol));
  }
  if (const ParamObj* param = subcommand.getParamObj("MAXITER")) {
    fSettings.SetMaxIterations(ReadInteger(*param, kDefaultMaxIterations));
  }
  if (const ParamObj* param = subcommand.getParamObj("MCSAMPLES")) {
    fSettings.SetMCSamples(ReadInteger(*param, kDefaultSamples));
  }
  if (const ParamObj* param = subcommand.getParamObj("POSTSAMPLES")) {
    fSettings.SetPosteriorSamples(ReadInteger(*param, kDefaultSamples));
  }
  if (const ParamObj* param = subcommand.getParamObj("ORDER")) {
    fSpecs.SetCategAscend(!param->isStringValueCase("DESCENDING"));
  }
  return true;
}
