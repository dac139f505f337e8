// The grammar of the seven commands, as tables. The order of the rows is the order of declaration.
#include <initializer_list>
#include <vector>

#include "bayesian/BYSCommandSets.h"
#include "bayesian/BYSParser.h"

namespace {

using namespace BYSCommandSets;
using Spec = UPSpecTypes;

struct Flags {
  bool required;
  bool valueRequired;
};
constexpr Flags kNone{false, false};
constexpr Flags kVal{false, true};
constexpr Flags kReqVal{true, true};

struct Limits {
  double lower = 0;
  int lowerOption = 0;  // a LowerBdryOptions, 0: none
  double upper = 0;
  int upperOption = 0;  // an UpperBdryOptions, 0: none
};
constexpr Limits kAny{};
constexpr Limits AtLeast(double bound) {
  return {bound, Spec::kAtLeast, 0, 0};
}
constexpr Limits Above(double bound) {
  return {bound, Spec::kGreaterThan, 0, 0};
}
constexpr Limits Closed(double lower, double upper) {
  return {lower, Spec::kAtLeast, upper, Spec::kAtMost};
}
constexpr Limits Open(double lower, double upper) {
  return {lower, Spec::kGreaterThan, upper, Spec::kLessThan};
}
constexpr Limits LeftOpen(double lower, double upper) {
  return {lower, Spec::kGreaterThan, upper, Spec::kAtMost};
}
constexpr Limits RightOpen(double lower, double upper) {
  return {lower, Spec::kAtLeast, upper, Spec::kLessThan};
}

using Words = std::vector<const char*>;

struct QualifierRow {
  const char* name;
  bool bare;
  Spec::ParamSpec spec = Spec::kKeyword;
  Flags flags = kNone;
  Limits limits = kAny;
};
using Qualifiers = std::vector<QualifierRow>;

struct ParamRow {
  unsigned commands;
  const char* name;
  Spec::ParamSpec spec;
  Flags flags;
  Limits limits = kAny;
  Words words = {};
  Qualifiers qualifiers = {};
  bool exactlyOneQualifier = false;
};

struct SubComRow {
  unsigned commands;
  const char* name;
  Spec::SubComSpec spec;
  unsigned required;  // the commands that must have it
  bool repeatable;
  std::vector<ParamRow> params;
};

QualifierRow Bare(const char* name) {
  return {name, true};
}

const Words kFalseTrue{"FALSE", "TRUE"};
constexpr Limits kSamples = Closed(1000, 1000000);

// clang-format off
const std::vector<SubComRow>& Rows() {
  static const std::vector<SubComRow> rows{
    {kModels, "", Spec::kUnnamedBody, kModels, false, {}},
    {kAll & ~kLog, "MISSING", Spec::kNamedParameters, 0, false, {
      {kTests,  "SCOPE", Spec::kKeyword, kReqVal, kAny, {"ANALYSIS", "LISTWISE"}},
      {kCor,    "SCOPE", Spec::kKeyword, kReqVal, kAny, {"PAIRWISE", "LISTWISE"}},
      {kModels, "SCOPE", Spec::kKeyword, kReqVal, kAny, {"LISTWISE"}}}},
    {kAll, "CRITERIA", Spec::kNamedParameters, 0, false, {
      {kAll,                      "CILEVEL",     Spec::kNumber,  kVal, RightOpen(0, 100)},
      {kOne | kRel,               "METHOD",      Spec::kKeyword, kVal, kAny, {"AGL", "MCA"}},
      {kOne | kRel | kCor | kLog, "SEED",        Spec::kInteger, kVal, Above(0), {"RANDOM"}},
      {kAll,                      "TOL",         Spec::kNumber,  kVal, LeftOpen(0, 0.001)},
      {kAll,                      "MAXITER",     Spec::kInteger, kVal, Above(0)},
      {kOne | kRel | kCor,        "MCSAMPLES",   Spec::kInteger, kVal, kSamples},
      {kCor | kLog,               "POSTSAMPLES", Spec::kInteger, kVal, kSamples},
      {kLog,                      "ORDER",       Spec::kKeyword, kVal, kAny, {"ASCENDING", "DESCENDING"}}}},
    {kAll, "INFERENCE", Spec::kNamedParameters, kOne | kInd | kCor, false, {
      {kOne,               "DISTRIBUTION", Spec::kKeyword,   kReqVal, kAny, {"NORMAL", "BINOMIAL", "POISSON"}},
      {kRel | kInd,        "DISTRIBUTION", Spec::kKeyword,   kVal,    kAny, {"NORMAL"}},
      {kOne | kInd | kCor, "VARIABLES",    Spec::kTokenList, kReqVal},
      {kAll,               "ANALYSIS",     Spec::kKeyword,   kVal,    kAny, {"POSTERIOR", "BAYESFACTOR", "BOTH"}},
      {kInd,               "GROUP",        Spec::kVariable,  kReqVal},
      {kInd,               "SELECT",       Spec::kQualifier, kVal,    kAny, {}, {
        Bare("MIDPOINT"),
        {"CUTPOINT", false, Spec::kNumber, kVal},
        {"LEVEL", false, Spec::kTokenList, kVal}}},
      {kInd,               "DATAVAR",      Spec::kNumbers,   kVal,    Above(0)},
      {kCor,               "CORR",         Spec::kKeyword,   kVal,    kAny, {"PEARSON", "SPEARMAN", "KENDALL"}},
      {kCor,               "CVALUE",       Spec::kNumber,    kVal},
      {kCor,               "MAXPLOTS",     Spec::kInteger,   kVal,    Closed(0, 50)}}},
    {kInd | kCor | kModels | kLog, "ESTBF", Spec::kNamedParameters, 0, false, {
      {kInd,    "COMPUTATION", Spec::kQualifier, kVal, kAny, {}, {
        Bare("ROUDER"),
        {"GONEN", false, Spec::kNumbers, kReqVal},
        {"HYPER", false, Spec::kNumber, kNone, LeftOpen(-1, -0.5)}}, true},
      {kCor,    "TYPE",        Spec::kQualifier, kVal, kAny, {}, {
        Bare("JZS"),
        {"FRACTION", false, Spec::kNumber, kNone, Open(0, 1)}}, true},
      {kCor,    "NULLVALUE",   Spec::kNumber,    kVal, Open(-1, 1)},
      {kModels, "COMPUTATION", Spec::kQualifier, kVal, kAny, {}, {
        Bare("JZS"),
        {"ZELLNER", false, Spec::kNumber, kVal, Above(0)},
        {"HYPER", false, Spec::kNumber, kNone, LeftOpen(2, 4)},
        {"ROUDER", false, Spec::kNumbers, kNone, Above(0)}}, true},
      {kModels, "COMPARE",     Spec::kKeyword,   kVal, kAny, {"NULL", "FULL"}},
      {kLog,    "MODEL",       Spec::kKeyword,   kVal, kAny, {"MULTINOMIAL", "POISSON", "NONPARAMETRIC"}},
      {kLog,    "FIX_MARGIN",  Spec::kKeyword,   kVal, kAny, {"TOTAL", "COLUMN", "ROW"}},
      {kLog,    "PRIOR_TYPE",  Spec::kKeyword,   kVal, kAny, {"CONJUGATE", "MIXTURE_DIRICHLET", "INTRINSIC"}},
      {kLog,    "SHAPEPARAMS", Spec::kTokenList, kVal},
      {kLog,    "SCALEPARAM",  Spec::kNumber,    kVal, Above(0), {"DATA"}},
      {kLog,    "LAMBDAS",     Spec::kNumbers,   kVal, Above(0)}}},
    {kOne, "DATA", Spec::kNamedParameters, 0, true, {
      {kOne, "VARIABLES",       Spec::kTokenList, kReqVal},
      {kOne, "VARIANCE",        Spec::kNumber,    kVal, Above(0)},
      {kOne, "SUCCESS",         Spec::kQualifier, kVal, kAny, {}, {
        Bare("FIRST"), Bare("LAST"), Bare("MIDPOINT"),
        {"CUTPOINT", false, Spec::kNumber, kVal},
        {"LEVEL", false, Spec::kTokenList, kVal}}},
      {kOne, "NULLVALUE",       Spec::kNumber,    kVal},
      {kOne, "NULLPRIORPARAM",  Spec::kNumbers,   kVal, AtLeast(0)},
      {kOne, "ALTERGVALUE",     Spec::kNumber,    kVal, Above(0)},
      {kOne, "ALTERPRIORPARAM", Spec::kNumbers,   kVal, AtLeast(0)}}},
    {kRel, "PAIR", Spec::kNamedParameters, kRel, true, {
      {kRel, "VARIABLES",   Spec::kVariablePairs, kReqVal},
      {kRel, "VARIANCE",    Spec::kNumber,        kVal, Above(0)},
      {kRel, "NULLVALUE",   Spec::kNumber,        kVal},
      {kRel, "ALTERGVALUE", Spec::kNumber,        kVal, Above(0)}}},
    {kTests | kModels, "PRIOR", Spec::kNamedParameters, 0, false, {
      {kInd,        "EQUALDATAVAR", Spec::kKeyword,   kVal, kAny, kFalseTrue},
      {kTests,      "TYPE",         Spec::kQualifier, kVal, kAny, {}, {
        {"CONJUGATE", false, Spec::kNumbers, kNone},
        Bare("CUSTOM")}},
      {kOne | kRel, "VARDIST",      Spec::kQualifier, kVal, kAny, {}, {
        Bare("DIFFUSE"),
        {"INVCHISQ", false, Spec::kNumbers, kVal, Above(0)},
        {"INVGAMMA", false, Spec::kNumbers, kVal, Above(0)},
        Bare("JEFFREYS2"), Bare("JEFFREYS4")}},
      {kInd,        "VARDIST",      Spec::kQualifier, kVal, kAny, {}, {
        Bare("DIFFUSE"),
        {"INVCHISQ", false, Spec::kNumbers, kVal, Above(0)},
        {"INVGAMMA", false, Spec::kNumbers, kVal, Above(0)},
        Bare("JEFFREYS"), Bare("JEFFREYS4")}},
      {kTests,      "PRECDIST",     Spec::kQualifier, kVal, kAny, {}, {
        {"GAMMA", false, Spec::kNumbers, kVal, Above(0)},
        {"CHISQ", false, Spec::kNumber, kVal, Above(0)}}},
      {kTests,      "MEANDIST",     Spec::kQualifier, kVal, kAny, {}, {
        Bare("DIFFUSE"),
        {"NORMAL", false, Spec::kNumbers, kVal}}},
      {kTests,      "KAPPA",        Spec::kNumber,    kVal, Above(0)},
      {kModels,     "TYPE",         Spec::kKeyword,   kVal, kAny, {"REFERENCE", "CONJUGATE"}},
      {kModels,     "SHAPEPARAM",   Spec::kNumber,    kVal, Above(0)},
      {kModels,     "SCALEPARAM",   Spec::kNumber,    kVal, Above(0)},
      {kModels,     "MEANVECTOR",   Spec::kNumbers,   kVal},
      {kModels,     "VMATRIX",      Spec::kTokenList, kVal}}},
    {kModels, "DESIGN", Spec::kNamedParameters, 0, false, {
      {kModels, "REGWGT",     Spec::kVariable,  kVal},
      {kModels, "FACTORS",    Spec::kTokenList, kVal},
      {kModels, "COVARIATES", Spec::kTokenList, kVal}}},
    {kModels, "PREDICT", Spec::kNamedParameters, 0, false, {
      {kModels, "REGRESSORS", Spec::kTokenList, kVal}}},
    {kModels, "SAVE", Spec::kBareOrOneValue, 0, false, {
      {kModels, "MEANPRED",    Spec::kVariable, kNone},
      {kModels, "VARIANCE",    Spec::kVariable, kNone},
      {kModels, "MODE",        Spec::kVariable, kNone},
      {kModels, "CIMEANPREDL", Spec::kVariable, kNone},
      {kModels, "CIMEANPREDU", Spec::kVariable, kNone}}},
    {kModels, "OUTFILE", Spec::kNamedParameters, 0, false, {
      {kModels, "MODEL",     Spec::kFile, kVal},
      {kModels, "PARAMETER", Spec::kFile, kVal}}},
    {kReg, "FTEST", Spec::kNamedParameters, 0, true, {
      {kReg, "LABEL",      Spec::kQuotedText, kVal},
      {kReg, "VARIABLES",  Spec::kTokenList,  kVal},
      {kReg, "INTERCEPT",  Spec::kKeyword,    kVal, kAny, kFalseTrue},
      {kReg, "TESTVALUES", Spec::kNumbers,    kVal}}},
    {kLog, "TABLE", Spec::kUnnamedBody, 0, false, {
      {kLog, "", Spec::kTable, kVal}}},
    {kLog, "PRINT", Spec::kNamedParameters, 0, false, {
      {kLog, "SUPPRESS_TABLE", Spec::kKeyword,  kVal, kAny, kFalseTrue},
      {kLog, "CELLS",          Spec::kKeywords, kVal, kAny, {"OBSERVED", "ROW", "COLUMN", "EXPECTED", "TOTAL", "ALL"}},
      {kLog, "STATISTICS",     Spec::kKeywords, kVal, kAny, {"CHISQ", "LRT"}}}},
    {kModels, "PLOT", Spec::kNamedParameters, 0, false, {
      {kReg,    "FACTORS",      Spec::kTokenList, kVal},
      {kReg,    "COVARIATES",   Spec::kTokenList, kVal},
      {kReg,    "MAX_CATEGORY", Spec::kInteger,   kVal},
      {kReg,    "INTERCEPT",    Spec::kKeyword,   kVal, kAny, kFalseTrue},
      {kAnv,    "MEANS",        Spec::kTokenList, kVal},
      {kModels, "ERRORVAR",     Spec::kKeyword,   kVal, kAny, kFalseTrue},
      {kReg,    "BAYESPRED",    Spec::kKeyword,   kVal, kAny, kFalseTrue}}},
  };
  return rows;
}
// clang-format on

void SetLimits(ParamDescriptor& param, const Limits& limits) {
  if (limits.lowerOption != 0) {
    param.setLowerBoundary(limits.lower, static_cast<Spec::LowerBdryOptions>(limits.lowerOption));
  }
  if (limits.upperOption != 0) {
    param.setUpperBoundary(limits.upper, static_cast<Spec::UpperBdryOptions>(limits.upperOption));
  }
}

ParamDescriptor MakeQualifier(const QualifierRow& row) {
  ParamDescriptor qualifier(row.name, row.spec, row.flags.required, row.flags.valueRequired,
                            Spec::kBracketsFree);
  SetLimits(qualifier, row.limits);
  return qualifier;
}

ParamDescriptor MakeParam(const ParamRow& row) {
  ParamDescriptor param(row.name, row.spec, row.flags.required, row.flags.valueRequired, Spec::kBracketsFree);
  for (const char* word : row.words) param.addStringValue(word);
  for (const QualifierRow& qualifier : row.qualifiers) {
    if (qualifier.bare) {
      param.addQualifDesc(qualifier.name);
    } else {
      param.addQualifDesc(MakeQualifier(qualifier));
    }
  }
  if (row.exactlyOneQualifier) param.setQualifOption(Spec::kExactlyOneQualifier);
  SetLimits(param, row.limits);
  return param;
}

SubComDescriptor MakeSubCom(const SubComRow& row, unsigned command) {
  SubComDescriptor subcommand(row.name, row.spec, (row.required & command) != 0, row.repeatable);
  for (const ParamRow& param : row.params) {
    if ((param.commands & command) == 0) continue;
    if (row.spec == Spec::kUnnamedBody) {
      subcommand.setExportParamDesc(MakeParam(param));
    } else {
      subcommand.addParamDesc(MakeParam(param));
    }
  }
  return subcommand;
}

}  // namespace

void BYSParser::SetCommandDescriptor(BSNConst::ModelTypes type, CommandDescriptor& descriptor) {
  const unsigned command = Bit(type);
  for (const SubComRow& row : Rows()) {
    if ((row.commands & command) != 0) descriptor.addSubComDesc(MakeSubCom(row, command));
  }
}
