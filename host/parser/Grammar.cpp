#include "platform/host/Grammar.h"

#include <utility>

ParamDescriptor::ParamDescriptor(std::string name, UPSpecTypes::ParamSpec spec, bool required,
                                 bool valueRequired, UPSpecTypes::BracketOptions)
    : fName(std::move(name)), fSpec(spec), fRequired(required), fValueRequired(valueRequired) {}

void ParamDescriptor::addStringValue(const std::string& keyword) {
  fvStringValues.push_back(keyword);
}

void ParamDescriptor::addQualifDesc(const std::string& keyword) {
  ParamDescriptor bare(keyword, UPSpecTypes::kKeyword, false, false, UPSpecTypes::kBracketsFree);
  bare.fBare = true;
  fvQualifiers.push_back(std::move(bare));
}

void ParamDescriptor::addQualifDesc(const ParamDescriptor& qualifier) {
  fvQualifiers.push_back(qualifier);
}

void ParamDescriptor::setLowerBoundary(double bound, UPSpecTypes::LowerBdryOptions option) {
  fLower = {bound, option};
}

void ParamDescriptor::setUpperBoundary(double bound, UPSpecTypes::UpperBdryOptions option) {
  fUpper = {bound, option};
}

void ParamDescriptor::setQualifOption(UPSpecTypes::QualifOptions option) {
  fExactlyOneQualifier = option == UPSpecTypes::kExactlyOneQualifier;
}

SubComDescriptor::SubComDescriptor(std::string name, UPSpecTypes::SubComSpec spec, bool required,
                                   bool repeatable)
    : fName(std::move(name)), fSpec(spec), fRequired(required), fRepeatable(repeatable) {}

void SubComDescriptor::addParamDesc(const ParamDescriptor& param) {
  fvParams.push_back(param);
}

void SubComDescriptor::addParamDesc(const std::string& name, UPSpecTypes::ParamSpec spec, bool required,
                                    bool valueRequired, UPSpecTypes::BracketOptions brackets) {
  fvParams.emplace_back(name, spec, required, valueRequired, brackets);
}

void SubComDescriptor::setExportParamDesc(const ParamDescriptor& param) {
  fExportParam = param;
}

CommandDescriptor::CommandDescriptor(std::string commandName, std::string procTitle)
    : fCommandName(std::move(commandName)), fProcTitle(std::move(procTitle)) {}

void CommandDescriptor::addSubComDesc(const SubComDescriptor& subcommand) {
  fvSubComs.push_back(subcommand);
}
