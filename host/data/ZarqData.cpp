// The platform's view of the active data set: thin, over the session's DataSet.
#include <algorithm>
#include <stdexcept>

#include "host/data/DataSet.h"
#include "host/data/Variable.h"
#include "host/output/BpCellTextState.h"
#include "host/session/Session.h"
#include "platform/component/Common.h"
#include "platform/host/Data.h"

using BayesHost::DataSet;
using BayesHost::Session;

OBS::OBS(double number) : fValue(number) {}

OBS::OBS(std::string text) {
  text.resize(text.find_last_not_of(' ') + 1);
  fValue = std::move(text);
}

ZARQ_Variable::ZARQ_Variable(std::shared_ptr<const State> state) : fpState(std::move(state)) {}

const std::string& ZARQ_Variable::GetName() const {
  return fpState->fName;
}
const std::string& ZARQ_Variable::GetPreferredLabel() const {
  return fpState->fLabel.empty() ? fpState->fName : fpState->fLabel;
}
ZARQ_Format ZARQ_Variable::GetFormat() const {
  return fpState->fFormat;
}
bool ZARQ_Variable::IsString() const {
  return fpState->fIsString;
}
int ZARQ_Variable::GetWidth() const {
  return fpState->fWidth;
}

std::string ZARQ_Variable::GetValueLabel(const OBS& value) const {
  const auto& labels = fpState->fvValueLabels;
  const auto label =
      std::find_if(labels.begin(), labels.end(), [&](const auto& entry) { return entry.first == value; });
  return label == labels.end() ? std::string() : label->second;
}

// Others may hold the state that was: they keep it.
template <typename Change>
void ZARQ_Variable::Alter(Change change) {
  auto altered = std::make_shared<State>(*fpState);
  change(*altered);
  fpState = std::move(altered);
}

void ZARQ_Variable::SetName(const ZarqVarName& name) {
  Alter([&](State& state) { state.fName = name.GetText(); });
}
void ZARQ_Variable::SetLabel(const BpCellText& label) {
  Alter([&](State& state) { state.fLabel = BayesHost::GetShown(label).fText; });
}
void ZARQ_Variable::SetFormat(ZARQ_Format format) {
  Alter([&](State& state) { state.fFormat = format; });
}
void ZARQ_Variable::SetWriteFormat(ZARQ_Format format) {
  Alter([&](State& state) { state.fWriteFormat = format; });
}
void ZARQ_Variable::SetMeasurementLevel(int level) {
  Alter([&](State& state) { state.fLevel = static_cast<State::Level>(level); });
}

int ZARQ_DataSource::ColumnCount() const {
  const DataSet* data = Session::Current().GetData();
  return data == nullptr ? 0 : data->CountVariables();
}

const ZARQ_Variable& ZARQ_DataSource::GetVariable(int index) const {
  return Session::Current().GetData()->GetVariable(index);
}

ZARQ_Variable& ZARQ_DataSource::MakeVariable(int type, unsigned* index) {
  if (type != 0) throw std::invalid_argument("only numeric variables can be made");
  DataSet& data = *Session::Current().GetData();
  *index = static_cast<unsigned>(data.CountVariables());
  return data.MakeVariable();
}

double ZARQ_DataSource::GetMissingValue() {
  return MCCommon_850::MCMV::Missing();
}

ProcedureDataSource::ProcedureDataSource() = default;

bool ProcedureDataSource::FatalError() const {
  const Session& session = Session::Current();
  return session.IsFatal() || session.GetOptions().fParserMode != BayesHost::ParserMode::Run;
}

// Columns are made one by one when they are asked for: there is nothing to set aside.
void ProcedureDataSource::SetMaxObsAdded(unsigned) {}

int ProcedureDataSource::GetWeightVarIndex() const {
  const DataSet* data = Session::Current().GetData();
  return data == nullptr ? -1 : data->GetWeight();
}

int ProcedureDataSource::GetNSplitVars() const {
  const DataSet* data = Session::Current().GetData();
  return data == nullptr ? 0 : static_cast<int>(data->GetSplit().size());
}

int ProcedureDataSource::GetSplitVarIndex(int i) const {
  return Session::Current().GetData()->GetSplit()[static_cast<std::size_t>(i)];
}

// Every table, message and chart of a split bears the split's values instead.
bool ProcedureDataSource::LaysOutSplits() const {
  return false;
}
