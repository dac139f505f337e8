#include <algorithm>
#include <utility>

#include "host/data/Variable.h"
#include "host/output/HostKeys.h"
#include "host/parser/Fault.h"
#include "host/parser/Keywords.h"
#include "host/parser/ParserRun.h"
#include "host/parser/TokenCursor.h"
#include "host/parser/VariableNames.h"
#include "host/session/Session.h"
#include "platform/host/VarSpec.h"

using BayesHost::ListName;
using BayesHost::NamedVariable;
using BayesHost::Reject;
using BayesHost::Rejection;
using BayesHost::Session;

struct VarSpecObj::State {
  State(ListName name, bool numericOnly) : fName(std::move(name)), fNumericOnly(numericOnly) {}

  ListName fName;
  bool fNumericOnly;
  bool fReports = true;
  std::vector<int> fvIndices;
  // Where each variable was named; 0 for one from the data set.
  std::vector<std::size_t> fvPositions;

  // Drops repeats.
  void Set(const std::vector<NamedVariable>& variables) {
    fvIndices.clear();
    fvPositions.clear();
    for (const NamedVariable& variable : variables) {
      if (std::find(fvIndices.begin(), fvIndices.end(), variable.fIndex) != fvIndices.end()) continue;
      fvIndices.push_back(variable.fIndex);
      fvPositions.push_back(variable.fPosition);
    }
  }

  bool Holds(int index) const {
    return std::find(fvIndices.begin(), fvIndices.end(), index) != fvIndices.end();
  }

  // Runs a check that throws a Rejection; false (reported, unless that is off) when it did.
  template <class Check>
  bool Passes(Check check) const {
    try {
      check();
      return true;
    } catch (const Rejection& rejection) {
      if (fReports) BayesHost::ShowFault(rejection.fFault);
      return false;
    }
  }
};

namespace {

const ZARQ_Variable& GetVariable(int index) {
  return ProcedureDataSource().GetVariable(index);
}

std::vector<NamedVariable> Resolve(const std::vector<ZARQ_Token>& words, const ListName& list) {
  if (Session::Current().GetData() == nullptr)
    Reject(Session::Current().GetNoDataKey(), {}, words.empty() ? 0 : words.front().GetPosition());
  const ProcedureDataSource data;
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(data.ColumnCount()));
  for (int i = 0; i < data.ColumnCount(); ++i) names.push_back(data.GetVariable(i).GetName());
  return BayesHost::VariableNames(std::move(names)).Resolve(words, list);
}

void CheckNumeric(const std::vector<NamedVariable>& variables, const char* key, const ListName& list) {
  for (const NamedVariable& named : variables) {
    const ZARQ_Variable& variable = GetVariable(named.fIndex);
    if (!variable.IsString()) continue;
    const std::string& reason = variable.GetState().fTextReason;
    Reject(key, {variable.GetName(), list.fParam, list.fWhere, reason.empty() ? reason : " " + reason},
           named.fPosition);
  }
}

void CheckRepeats(const std::vector<NamedVariable>& variables) {
  for (auto later = variables.begin(); later != variables.end(); ++later)
    if (std::any_of(variables.begin(), later,
                    [&](const NamedVariable& earlier) { return earlier.fIndex == later->fIndex; }))
      Reject(BayesHost::kHostVariableRepeated, {GetVariable(later->fIndex).GetName()}, later->fPosition);
}

bool IsBlank(const std::string& text) {
  return text.find_first_not_of(' ') == std::string::npos;
}

// Names that differ in case alone can't stand side by side in a file that the data engine writes.
int FindTaken(const std::string& name) {
  const ProcedureDataSource data;
  for (int i = 0; i < data.ColumnCount(); ++i)
    if (BayesHost::IsSameWord(data.GetVariable(i).GetName(), name)) return i;
  return -1;
}

// Where the command asks for a variable that is to be made: its name, or else the parameter.
std::size_t FindPlace(const ListName& list) {
  const auto& read = BayesHost::GetParserRun().fRead;
  const auto subcommand = read.find(list.fWhere);
  const ParamObj* const param =
      subcommand == read.end() ? nullptr : BayesHost::FindParam(*subcommand->second, list.fParam);
  if (param == nullptr) return 0;
  const ParamObj::State& state = param->GetState();
  return state.fvTokens.empty() ? state.fPosition : state.fvTokens.front().GetPosition();
}

std::vector<NamedVariable> Join(const std::vector<NamedVariable>& first,
                                const std::vector<NamedVariable>& second,
                                const std::vector<NamedVariable>& third) {
  std::vector<NamedVariable> all(first);
  all.insert(all.end(), second.begin(), second.end());
  all.insert(all.end(), third.begin(), third.end());
  return all;
}

// A list without a parameter's name goes by its subcommand's, one without either by its command's.
ListName MakeListName(const std::string& subcommand, const std::string& parameter,
                      const std::string& command) {
  const std::string& where = subcommand.empty() ? command : subcommand;
  return {parameter.empty() ? where : parameter, where};
}

}  // namespace

VarSpecObj::VarSpecObj(const std::string& name, bool numericOnly)
    : fpState(std::make_unique<State>(ListName{name, name}, numericOnly)) {}

VarSpecObj::VarSpecObj(const std::string& subcommand, const std::string& parameter, bool numericOnly,
                       const CommandDescriptor& grammar)
    : fpState(std::make_unique<State>(MakeListName(subcommand, parameter, grammar.GetCommandName()),
                                      numericOnly)) {}

VarSpecObj::VarSpecObj(const std::string& root, const std::string& subcommand, const std::string&,
                       const ZARQ_DataSource&, bool)
    : fpState(std::make_unique<State>(ListName{root, subcommand}, true)) {}

