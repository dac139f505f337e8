#include <fmt/format.h>

#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>

#include "host/output/BpCellTextState.h"
#include "host/output/CommandOutput.h"
#include "host/output/NumberFormat.h"
#include "host/session/Session.h"

using BayesHost::Argument;
using BayesHost::ShownText;

namespace {

using StatePointer = std::shared_ptr<BpCellText::State>;

StatePointer MakeState(ShownText shown) {
  auto state = std::make_shared<BpCellText::State>();
  state->fShown = std::move(shown);
  return state;
}

// The few keys that tables, one for each of a hundred thousand groups of cases, are labelled with: what they
// show is made once.
StatePointer ShareKey(const std::string& key) {
  thread_local std::unordered_map<std::string, StatePointer> states;
  StatePointer& state = states[key];
  if (state == nullptr) state = MakeState(BayesHost::ShowKey(key));
  return state;
}

StatePointer MakeNumber(double value, const BpFormatSpec& format) {
  ShownText shown = ShownText::Plain(BayesHost::ShowNumber(value, format));
  shown.fIdentity = "number:" + std::string(reinterpret_cast<const char*>(&value), sizeof value);
  StatePointer state = MakeState(std::move(shown));
  state->fNumber = value;
  return state;
}

StatePointer MakeVariable(const ZARQ_Variable& variable, BpVariable::Show show) {
  const bool asLabel = show == BpVariable::kLabelElseName;
  ShownText shown = ShownText::Plain(asLabel ? variable.GetPreferredLabel() : variable.GetName());
  shown.fVariable = variable.GetName();
  shown.fIdentity = "variable:" + variable.GetName();
  return MakeState(std::move(shown));
}

StatePointer MakeDataValue(const OBS& value, const ZARQ_Variable& variable) {
  const std::string plain = value.IsString() ? value.GetString() : fmt::format("{}", value.GetNumber());
  const std::string label = variable.GetValueLabel(value);
  ShownText shown = ShownText::Plain(label.empty() ? plain : label);
  shown.fVariable = variable.GetName();
  shown.fValue =
      value.IsString() ? BayesHost::DataValue(value.GetString()) : BayesHost::DataValue(value.GetNumber());
  shown.fIdentity = "value:" + variable.GetName() + '\x1f' + plain;
  return MakeState(std::move(shown));
}

StatePointer MakeComposite(const std::string& key, bool translatable) {
  StatePointer state = MakeState({});
  state->fShown.fKey = key;
  state->fShown.fIdentity = "composite:" + key;
  state->fIsTranslatable = translatable;
  state->fIsFinished = false;
  return state;
}

void Require(bool condition, const char* what) {
  if (!condition) throw std::logic_error(what);
}

// A composite stands for a variable when all its parts that name one name the same, and for a value when just
// one part does.
void JoinMeaning(ShownText& whole, const std::vector<ShownText>& parts) {
  std::set<std::string> variables;
  std::vector<BayesHost::DataValue> values;
  for (const ShownText& part : parts) {
    whole.fIdentity += '\x1f' + part.fIdentity;
    if (!part.fVariable.empty()) variables.insert(part.fVariable);
    if (part.fValue) values.push_back(*part.fValue);
  }
  if (variables.size() != 1) return;
  whole.fVariable = *variables.begin();
  if (values.size() == 1) whole.fValue = values.front();
}

}  // namespace

namespace BayesHost {

const ShownText& GetShown(const BpCellText& text) {
  Require(text.GetState().fIsFinished, "a composite text is used before Finish");
  return text.GetState().fShown;
}

}  // namespace BayesHost

BpCellText::BpCellText(std::shared_ptr<State> state) : fpState(std::move(state)) {}
BpCellText::~BpCellText() = default;

BpString::BpString(const std::string& text, bool translatable)
    : BpCellText(translatable ? ShareKey(text) : MakeState(ShownText::Plain(text))) {}

BpNumber::BpNumber(double value, BpFormatSpec format) : BpCellText(MakeNumber(value, format)) {}

BpVariable::BpVariable(const ZARQ_Variable& variable, Show show) : BpCellText(MakeVariable(variable, show)) {}

BpDataValue::BpDataValue(const OBS& value, const ZARQ_Variable& variable)
    : BpCellText(MakeDataValue(value, variable)) {}

BpComposite::BpComposite(const std::string& key, bool translatable)
    : BpCellText(MakeComposite(key, translatable)) {}

void BpComposite::Add(const BpCellText& part) {
  Require(!fpState->fIsFinished, "a part is added to a finished composite text");
  const ShownText& shown = BayesHost::GetShown(part);
  fpState->fvParts.push_back(shown);
  if (fpState->fIsListOpen)
    fpState->fvArguments.back().fvList.push_back(shown.fText);
  else
    fpState->fvArguments.emplace_back(shown.fText);
}

void BpComposite::Sublist() {
  Require(!fpState->fIsFinished && !fpState->fIsListOpen, "a list is opened in a list or in a finished text");
  fpState->fvArguments.emplace_back(std::vector<std::string>{});
  fpState->fIsListOpen = true;
}

void BpComposite::SplitList() {
  Require(fpState->fIsListOpen, "the split's values need an open list");
  for (const BayesHost::SplitValue& value : BayesHost::Session::Current().GetOutput().GetSplit()) {
    fpState->fvArguments.back().fvList.push_back(value.fLabel);
    fpState->fvArguments.back().fvList.push_back(value.fText);
  }
}

void BpComposite::EndSublist() {
  Require(fpState->fIsListOpen, "there is no open list to end");
  fpState->fIsListOpen = false;
}

void BpComposite::Finish() {
  Require(!fpState->fIsFinished && !fpState->fIsListOpen,
          "a composite text is finished once, its lists ended");
  ShownText& shown = fpState->fShown;
  const std::string& key = shown.fKey;
  shown.fText = fpState->fIsTranslatable ? BayesHost::StringTable::English().Fill(key, fpState->fvArguments)
                                         : BayesHost::FillPlaceholders(key, fpState->fvArguments);
  for (const Argument& argument : fpState->fvArguments) shown.fvArguments.push_back(argument.GetText());
  JoinMeaning(shown, fpState->fvParts);
  fpState->fIsFinished = true;
}

BpAnnotation::BpAnnotation(const BpComposite& text) : fText(text) {
  BayesHost::GetShown(text);  // it must be finished
}
