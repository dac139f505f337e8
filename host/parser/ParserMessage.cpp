#include "platform/host/Messages.h"

#include <utility>
#include <vector>

#include "host/output/HostKeys.h"
#include "host/parser/Fault.h"
#include "host/parser/GrammarWords.h"
#include "host/parser/ParserRun.h"

namespace {

using BayesHost::Message;

// The place of the first parameter that the arguments name, alone ("MEANDIST") or with more words behind it
// ("MEANDIST NORMAL 2").
std::size_t FindPlaceOf(const std::vector<std::string>& arguments) {
  const auto& subcommand = BayesHost::GetParserRun().fpLastRead;
  if (subcommand == nullptr) return 0;
  for (const std::string& argument : arguments)
    if (const ParamObj* const param =
            BayesHost::FindParam(*subcommand, argument.substr(0, argument.find(' '))))
      return param->GetState().fPosition;
  return subcommand->fPosition;
}

void Show(Message::Level level, const std::string& key, std::vector<std::string> arguments) {
  while (!arguments.empty() && arguments.back().empty()) arguments.pop_back();
  const std::size_t position = FindPlaceOf(arguments);
  BayesHost::ShowFault({key, BayesHost::Arguments(arguments.begin(), arguments.end()), position, level});
}

void ShowError(const char* key, std::vector<std::string> arguments) {
  Show(Message::Level::Error, key, std::move(arguments));
}

}  // namespace

ParserMessage::ParserMessage() = default;

void ParserMessage::SetCommandName(const std::string& commandName) {
  fCommandName = commandName;
}

void ParserMessage::SetProcedureTitle(const std::string& procTitle) {
  fProcTitle = procTitle;
}

void ParserMessage::GenericError(const std::string& key, const std::string& arg1, const std::string& arg2,
                                 const std::string& arg3, const std::string& arg4,
                                 const std::string& arg5) const {
  Show(Message::Level::Error, key, {arg1, arg2, arg3, arg4, arg5});
}

void ParserMessage::GenericWarning(const std::string& key, const std::string& arg1, const std::string& arg2,
                                   const std::string& arg3, const std::string& arg4,
                                   const std::string& arg5) const {
  Show(Message::Level::Warning, key, {arg1, arg2, arg3, arg4, arg5});
}

void ParserMessage::NoSubCom() const {
  ShowError(BayesHost::kHostNoSubCom, {fCommandName, fProcTitle});
}

void ParserMessage::ParamExclusive(const std::string& first, const std::string& second,
                                   const std::string& subcommand) const {
  ShowError(BayesHost::kHostParamExclusive, {first, second, subcommand});
}

void ParserMessage::ParamNeedNumber(const std::string& parameter, const std::string& subcommand) const {
  ShowError(BayesHost::kHostParamNeedNumber, {parameter, subcommand});
}

void ParserMessage::TokenNoQualif(const std::string& parameter, const std::string& subcommand) const {
  ShowError(BayesHost::kHostTokenNoQualif, {parameter, subcommand});
}

void ParserMessage::VariableNotNumeric(const std::string& variable, const std::string& parameter,
                                       const std::string& subcommand) const {
  ShowError(BayesHost::kHostVariableNotNumeric, {variable, parameter, subcommand, ""});
}

void ParserMessage::ParamValueBreakBdry(const std::string& parameter, const std::string& subcommand,
                                        double lower, UPSpecTypes::LowerBdryOptions lowerOption) const {
  BayesHost::ShowFault(BayesHost::MakeBoundaryFault(
      parameter, subcommand, BayesHost::LowerBoundary{lower, lowerOption}, {}, FindPlaceOf({parameter})));
}

void ParserMessage::ParamValueBreakBdry(const std::string& parameter, const std::string& subcommand,
                                        double lower, UPSpecTypes::LowerBdryOptions lowerOption, double upper,
                                        UPSpecTypes::UpperBdryOptions upperOption) const {
  BayesHost::ShowFault(
      BayesHost::MakeBoundaryFault(parameter, subcommand, BayesHost::LowerBoundary{lower, lowerOption},
                                   BayesHost::UpperBoundary{upper, upperOption}, FindPlaceOf({parameter})));
}
