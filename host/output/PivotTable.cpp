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

// Tables are filled line by line, so that the category wanted is most often the one of the last place or the
// next. The number of siblings when there is none.
template <class Predicate>
std::size_t FindFrom(const std::vector<int>& siblings, std::size_t place, Predicate isWanted) {
  for (std::size_t i = 0; i < siblings.size(); ++i) {
    const std::size_t at = (place + i) % siblings.size();
    if (isWanted(siblings[at])) return at;
  }
  return siblings.size();
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
  if (fCells.Count() > 0) throw std::logic_error("a table's dimensions come before its cells");
  Dimension dimension;
  dimension.fpLabel = fpPool->Share(label);
  fvDimensions.push_back(std::move(dimension));
  fvCurrent.push_back(-1);
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
  const auto isWanted = [&](int index) {
    const Category& sibling = all[static_cast<std::size_t>(index)];
    return sibling.fIsGroup == isGroup && sibling.GetLabel().fIdentity == label.fIdentity;
  };
  const std::size_t place = FindFrom(siblings, owner.fLastPlace, isWanted);
  owner.fLastPlace = place;
  const bool isNew = place == siblings.size();
  const int index = isNew ? static_cast<int>(all.size()) : siblings[place];
  if (isNew) {
    siblings.push_back(index);  // before the vector of categories grows: `siblings` may lie in it
    all.push_back({fpPool->Share(label), parent, isGroup, showLabel, {}, {}});
  }
  if (!isGroup) MakeCurrent(dimension, index);
  return index;
}

void PivotTable::MakeCurrent(int dimension, int category) {
  fvCurrent.at(static_cast<std::size_t>(dimension)) = category;
}

CellStore::Address PivotTable::GetCurrent() const {
  if (std::find(fvCurrent.begin(), fvCurrent.end(), -1) != fvCurrent.end())
    throw std::logic_error("a cell needs a category in every dimension");
  return fvCurrent;
}

void PivotTable::SetCell(std::string_view text, std::optional<double> number) {
  fCells.Write(GetCurrent(), text, number);
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
  fCells.Note(GetCurrent(), FindOrAddNote(text));
}

}  // namespace BayesHost
