// Headings, tables and their parts: handles that write into the document.
#include <memory>
#include <stdexcept>
#include <utility>

#include "host/output/BpCellTextState.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"

using BayesHost::CommandOutput;
using BayesHost::GetShown;
using BayesHost::PivotTable;
using TablePointer = std::shared_ptr<PivotTable>;

struct BpCategory::State {
  TablePointer fpTable;
  int fDimension;
  int fCategory;
};

// The dimension itself is the group without a category.
struct BpGroup::State {
  TablePointer fpTable;
  int fDimension;
  int fGroup = -1;
};

struct BpPivotTable::State {
  TablePointer fpTable;
};

// The procedure is the heading without a heading.
struct BpHeading::State {
  CommandOutput* fpOutput;
  BayesHost::Heading* fpHeading = nullptr;
};

namespace {

void RequireCreationOrder(int sort) {
  if (sort != 2) throw std::invalid_argument("categories are sorted by their creation (2) only");
}

BayesHost::Dimension::Role RoleOf(BpDimension::Place place) {
  switch (place) {
    case BpDimension::kColumns:
      return BayesHost::Dimension::Role::Column;
    case BpDimension::kLayers:
      return BayesHost::Dimension::Role::Layer;
    default:
      return BayesHost::Dimension::Role::Row;
  }
}

}  // namespace

BpCategory::BpCategory(std::shared_ptr<State> state) : fpState(std::move(state)) {}

// The handle names its own category, whichever of its dimension is current.
void BpCategory::Cell(const BpCellText& content) {
  fpState->fpTable->MakeCurrent(fpState->fDimension, fpState->fCategory);
  fpState->fpTable->SetCell(GetShown(content).fText, content.GetState().fNumber);
}

void BpCategory::Note(const BpAnnotation& note) {
  fpState->fpTable->NoteCategory(fpState->fDimension, fpState->fCategory, GetShown(note.GetText()));
}

void BpCategory::CellNote(const BpAnnotation& note) {
  fpState->fpTable->MakeCurrent(fpState->fDimension, fpState->fCategory);
  fpState->fpTable->NoteCell(GetShown(note.GetText()));
}

BpGroup::BpGroup(std::shared_ptr<State> state) : fpState(std::move(state)) {}

BpCategory BpGroup::Category(const BpCellText& text) {
  const State& own = *fpState;
  const int category = own.fpTable->FindOrAdd(own.fDimension, own.fGroup, GetShown(text), false);
  return BpCategory(
      std::make_shared<BpCategory::State>(BpCategory::State{own.fpTable, own.fDimension, category}));
}

BpGroup BpGroup::Group(const BpCellText& text, bool showLabel, int sort) {
  RequireCreationOrder(sort);
  const State& own = *fpState;
  const int group = own.fpTable->FindOrAdd(own.fDimension, own.fGroup, GetShown(text), true, showLabel);
  return BpGroup(std::make_shared<State>(State{own.fpTable, own.fDimension, group}));
}

void BpDimension::Position(Place place, int index, bool, bool) {
  fpState->fpTable->Place(fpState->fDimension, RoleOf(place), index);
}

BpPivotTable::BpPivotTable(std::shared_ptr<State> state) : fpState(std::move(state)) {}

BpDimension BpPivotTable::Dimension(const BpCellText& label, int sort) {
  RequireCreationOrder(sort);
  const int dimension = fpState->fpTable->AddDimension(GetShown(label));
  return BpDimension(std::make_shared<BpGroup::State>(BpGroup::State{fpState->fpTable, dimension}));
}

void BpPivotTable::Caption(const BpCellText& text) {
  fpState->fpTable->SetCaption(GetShown(text));
}

void BpPivotTable::Note(const BpAnnotation& note) {
  fpState->fpTable->NoteTable(GetShown(note.GetText()));
}

void BpPivotTable::MinDataColumnWidth(int characters) {
  fpState->fpTable->SetMinDataColumnWidth(characters);
}

BpHeading::BpHeading(std::shared_ptr<State> state) : fpState(std::move(state)) {}

BpHeading BpHeading::Heading(const BpCellText& text) {
  BayesHost::Heading& heading = fpState->fpOutput->OpenHeading(GetShown(text));
  return BpHeading(std::make_shared<State>(State{fpState->fpOutput, &heading}));
}

void BpHeading::Close() {
  if (fpState->fpHeading != nullptr) fpState->fpOutput->CloseHeading(*fpState->fpHeading);
}

BpPivotTable BpHeading::PivotTable(const BpCellText& title, const BpCellText& subtype, bool shown) {
  auto table = std::make_shared<BayesHost::PivotTable>(GetShown(title), GetShown(subtype),
                                                       fpState->fpOutput->GetTextPool());
  if (shown) fpState->fpOutput->Add(table);
  return BpPivotTable(std::make_shared<BpPivotTable::State>(BpPivotTable::State{std::move(table)}));
}

BpProcedure::BpProcedure(const std::string& title, int)
    : BpHeading(std::make_shared<State>(State{&BayesHost::Session::Current().GetOutput()})) {
  fpState->fpOutput->SetTitle(BayesHost::StringTable::English().Find(title));
}

BpProcedure::~BpProcedure() = default;
