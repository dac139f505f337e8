#include <algorithm>
#include <stdexcept>

#include "host/charts/ChartData.h"
#include "platform/host/Data.h"

namespace {

template <class Columns>
auto FindColumn(Columns& columns, const std::string& name) {
  return std::find_if(columns.begin(), columns.end(),
                      [&](const auto& column) { return column.first == name; });
}

}  // namespace

std::size_t VarDataProcessor::State::CountRows() const {
  std::size_t rows = 0;
  for (const auto& column : fvColumns) rows = std::max(rows, column.second.size());
  return rows;
}

VarDataProcessor::VarDataProcessor(const std::string& dataSource) : fpState(new State{dataSource, {}}) {}
VarDataProcessor::~VarDataProcessor() = default;

void VarDataProcessor::AddVariable(const std::string& name) {
  if (FindColumn(fpState->fvColumns, name) != fpState->fvColumns.end())
    throw std::logic_error("the chart's data have two series " + name);
  fpState->fvColumns.push_back({name, {}});
}

void VarDataProcessor::SetVariableValue(const std::string& name, std::size_t row, double value) {
  const auto column = FindColumn(fpState->fvColumns, name);
  if (column == fpState->fvColumns.end()) throw std::logic_error("the chart's data have no series " + name);
  std::vector<double>& values = column->second;
  if (values.size() < row) values.resize(row, ZARQ_DataSource::GetMissingValue());
  if (values.size() == row)
    values.push_back(value);
  else
    values[row] = value;
}
