#include "host/data/CaseCursor.h"

#include "host/data/SplitIndex.h"

namespace BayesHost {

CaseCursor::CaseCursor(const std::vector<ColumnPlace>& columns, const SplitIndex* index)
    : fpIndex(index), fvValues(columns.size()) {
  for (const ColumnPlace& place : columns) {
    const std::size_t buffer = place.fpStore->IsSpilled() ? ColumnStore::kBlockRows : 0;
    fvColumns.push_back({place, nullptr, std::vector<double>(buffer)});
  }
}

void CaseCursor::SetRange(std::uint64_t begin, std::uint64_t end) {
  fPosition = begin;
  fEnd = end;
}

bool CaseCursor::Next() {
  if (fPosition == fEnd) return false;
  const std::uint64_t block = fPosition / ColumnStore::kBlockRows;
  if (block != fBlock) OpenBlock(block);
  const std::size_t row = fPosition % ColumnStore::kBlockRows;
  ++fPosition;
  for (std::size_t i = 0; i < fvColumns.size(); ++i) fvValues[i] = fvColumns[i].fpBlock[row];
  return true;
}

std::uint64_t CaseCursor::GetRow() const {
  return fpIndex == nullptr ? fPosition - 1 : fpIndex->GetRow(fPosition - 1);
}

void CaseCursor::OpenBlock(std::uint64_t block) {
  fBlock = block;
  for (Column& column : fvColumns) {
    column.fpBlock = column.fPlace.fpStore->ReadColumn(block, column.fPlace.fColumn, column.fvBuffer.data());
  }
}

}  // namespace BayesHost
