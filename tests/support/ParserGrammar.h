// A grammar with every kind of parameter, for the parser's tests.
#pragma once

#include "platform/host/Grammar.h"

namespace BayesHost {

inline ParamDescriptor MakeParam(const char* name, UPSpecTypes::ParamSpec spec, bool required = false,
                                 bool valueRequired = true) {
  return {name, spec, required, valueRequired, UPSpecTypes::kBracketsFree};
}

inline ParamDescriptor MakeKeywordParam(const char* name, UPSpecTypes::ParamSpec spec,
                                        std::initializer_list<const char*> keywords) {
  ParamDescriptor param = MakeParam(name, spec);
  for (const char* keyword : keywords) param.addStringValue(keyword);
  return param;
}

inline SubComDescriptor MakeCriteria() {
  SubComDescriptor criteria("CRITERIA", UPSpecTypes::kNamedParameters, false, false);
  ParamDescriptor level = MakeParam("CILEVEL", UPSpecTypes::kNumber);
  level.setLowerBoundary(0, UPSpecTypes::kAtLeast);
  level.setUpperBoundary(100, UPSpecTypes::kLessThan);
  ParamDescriptor seed = MakeKeywordParam("SEED", UPSpecTypes::kInteger, {"RANDOM"});
  seed.setLowerBoundary(0, UPSpecTypes::kGreaterThan);
  ParamDescriptor tolerance = MakeParam("TOL", UPSpecTypes::kNumber);
  tolerance.setLowerBoundary(0, UPSpecTypes::kGreaterThan);
  tolerance.setUpperBoundary(0.001, UPSpecTypes::kAtMost);
  criteria.addParamDesc(level);
  criteria.addParamDesc(MakeKeywordParam("METHOD", UPSpecTypes::kKeyword, {"AGL", "MCA"}));
  criteria.addParamDesc(seed);
  criteria.addParamDesc(tolerance);
  criteria.addParamDesc(MakeKeywordParam("MODE", UPSpecTypes::kKeyword, {"CONTRAST", "CONTROL", "CON"}));
  return criteria;
}

inline SubComDescriptor MakePrior() {
  SubComDescriptor prior("PRIOR", UPSpecTypes::kNamedParameters, false, true);
  ParamDescriptor conjugate = MakeParam("CONJUGATE", UPSpecTypes::kNumbers, false, false);
  conjugate.setLowerBoundary(0, UPSpecTypes::kAtLeast);
  ParamDescriptor type = MakeParam("TYPE", UPSpecTypes::kQualifier);
  type.addQualifDesc(conjugate);
  type.addQualifDesc("CUSTOM");
  type.addQualifDesc(MakeParam("LEVEL", UPSpecTypes::kTokenList));
  type.addQualifDesc(MakeParam("CUTPOINT", UPSpecTypes::kNumber));
  type.setQualifOption(UPSpecTypes::kExactlyOneQualifier);
  prior.addParamDesc(type);
  prior.addParamDesc(MakeParam("KAPPA", UPSpecTypes::kNumber, false, false));
  prior.addParamDesc(MakeParam("MEANVECTOR", UPSpecTypes::kNumbers));
  prior.addParamDesc(MakeParam("VMATRIX", UPSpecTypes::kTokenList));
  return prior;
}

// TEST names [BY ...] [WITH ...]: required body, then subcommands of which /INFERENCE is required.
inline CommandDescriptor MakeTestGrammar() {
  CommandDescriptor grammar("BAYES TEST", "Test of the parser");
  grammar.addSubComDesc(SubComDescriptor("", UPSpecTypes::kUnnamedBody, false, false));
  grammar.addSubComDesc(MakeCriteria());
  SubComDescriptor inference("INFERENCE", UPSpecTypes::kNamedParameters, true, false);
  inference.addParamDesc(MakeParam("VARIABLES", UPSpecTypes::kTokenList, true));
  inference.addParamDesc(MakeParam("GROUP", UPSpecTypes::kVariable));
  grammar.addSubComDesc(inference);
  grammar.addSubComDesc(MakePrior());
  SubComDescriptor pair("PAIR", UPSpecTypes::kNamedParameters, false, true);
  pair.addParamDesc(MakeParam("VARIABLES", UPSpecTypes::kVariablePairs, true));
  pair.addParamDesc(MakeParam("VARIANCE", UPSpecTypes::kNumber));
  grammar.addSubComDesc(pair);
  SubComDescriptor save("SAVE", UPSpecTypes::kBareOrOneValue, false, false);
  for (const char* name : {"MEANPRED", "VARIANCE", "MODE"})
    save.addParamDesc(name, UPSpecTypes::kVariable, false, false, UPSpecTypes::kBracketsFree);
  grammar.addSubComDesc(save);
  SubComDescriptor outfile("OUTFILE", UPSpecTypes::kNamedParameters, false, false);
  outfile.addParamDesc("MODEL", UPSpecTypes::kFile, false, true, UPSpecTypes::kBracketsFree);
  outfile.addParamDesc("LABEL", UPSpecTypes::kQuotedText, false, true, UPSpecTypes::kBracketsFree);
  grammar.addSubComDesc(outfile);
  SubComDescriptor table("TABLE", UPSpecTypes::kUnnamedBody, false, false);
  table.setExportParamDesc(MakeParam("", UPSpecTypes::kTable));
  grammar.addSubComDesc(table);
  SubComDescriptor print("PRINT", UPSpecTypes::kNamedParameters, false, false);
  print.addParamDesc(MakeKeywordParam("CELLS", UPSpecTypes::kKeywords, {"OBSERVED", "ROW", "COLUMN"}));
  print.addParamDesc(MakeParam("STATISTICS", UPSpecTypes::kNumbers, false, false));
  grammar.addSubComDesc(print);
  return grammar;
}

}  // namespace BayesHost