VarSpecObj::~VarSpecObj() = default;
VarSpecObj::VarSpecObj(const VarSpecObj& other) : fpState(std::make_unique<State>(*other.fpState)) {}
VarSpecObj& VarSpecObj::operator=(const VarSpecObj& other) {
  *fpState = *other.fpState;
  return *this;
}

void VarSpecObj::SetVariable(int index) {
  SetVariables({index});
}

void VarSpecObj::SetVariables(const std::vector<int>& indices) {
  std::vector<NamedVariable> variables;
  variables.reserve(indices.size());
  for (const int index : indices) variables.push_back({index, 0});
  fpState->Set(variables);
}

void VarSpecObj::SetNumericVars(bool numericOnly) {
  fpState->fNumericOnly = numericOnly;
}

void VarSpecObj::SetErrorReport(bool on) {
  fpState->fReports = on;
}

bool VarSpecObj::ValidateVariables(const std::vector<ZARQ_Token>& names) {
  fpState->Set({});
  return fpState->Passes([&] {
    const std::vector<NamedVariable> variables = Resolve(names, fpState->fName);
    if (fpState->fNumericOnly) CheckNumeric(variables, BayesHost::kHostVariableNotNumeric, fpState->fName);
    fpState->Set(variables);
  });
}

bool VarSpecObj::ValidateRegrVarList(const std::vector<ZARQ_Token>& names, VarSpecObj& factors,
                                     const std::string& by, VarSpecObj& covariates, const std::string& with,
                                     int repeatOption) {
  for (VarSpecObj* const list : {this, &factors, &covariates}) list->fpState->Set({});
  return fpState->Passes([&] {
    const ListName& list = fpState->fName;
    const BayesHost::RegressionWords words = BayesHost::SplitRegressionWords(names, by, with, list);
    const auto dependent = Resolve(words.fvDependent, list);
    const auto factorList = Resolve(words.fvFactors, factors.fpState->fName);
    const auto covariateList = Resolve(words.fvCovariates, covariates.fpState->fName);
    if (dependent.size() != 1)
      Reject(BayesHost::kHostNeedDependent, {list.fWhere}, names.front().GetPosition());
    CheckNumeric(dependent, BayesHost::kHostDependentNotNumeric, list);
    CheckNumeric(covariateList, BayesHost::kHostCovariateNotNumeric, list);
    if (repeatOption == 0) CheckRepeats(Join(dependent, factorList, covariateList));
    fpState->Set(dependent);
    factors.fpState->Set(factorList);
    covariates.fpState->Set(covariateList);
  });
}

bool VarSpecObj::CheckCommonVars(const VarSpecObj& other) const {
  return fpState->Passes([&] {
    for (std::size_t i = 0; i < fpState->fvIndices.size(); ++i)
      if (other.fpState->Holds(fpState->fvIndices[i]))
        Reject(BayesHost::kHostVariableCommon,
               {GetVariable(fpState->fvIndices[i]).GetName(), fpState->fName.fParam,
                other.fpState->fName.fParam},
               fpState->fvPositions[i]);
  });
}

bool VarSpecObj::CheckVarListSubset(const VarSpecObj& whole) const {
  return fpState->Passes([&] {
    for (std::size_t i = 0; i < fpState->fvIndices.size(); ++i)
      if (!whole.fpState->Holds(fpState->fvIndices[i]))
        Reject(BayesHost::kHostVariableNotInList,
               {GetVariable(fpState->fvIndices[i]).GetName(), fpState->fName.fParam,
                whole.fpState->fName.fParam},
               fpState->fvPositions[i]);
  });
}

const OBS* VarSpecObj::ValidateCatValue(int index, const ZARQ_Token& value) const {
  const ZARQ_Variable& variable = GetVariable(index);
  const bool fits = fpState->Passes([&] {
    if (variable.IsString() == value.IsNumber())
      Reject(value.IsNumber() ? BayesHost::kHostCategoryNeedText : BayesHost::kHostCategoryNeedNumber,
             {value.GetText(), variable.GetName()}, value.GetPosition());
  });
  if (!fits) return nullptr;
  return &BayesHost::GetParserRun().fValues.emplace_back(value.IsNumber() ? OBS(value.GetNumber())
                                                                          : OBS(value.GetText()));
}

bool VarSpecObj::NewVarNameByRoot(const ZarqVarName& root, ZarqVarName& result) const {
  const bool named = fpState->Passes([&] {
    if (IsBlank(root.GetText()))
      Reject(BayesHost::kHostNameRoot, {root.GetText(), fpState->fName.fWhere}, FindPlace(fpState->fName));
  });
  if (!named) return false;
  for (int suffix = 1;; ++suffix) {
    const std::string name = root.GetText() + "_" + std::to_string(suffix);
    if (FindTaken(name) >= 0) continue;
    result = ZarqVarName(name);
    return true;
  }
}

int VarSpecObj::CheckNewVariable(const ZarqVarName& name) const {
  const std::string& text = name.GetText();
  const int taken = IsBlank(text) ? -1 : FindTaken(text);
  const bool free = fpState->Passes([&] {
    if (IsBlank(text))
      Reject(BayesHost::kHostNameBad, {text, fpState->fName.fWhere}, FindPlace(fpState->fName));
    if (taken >= 0)
      Reject(BayesHost::kHostNameTaken, {GetVariable(taken).GetName(), fpState->fName.fWhere},
             FindPlace(fpState->fName));
  });
  return free ? -1 : std::max(taken, 0);
}

int VarSpecObj::GetNValidVars() const {
  return static_cast<int>(fpState->fvIndices.size());
}

const std::vector<int>& VarSpecObj::GetVariables() const {
  return fpState->fvIndices;
}
