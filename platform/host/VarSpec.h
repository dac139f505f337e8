// Variable lists of a command, validated against the active data set.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/host/Data.h"
#include "platform/host/Grammar.h"
#include "platform/host/Tokens.h"

// The variables that one subcommand's parameter names. Words its own errors (unknown name, wrong type, shared
// variable), each with the place in the text and, for an unknown name, the nearest one. Indices are
// dictionary indices of the active data set.
class BAYES_PLATFORM VarSpecObj {
 public:
  // A list that comes from the data set, not from the command ("SPLIT FILE", "WEIGHT").
  VarSpecObj(const std::string& name, bool numericOnly);
  // A list of the command being parsed.
  VarSpecObj(const std::string& subcommand, const std::string& parameter, bool numericOnly,
             const CommandDescriptor& grammar);
  // A variable to be made: `root` is the parameter that asks for it. The flag is reserved; pass false.
  VarSpecObj(const std::string& root, const std::string& subcommand, const std::string& command,
             const ZARQ_DataSource& dataSource, bool);
  ~VarSpecObj();
  VarSpecObj(const VarSpecObj&);
  VarSpecObj& operator=(const VarSpecObj&);

  void SetVariable(int index);
  void SetVariables(const std::vector<int>& indices);
  void SetNumericVars(bool numericOnly);
  // Off: a failing validation stays silent and the caller words the error.
  void SetErrorReport(bool on);

  // Resolves names, `a TO d` and ALL; a repeated name counts once. False: an error was reported and the list
  // is empty.
  bool ValidateVariables(const std::vector<ZARQ_Token>& names);
  // `dependent BY factors WITH covariates`; this object takes the dependent variable. Dependent variable and
  // covariates must be numeric. `repeatOption` 0: a variable stands once in the whole list.
  bool ValidateRegrVarList(const std::vector<ZARQ_Token>& names, VarSpecObj& factors, const std::string& by,
                           VarSpecObj& covariates, const std::string& with, int repeatOption);
  // False (reported): the two lists share a variable.
  bool CheckCommonVars(const VarSpecObj& other) const;
  // False (reported): a variable is not among those of `whole`.
  bool CheckVarListSubset(const VarSpecObj& whole) const;
  // The token as a value of variable `index` (a number for a numeric variable, text for a string variable).
  // Null (reported unless SetErrorReport is off): it can't be one. The value lives as long as the command's
  // run.
  const OBS* ValidateCatValue(int index, const ZARQ_Token& value) const;

  // A name that no variable has: the root and the first suffix _1, _2 ... that is free. False (reported): the
  // root can't begin a name.
  bool NewVarNameByRoot(const ZarqVarName& root, ZarqVarName& result) const;
  // Negative: a new variable can have the name. Otherwise (reported) the index of the variable that has it,
  // in upper or lower case, or 0 when it is no name.
  int CheckNewVariable(const ZarqVarName& name) const;

  int GetNValidVars() const;
  const std::vector<int>& GetVariables() const;

 private:
  struct State;
  std::unique_ptr<State> fpState;
};
