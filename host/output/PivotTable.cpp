#include "host/output/PivotTable.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace BayesHost {
namespace {

void CollectLeaves(const Dimension& dimension, const std::vector<int>& categories, std::vector<int>& leaves) {
  for (const int index : categories) {
    const Category& category = dimension.fvCategories[static_cast<std::size_t>(index)];
    if (category.fIsGroup)
      CollectLeaves(dimension, category.fvChildren, leaves);
    else
      leaves.push_back(index);
  }
}

void AddOnce(std::vector<int>& notes, int note) {
  if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
}

}  // namespace

std::vector<int> Dimension::GetLeaves() const {
  std::vector<int> leaves;
  CollectLeaves(*this, fvTop, leaves);
  return leaves;
}

std::vector<int> Dimension::GetPath(int category) const {
  std::vector<int> path;
  for (int at = category; at >= 0; at = fvCategories[static_cast<std::size_t>(at)].fParent)
    path.push_back(at);
  std::reverse(path.begin(), path.end());
  return path;
}

PivotTable::PivotTable(const ShownText& title, const ShownText& subtype, std::shared_ptr<TextPool> pool)
    : fpPool(std::move(pool)), fpTitle(fpPool->Share(title)), fpSubtype(fpPool->Share(subtype)) {}

int PivotTable::AddDimension(const ShownText& label) {
  if (!fCells.empty()) throw std::logic_error("a table's dimensions come before its cells");
  Dimension dimension;
  dimension.fpLabel = fpPool->Share(label);
  fvDimensions.push_back(std::move(dimension));
  return static_cast<int>(fvDimensions.size()) - 1;
}

void PivotTable::Place(int dimension, Dimension::Role role, int order) {
  Dimension& placed = fvDimensions.at(static_cast<std::size_t>(dimension));
  placed.fRole = role;
  placed.fOrder = order;
}

int PivotTable::FindOrAdd(int dimension, int parent, const ShownText& label, bool isGroup, bool showLabel) {
  Dimension& owner = fvDimensions.at(static_cast<std::size_t>(dimension));
  auto& all = owner.fvCategories;
  auto& siblings = parent < 0 ? owner.fvTop : all.at(static_cast<std::size_t>(parent)).fvChildren;
  const auto found = std::find_if(siblings.begin(), siblings.end(), [&](int index) {
    const Category& sibling = all[static_cast<std::size_t>(index)];
    return sibling.fIsGroup == isGroup && sibling.GetLabel().fIdentity == label.fIdentity;
  });
  int index = found == siblings.end() ? -1 : *found;
  if (index < 0) {
    index = static_cast<int>(all.size());
    siblings.push_back(index);  // before the vector of categories grows: `siblings` may lie in it
    all.push_back({fpPool->Share(label), parent, isGroup, showLabel, {}, {}});
  }
  if (!isGroup) owner.fCurrent = index;
  return index;
}

void PivotTable::MakeCurrent(int dimension, int category) {
  fvDimensions.at(static_cast<std::size_t>(dimension)).fCurrent = category;
}

Cell& PivotTable::CurrentCell() {
  Address address;
  for (const Dimension& dimension : fvDimensions) {
    if (dimension.fCurrent < 0) throw std::logic_error("a cell needs a category in every dimension");
    address.push_back(dimension.fCurrent);
  }
  return fCells[address];
}

void PivotTable::SetCell(CellContent content) {
  CurrentCell().fContent = std::move(content);
}

int PivotTable::FindOrAddNote(const ShownText& text) {
  const auto found = std::find_if(fvFootnotes.begin(), fvFootnotes.end(), [&](const Footnote& note) {
    return note.GetText().fKey == text.fKey && note.GetText().fText == text.fText;
  });
  const auto index = static_cast<int>(found - fvFootnotes.begin());
  if (found == fvFootnotes.end()) fvFootnotes.push_back({fpPool->Share(text), false});
  return index;
}

void PivotTable::NoteTable(const ShownText& text) {
  const int note = FindOrAddNote(text);
  fvFootnotes[static_cast<std::size_t>(note)].fOnTable = true;
}

void PivotTable::NoteCategory(int dimension, int category, const ShownText& text) {
  auto& categories = fvDimensions.at(static_cast<std::size_t>(dimension)).fvCategories;
  AddOnce(categories.at(static_cast<std::size_t>(category)).fvNotes, FindOrAddNote(text));
}

void PivotTable::NoteCell(const ShownText& text) {
  AddOnce(CurrentCell().fvNotes, FindOrAddNote(text));
}

}  // namespace BayesHost
