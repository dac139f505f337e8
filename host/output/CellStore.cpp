#include "host/output/CellStore.h"

#include <algorithm>

namespace BayesHost {
namespace {

constexpr std::size_t kFewCells = 8;

// FNV-1a over the categories instead of bytes, its high bits brought down: places are taken from the low
// ones.
std::size_t Hash(CellStore::Address address) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const int category : address) hash = (hash ^ static_cast<std::uint32_t>(category)) * 0x100000001B3U;
  return static_cast<std::size_t>(hash ^ hash >> 32U);
}

}  // namespace

CellStore::Address CellStore::GetAddress(std::size_t cell) const {
  return {fvAddresses.data() + cell * fAddressSize, fAddressSize};
}

std::optional<Cell> CellStore::Find(Address address) const {
  const std::size_t index = FindIndex(address);
  if (index == Count()) return std::nullopt;
  const Content& content = fvContents[index];
  Cell cell;
  cell.fIsWritten = content.fKind != Kind::Unwritten;
  if (content.fKind == Kind::Number) cell.fNumber = content.fNumber;
  cell.fText = std::string_view(fTexts).substr(content.fTextBegin, content.fTextSize);
  const auto notes = fNotes.find(index);
  if (notes != fNotes.end()) cell.fNotes = notes->second;
  return cell;
}

void CellStore::Write(Address address, std::string_view text, std::optional<double> number) {
  fvContents[FindOrAdd(address)] = {number.value_or(0), fTexts.size(),
                                    static_cast<std::uint32_t>(text.size()),
                                    number ? Kind::Number : Kind::Text};
  fTexts += text;
}

void CellStore::Note(Address address, int note) {
  std::vector<int>& notes = fNotes[FindOrAdd(address)];
  if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
}

std::size_t CellStore::FindOrAdd(Address address) {
  const std::size_t index = FindIndex(address);
  if (index < Count()) return index;
  fAddressSize = address.size();
  fvAddresses.insert(fvAddresses.end(), address.begin(), address.end());
  fvContents.emplace_back();
  if (Count() > kFewCells) {
    if (2 * Count() > fvPlaces.size()) MakePlaces();
    fvPlaces[FindPlace(address)] = static_cast<std::uint32_t>(Count());
  }
  return index;
}

// Count() for an address that has no cell.
std::size_t CellStore::FindIndex(Address address) const {
  if (!fvPlaces.empty()) {
    const std::uint32_t cell = fvPlaces[FindPlace(address)];
    return cell == 0 ? Count() : cell - 1;
  }
  std::size_t index = 0;
  while (index < Count() && !std::ranges::equal(GetAddress(index), address)) ++index;
  return index;
}

// The place of the cell, or the free one that it would take.
std::size_t CellStore::FindPlace(Address address) const {
  const std::size_t last = fvPlaces.size() - 1;
  std::size_t place = Hash(address) & last;
  while (fvPlaces[place] != 0 && !std::ranges::equal(GetAddress(fvPlaces[place] - 1), address))
    place = (place + 1) & last;
  return place;
}

// Their number is a power of two, and at most half of them are taken.
void CellStore::MakePlaces() {
  fvPlaces.assign(std::max(2 * fvPlaces.size(), 4 * kFewCells), 0);
  for (std::size_t cell = 0; cell < Count(); ++cell)
    fvPlaces[FindPlace(GetAddress(cell))] = static_cast<std::uint32_t>(cell + 1);
}

}  // namespace BayesHost
