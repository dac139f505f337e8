#include <map>

#include "host/data/Variable.h"
#include "platform/component/VarList.h"
#include "platform/host/Adapter.h"

using MCXML_850::MCCategory;
using MCXML_850::MCVariable;

struct ACAVarListMetaData::State {
  MCVariable Describe(int slot) const;
  std::vector<MCCategory> ListCategories(int slot, const ZARQ_Variable& variable) const;
  static std::vector<MCCategory> ListUserMissing(const ZARQ_Variable& variable);

  MCXML_850::MCVarList& fList;
  const ACAVarValidSpecs& fVarSpecs;
  const ZARQ_DataSource& fDataSource;
  const ACAInputAdapter& fAdapter;
  bool fWithCategories;
  std::map<int, std::string> fFreeNames;
};

namespace {

MCCategory MakeCategory(const OBS& value, const ZARQ_Variable& variable) {
  MCCategory category;
  category.fIsString = value.IsString();
  if (value.IsString()) category.fText = value.GetString();
  if (!value.IsString()) category.fNumber = value.GetNumber();
  category.fLabel = variable.GetValueLabel(value);
  return category;
}

}  // namespace

std::vector<MCCategory> ACAVarListMetaData::State::ListCategories(int slot,
                                                                  const ZARQ_Variable& variable) const {
  std::vector<MCCategory> categories;
  categories.reserve(static_cast<std::size_t>(fAdapter.GetRecordCatVarSize(slot)));
  for (int code = 0; code < fAdapter.GetRecordCatVarSize(slot); ++code) {
    categories.push_back(MakeCategory(*fAdapter.DecodeRecordCatValue(slot, code), variable));
  }
  return categories;
}

std::vector<MCCategory> ACAVarListMetaData::State::ListUserMissing(const ZARQ_Variable& variable) {
  std::vector<MCCategory> values;
  for (const OBS& value : variable.GetState().fvUserMissing) values.push_back(MakeCategory(value, variable));
  return values;
}

MCVariable ACAVarListMetaData::State::Describe(int slot) const {
  MCVariable described;
  described.fSlot = slot;
  described.fCategorical = fVarSpecs.GetRecordCatVar(slot);
  const int index = fVarSpecs.GetZARQVarIndex(slot);
  if (index < 0) {
    const auto name = fFreeNames.find(slot);
    if (name != fFreeNames.end()) described.fName = name->second;
    return described;
  }
  const ZARQ_Variable& variable = fDataSource.GetVariable(index);
  described.fName = variable.GetName();
  described.fLabel = variable.GetState().fLabel;
  described.fString = variable.IsString();
  described.fvUserMissing = ListUserMissing(variable);
  if (described.fCategorical && fWithCategories) described.fvCategories = ListCategories(slot, variable);
  return described;
}

ACAVarListMetaData::ACAVarListMetaData(MCXML_850::MCVarList& list, const ACAVarValidSpecs& varSpecs,
                                       const ZARQ_DataSource& dataSource, const ACAInputAdapter& adapter,
                                       bool withCategories)
    : fpState(new State{list, varSpecs, dataSource, adapter, withCategories, {}}) {}
ACAVarListMetaData::~ACAVarListMetaData() = default;

void ACAVarListMetaData::SetFreeVarName(int slot, const std::string& name) {
  fpState->fFreeNames[slot] = name;
}

void ACAVarListMetaData::Fill() {
  for (int slot = 0; slot < fpState->fVarSpecs.GetNRecordVars(); ++slot) {
    fpState->fList.AddVariable(fpState->Describe(slot));
  }
}
