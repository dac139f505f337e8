// The formats of numbers, messages, notes and the debug channel.
#include <algorithm>
#include <iostream>

#include "host/output/BpCellTextState.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"

using BayesHost::GetShown;
using BayesHost::Message;
using BayesHost::Session;

namespace {

constexpr int kUsualDecimals = 2;  // where no variable gives them

BpFormatSpec FormatOf(BpFormatSpec::Kind kind, const std::vector<const ZARQ_Variable*>& variables) {
  int decimals = variables.empty() ? kUsualDecimals : 0;
  for (const ZARQ_Variable* variable : variables)
    decimals = std::max(decimals, static_cast<int>(variable->GetFormat().fDecimals));
  return {kind, decimals};
}

void Debug(const std::string& line) {
  if (Session::Current().GetOptions().fDebug) std::cerr << line << '\n';
}

}  // namespace

BpFormatSpec BpProcedure::Count() {
  return {BpFormatSpec::kCount};
}
BpFormatSpec BpProcedure::GeneralStat() {
  return {BpFormatSpec::kGeneralStat};
}
BpFormatSpec BpProcedure::Significance() {
  return {BpFormatSpec::kSignificance};
}
BpFormatSpec BpProcedure::Coefficient() {
  return {BpFormatSpec::kCoefficient};
}
BpFormatSpec BpProcedure::Correlation() {
  return {BpFormatSpec::kCorrelation};
}
BpFormatSpec BpProcedure::Percent() {
  return {BpFormatSpec::kPercent};
}
BpFormatSpec BpProcedure::Residual() {
  return {BpFormatSpec::kResidual};
}
BpFormatSpec BpProcedure::SigDigit() {
  return {BpFormatSpec::kSigDigit};
}

BpFormatSpec BpProcedure::Mean(const std::vector<const ZARQ_Variable*>& variables) {
  return FormatOf(BpFormatSpec::kMean, variables);
}
BpFormatSpec BpProcedure::StdDev(const std::vector<const ZARQ_Variable*>& variables) {
  return FormatOf(BpFormatSpec::kStdDev, variables);
}
BpFormatSpec BpProcedure::VarSquared(const std::vector<const ZARQ_Variable*>& variables) {
  return FormatOf(BpFormatSpec::kVarSquared, variables);
}

void BpError(const BpCellText& text, BpErrorShow, BpErrorLevel level) {
  Message message;
  message.fLevel = level == kBpErrorLevelError ? Message::Level::Error : Message::Level::Warning;
  message.fText = GetShown(text);
  Session::Current().GetOutput().AddMessage(std::move(message));
}

void AddNotes(int section, const BpCellText& label, const BpCellText& value) {
  Session::Current().GetOutput().AddNote({section, GetShown(label), GetShown(value)});
}

void BP_ToFront(const BP_Character& text) {
  Debug(text.GetText());
}

void ACACommonDisplay::DisplayI(const std::string& label, int value) {
  Debug(label + ' ' + std::to_string(value));
}

void ACACommonDisplay::DisplayB(const std::string& label, bool value) {
  Debug(label + (value ? " true" : " false"));
}

void ACACommonDisplay::DisplayBV(const std::string& label, const std::vector<bool>& values) {
  std::string bits;
  for (const bool value : values) bits += value ? '1' : '0';
  Debug(label + ' ' + bits);
}
