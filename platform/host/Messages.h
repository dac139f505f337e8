// Keyed diagnostics of the command readers.
#pragma once

#include <string>

#include "platform/Visibility.h"
#include "platform/host/Grammar.h"

// Shows messages at their place in the command text: that of the first argument whose first word names a
// parameter of the subcommand last read, else the subcommand's. Keys are looked up in the host's string
// table, arguments fill ^1 to ^5. An error makes the command fail; a warning doesn't.
class BAYES_PLATFORM ParserMessage {
 public:
  ParserMessage();

  void SetCommandName(const std::string& commandName);
  void SetProcedureTitle(const std::string& procTitle);

  void GenericError(const std::string& key, const std::string& arg1 = {}, const std::string& arg2 = {},
                    const std::string& arg3 = {}, const std::string& arg4 = {},
                    const std::string& arg5 = {}) const;
  void GenericWarning(const std::string& key, const std::string& arg1 = {}, const std::string& arg2 = {},
                      const std::string& arg3 = {}, const std::string& arg4 = {},
                      const std::string& arg5 = {}) const;

  void NoSubCom() const;
  void ParamExclusive(const std::string& first, const std::string& second,
                      const std::string& subcommand) const;
  void ParamNeedNumber(const std::string& parameter, const std::string& subcommand) const;
  void TokenNoQualif(const std::string& parameter, const std::string& subcommand) const;
  void VariableNotNumeric(const std::string& variable, const std::string& parameter,
                          const std::string& subcommand) const;
  // A number breaks its lower boundary.
  void ParamValueBreakBdry(const std::string& parameter, const std::string& subcommand, double lower,
                           UPSpecTypes::LowerBdryOptions lowerOption) const;
  // A number lies outside an interval.
  void ParamValueBreakBdry(const std::string& parameter, const std::string& subcommand, double lower,
                           UPSpecTypes::LowerBdryOptions lowerOption, double upper,
                           UPSpecTypes::UpperBdryOptions upperOption) const;

 private:
  std::string fCommandName;
  std::string fProcTitle;
};
