#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "host/output/TableLayout.h"

namespace {

using BayesHost::Dimension;
using BayesHost::PivotTable;
using BayesHost::ShownText;
using BayesHost::TableLayout;
using testing::ElementsAre;

ShownText Text(const std::string& text) {
  return ShownText::Plain(text);
}

ShownText TextOfIdentity(const std::string& text, const std::string& identity) {
  ShownText shown = Text(text);
  shown.fIdentity = identity;
  return shown;
}

// Rows 0, columns 1; the columns have a group.
PivotTable MakeTable() {
  PivotTable table(Text("Title"), Text("Title"));
  table.Place(table.AddDimension(Text("Rows")), Dimension::Role::Row, 1);
  table.Place(table.AddDimension(Text("Columns")), Dimension::Role::Column, 1);
  return table;
}

void SetCell(PivotTable& table, const std::string& row, int group, const std::string& column) {
  table.FindOrAdd(0, -1, Text(row), false);
  table.FindOrAdd(1, group, Text(column), false);
  table.SetCell("x", std::nullopt);
}

TEST(OutputTable, FindsCategoriesByParentKindAndIdentityNotByText) {
  PivotTable table = MakeTable();
  const int total = table.FindOrAdd(0, -1, TextOfIdentity("Total", "key:Total"), false);
  const int level = table.FindOrAdd(0, -1, TextOfIdentity("Total", "value:Total"), false);
  const int group = table.FindOrAdd(0, -1, TextOfIdentity("Total", "key:Total"), true);
  const int inner = table.FindOrAdd(0, group, TextOfIdentity("Total", "key:Total"), false);
  EXPECT_EQ((std::set<int>{total, level, group, inner}.size()), 4U);
  EXPECT_EQ(table.FindOrAdd(0, -1, TextOfIdentity("Sum", "key:Total"), false), total);
  EXPECT_EQ(table.FindOrAdd(0, -1, TextOfIdentity("Total", "key:Total"), true), group);
  EXPECT_THAT(table.GetDimensions()[0].GetLeaves(), ElementsAre(total, level, inner));
}

TEST(OutputTable, TablesOfOneDocumentShareTheirTexts) {
  const auto pool = std::make_shared<BayesHost::TextPool>();
  const PivotTable one(Text("Title"), Text("Title"), pool);
  const PivotTable other(Text("Title"), TextOfIdentity("Title", "other"), pool);
  EXPECT_EQ(&one.GetTitle(), &one.GetSubtype());
  EXPECT_EQ(&one.GetTitle(), &other.GetTitle());
  EXPECT_NE(&one.GetSubtype(), &other.GetSubtype()) << "alike, but of another meaning";
  EXPECT_EQ(other.GetSubtype().fIdentity, "other");
}

TEST(OutputTable, CategoryStaysCurrentUntilItsDimensionGetsAnother) {
  PivotTable table = MakeTable();
  table.FindOrAdd(0, -1, Text("a"), false);
  EXPECT_THROW(table.SetCell("1", 1.0), std::logic_error);
  const int n = table.FindOrAdd(1, -1, Text("N"), false);
  table.SetCell("1", 1.0);
  const int group = table.FindOrAdd(1, -1, Text("Posterior"), true);
  table.SetCell("2", 2.0);  // a group doesn't become current: the cell of N again
  const int mode = table.FindOrAdd(1, group, Text("Mode"), false);
  table.SetCell("3", 3.0);
  ASSERT_EQ(table.GetCells().Count(), 2U);
  EXPECT_EQ(table.GetCells().Find(std::array{0, n})->fText, "2");
  EXPECT_EQ(table.GetCells().Find(std::array{0, mode})->fText, "3");
  EXPECT_THROW(table.AddDimension(Text("late")), std::logic_error);
}

// Far more cells than a store looks through one by one, in the order of neither dimension.
TEST(OutputTable, EveryCellIsFoundByItsCategoriesAlone) {
  constexpr int kCategories = 61;
  const auto numberAt = [](int row, int column) { return row * 1000.0 + column; };
  BayesHost::CellStore cells;
  for (int i = 0; i < kCategories * kCategories; ++i) {
    const std::array address{i * 7 % kCategories, i / kCategories};
    if ((address[0] + address[1]) % 3 == 0) continue;
    const double number = numberAt(address[0], address[1]);
    cells.Write(address, "first", std::nullopt);
    cells.Write(address, std::to_string(number), number);
  }
  std::size_t found = 0;
  for (int row = 0; row < kCategories; ++row)
    for (int column = 0; column < kCategories; ++column) {
      const auto cell = cells.Find(std::array{row, column});
      ASSERT_EQ(cell.has_value(), (row + column) % 3 != 0) << row << ' ' << column;
      if (!cell) continue;
      ++found;
      ASSERT_EQ(cell->fNumber, numberAt(row, column));
      ASSERT_EQ(cell->fText, std::to_string(numberAt(row, column)));
    }
  EXPECT_EQ(found, cells.Count());
  EXPECT_FALSE(cells.Find(std::array{0, kCategories}));
}

TEST(OutputTable, CellBearsEachNoteOnceAndMayHoldNothingElse) {
  BayesHost::CellStore cells;
  const std::array noted{0, 0};
  const std::array text{0, 1};
  cells.Note(noted, 4);
  cells.Note(noted, 2);
  cells.Note(noted, 4);
  cells.Write(text, "", std::nullopt);
  EXPECT_THAT(cells.Find(noted)->fNotes, ElementsAre(4, 2));
  EXPECT_FALSE(cells.Find(noted)->fIsWritten);
  EXPECT_TRUE(cells.Find(text)->fIsWritten);
  EXPECT_EQ(cells.Find(text)->fNumber, std::nullopt);
  cells.Write(noted, "1", 1.0);
  EXPECT_TRUE(cells.Find(noted)->fIsWritten);
  EXPECT_THAT(cells.Find(noted)->fNotes, ElementsAre(4, 2));
  EXPECT_EQ(cells.Count(), 2U);
}

TEST(OutputTable, LettersFollowTheFirstAppearance) {
  PivotTable table = MakeTable();
  SetCell(table, "a", -1, "N");
  table.NoteCell(Text("on the first cell"));
  SetCell(table, "b", -1, "BF");
  table.NoteCell(Text("shared"));
  table.NoteCategory(1, 1, Text("shared"));
  table.NoteCategory(0, 1, Text("on row b"));
  table.NoteTable(Text("on the title"));
  const TableLayout layout(table);
  std::vector<std::string> texts;
  for (const int note : layout.GetNoteOrder())
    texts.push_back(layout.GetLetter(note) + " " +
                    table.GetFootnotes()[static_cast<std::size_t>(note)].GetText().fText);
  EXPECT_THAT(texts, ElementsAre("a on the title", "b shared", "c on the first cell", "d on row b"));
  EXPECT_EQ(layout.GetTableMarks(), "a");
  EXPECT_EQ(layout.GetMarks(std::array{2, 1, 0}), "b,c,d");
}

TEST(OutputTable, LettersGoOnAfterZ) {
  PivotTable table = MakeTable();
  for (int i = 0; i < 28; ++i) table.NoteTable(Text("note " + std::to_string(i)));
  const TableLayout layout(table);
  EXPECT_EQ(layout.GetLetter(25), "z");
  EXPECT_EQ(layout.GetLetter(26), "aa");
  EXPECT_EQ(layout.GetLetter(27), "ab");
}

TEST(OutputTable, SameWordsUnderAnotherKeyAreAnotherFootnote) {
  PivotTable table = MakeTable();
  ShownText keyed = Text("words");
  keyed.fKey = "key";
  table.NoteTable(Text("words"));
  table.NoteTable(keyed);
  table.NoteTable(keyed);
  EXPECT_EQ(table.GetFootnotes().size(), 2U);
}

std::vector<std::string> ShowHeader(const PivotTable& table, const TableLayout& layout,
                                    const TableLayout::Axis& axis) {
  std::vector<std::string> cells;
  for (const auto& cell : layout.MakeHeader(axis))
    cells.push_back(table.GetDimensions()[static_cast<std::size_t>(cell.fDimension)]
                        .fvCategories[static_cast<std::size_t>(cell.fCategory)]
                        .GetLabel()
                        .fText +
                    " " + std::to_string(cell.fLevel) + "+" + std::to_string(cell.fLevelSpan) + " " +
                    std::to_string(cell.fFirstLine) + "+" + std::to_string(cell.fLineSpan));
  return cells;
}

TEST(OutputTable, HeaderSpansGroupsAndShallowLabels) {
  PivotTable table = MakeTable();
  SetCell(table, "a", -1, "N");
  const int group = table.FindOrAdd(1, -1, Text("Posterior"), true);
  SetCell(table, "a", group, "Mode");
  SetCell(table, "a", group, "Mean");
  const TableLayout layout(table);
  EXPECT_THAT(ShowHeader(table, layout, layout.GetColumns()),
              ElementsAre("N 0+2 0+1", "Posterior 0+1 1+2", "Mode 1+1 1+1", "Mean 1+1 2+1"));
}

TEST(OutputTable, NestedDimensionsShowOnlyCrossingsWithCells) {
  PivotTable table = MakeTable();
  table.Place(table.AddDimension(Text("Group")), Dimension::Role::Row, 2);
  for (const auto& [variable, group] : {std::pair{"x", "1"}, {"x", "2"}, {"y", "2"}}) {
    table.FindOrAdd(2, -1, Text(group), false);
    SetCell(table, variable, -1, "N");
  }
  const TableLayout layout(table);
  EXPECT_THAT(ShowHeader(table, layout, layout.GetRows()),
              ElementsAre("x 0+1 0+2", "y 0+1 2+1", "1 1+1 0+1", "2 1+1 1+1", "2 1+1 2+1"));
  EXPECT_THAT(layout.GetLabels(layout.GetRows(), layout.GetRows().fvLines[2]), ElementsAre("y", "2"));
}

TEST(OutputTable, OneDimensionShowsCategoriesWithoutCells) {
  PivotTable table = MakeTable();
  table.FindOrAdd(0, -1, Text("empty"), false);
  SetCell(table, "a", -1, "N");
  const TableLayout layout(table);
  ASSERT_EQ(layout.GetRows().fvLines.size(), 2U);
  EXPECT_FALSE(layout.FindCell({}, layout.GetRows().fvLines[0], layout.GetColumns().fvLines[0]).has_value());
}

}  // namespace
