// A table as the commands describe it: dimensions of nested categories and cells at their crossings. How it
// is laid out is the readers' affair (TableLayout).
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "host/output/CellStore.h"
#include "host/output/ShownText.h"
#include "host/output/TextPool.h"

namespace BayesHost {

struct Category {
  const ShownText& GetLabel() const { return *fpLabel; }

  const ShownText* fpLabel = nullptr;
  int fParent = -1;  // -1: directly under the dimension
  bool fIsGroup = false;
  bool fShowLabel = true;
  std::vector<int> fvChildren;
  std::vector<int> fvNotes;  // indices of the table's footnotes
};

struct Dimension {
  enum class Role { Row, Column, Layer };

  const ShownText& GetLabel() const { return *fpLabel; }

  const ShownText* fpLabel = nullptr;
  Role fRole = Role::Row;
  int fOrder = 0;  // among the dimensions of the same role
  std::vector<Category> fvCategories;
  std::vector<int> fvTop;      // the categories without a parent
  std::size_t fLastPlace = 0;  // of the category asked for last, among its siblings

  // Categories that are no groups, in the order shown.
  std::vector<int> GetLeaves() const;
  // From the outermost group to the category itself.
  std::vector<int> GetPath(int category) const;
};

struct Footnote {
  const ShownText& GetText() const { return *fpText; }

  const ShownText* fpText = nullptr;
  bool fOnTable = false;
};

class PivotTable {
 public:
  // One category for each dimension, in the order of the dimensions' creation.
  using Address = std::vector<int>;

  // The pool is shared by the tables of a document.
  PivotTable(const ShownText& title, const ShownText& subtype,
             std::shared_ptr<TextPool> pool = std::make_shared<TextPool>());

  // All dimensions must exist before the first cell; otherwise std::logic_error.
  int AddDimension(const ShownText& label);
  void Place(int dimension, Dimension::Role role, int order);
  // The category or group of that identity under `parent` (-1: the dimension itself), found or added. A
  // category becomes its dimension's current one, a group doesn't.
  int FindOrAdd(int dimension, int parent, const ShownText& label, bool isGroup, bool showLabel = true);
  void MakeCurrent(int dimension, int category);

  // The cell at the crossing of the current categories, a number with its shown text or a text alone;
  // std::logic_error while a dimension has none. A second write replaces the first.
  void SetCell(std::string_view text, std::optional<double> number);

  // The same text with the same key is one footnote, wherever it stands.
  void NoteTable(const ShownText& text);
  void NoteCategory(int dimension, int category, const ShownText& text);
  void NoteCell(const ShownText& text);

  void SetCaption(const ShownText& caption) { fpCaption = fpPool->Share(caption); }
  void SetMinDataColumnWidth(int characters) { fMinDataColumnWidth = characters; }

  const ShownText& GetTitle() const { return *fpTitle; }
  const ShownText& GetSubtype() const { return *fpSubtype; }
  // Null when there is none.
  const ShownText* GetCaption() const { return fpCaption; }
  int GetMinDataColumnWidth() const { return fMinDataColumnWidth; }
  const std::vector<Dimension>& GetDimensions() const { return fvDimensions; }
  const std::vector<Footnote>& GetFootnotes() const { return fvFootnotes; }
  const CellStore& GetCells() const { return fCells; }

 private:
  CellStore::Address GetCurrent() const;
  int FindOrAddNote(const ShownText& text);

  std::shared_ptr<TextPool> fpPool;
  const ShownText* fpTitle;
  const ShownText* fpSubtype;
  const ShownText* fpCaption = nullptr;
  int fMinDataColumnWidth = 0;
  std::vector<Dimension> fvDimensions;
  std::vector<Footnote> fvFootnotes;
  Address fvCurrent;  // -1: none yet
  CellStore fCells;
};

}  // namespace BayesHost
