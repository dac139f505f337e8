#include "host/data/CaseCursor.h"

#include <algorithm>

namespace BayesHost {

CaseCursor::CaseCursor(const std::vector<ColumnPlace>& columns) : fvValues(columns.size()) {
  for (const ColumnPlace& place : columns) {
    const std::size_t buffer = place.fpStore->IsSpilled() ? ColumnStore::kBlockRows : 0;
    fvColumns.push_back({place, nullptr, std::vector<double>(buffer)});
  }
}

void CaseCursor::SetRange(std::uint64_t begin, std::uint64_t end) {
  fPosition = begin;
  fEnd = end;
}

std::size_t CaseCursor::NextRun() {
  if (fPosition == fEnd) return 0;
  fRunBegin = OpenBlockAt(fPosition);
  const std::size_t count = std::min<std::uint64_t>(ColumnStore::kBlockRows - fRunBegin, fEnd - fPosition);
  fPosition += count;
  fIsWholeBlock = count == ColumnStore::kBlockRows;
  return count;
}

bool CaseCursor::Next() {
  if (fPosition == fEnd) return false;
  const std::size_t row = OpenBlockAt(fPosition);
  ++fPosition;
  for (std::size_t i = 0; i < fvColumns.size(); ++i) fvValues[i] = GetBlock(i)[row];
  return true;
}

// The place of the position in its block.
std::size_t CaseCursor::OpenBlockAt(std::uint64_t position) {
  const std::uint64_t block = position / ColumnStore::kBlockRows;
  if (block != fBlock) {
    for (Column& column : fvColumns) column.fpBlock = nullptr;
  }
  fBlock = block;
  return position % ColumnStore::kBlockRows;
}

const double* CaseCursor::ReadBlock(Column& column) {
  const ColumnStore& store = *column.fPlace.fpStore;
  return column.fpBlock = store.ReadColumn(fBlock, column.fPlace.fColumn, column.fvBuffer.data());
}

const ValueRange& CaseCursor::GetRange(std::size_t column) const {
  const ColumnPlace& place = fvColumns[column].fPlace;
  return place.fpStore->GetRange(fBlock, place.fColumn);
}

}  // namespace BayesHost
