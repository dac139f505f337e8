#include <algorithm>
#include <stdexcept>

#include "host/charts/ChartData.h"
#include "host/session/Session.h"
#include "platform/host/Data.h"

namespace {

template <class Columns>
std::size_t FindColumn(const Columns& columns, const std::string& name) {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [&](const auto& column) { return column.first == name; });
  return static_cast<std::size_t>(found - columns.begin());
}

}  // namespace

std::size_t VarDataProcessor::State::CountRows() const {
  std::size_t rows = 0;
  for (const auto& column : fvColumns) rows = std::max(rows, column.second.size());
  return rows;
}

VarDataProcessor::VarDataProcessor(const std::string& dataSource) : fpState(new State{dataSource, {}, 0}) {}
VarDataProcessor::~VarDataProcessor() = default;

void VarDataProcessor::AddVariable(const std::string& name) {
  if (FindColumn(fpState->fvColumns, name) < fpState->fvColumns.size())
    throw std::logic_error("the chart's data have two series " + name);
  fpState->fvColumns.push_back({name, {}});
}

void VarDataProcessor::SetVariableValue(const std::string& name, std::size_t row, double value) {
  auto& columns = fpState->fvColumns;
  std::size_t& at = fpState->fLast;
  if (at >= columns.size() || columns[at].first != name) at = FindColumn(columns, name);
  if (at == columns.size()) throw std::logic_error("the chart's data have no series " + name);
  std::vector<double>& values = columns[at].second;
  if (values.size() < row) values.resize(row, ZARQ_DataSource::GetMissingValue());
  if (values.size() == row)
    values.push_back(value);
  else
    values[row] = value;
}
