// What a split adds to the specifications: category counts, the variable list, names of recoded variables.
#include <algorithm>
#include <array>
#include <limits>

#include "bayesian/BYSAssert.h"
#include "bayesian/BYSMessage.h"
#include "bayesian/BYSProcAdapter.h"
#include "bayesian/BYSValidSpecs.h"

namespace {

constexpr const char* kSource = "BYSValidSpecs";

constexpr int kMaxSaveWidth = 40;
constexpr int kMaxSaveDecimals = 16;
constexpr std::uint8_t kNumericFormat = 5;

}  // namespace

bool BYSValidSpecs::CompleteSettings(Settings& compSettings, BYSProcAdapter* adapter) {
  BYS::Assert(fpCompSettings != nullptr, kSource, "fpCompSettings!= 0");
  BYS::Assert(fpCompSettings.get() != &compSettings, kSource, "fpCompSettings != &compSettings");
  compSettings = *fpCompSettings;
  if (adapter == nullptr) return true;

  const bool ascending = fpCompSettings->GetModelType() != BSNConst::LogLinear || fCategAscend;
  const std::vector<int>& fullFactors = fpCompSettings->GetFullModFactors();
  if (!fullFactors.empty()) {
    compSettings.SetFullModFactorNCategs(CompleteFactorSizes(fullFactors, ascending, *adapter));
  }
  const std::vector<int>& factors = fpCompSettings->GetFactors();
  if (!factors.empty()) {
    const bool binomial = fpCompSettings->GetTestDistType() == BSNConst::Binomial;
    compSettings.SetFactorNCategs(binomial ? std::vector<int>(factors.size(), 2)
                                           : CompleteFactorSizes(factors, ascending, *adapter));
  }
  CompleteModelValues(compSettings, *adapter);
  return CheckShapeRows(compSettings.GetFactorSizes(), *adapter);
}

// A matrix of shapes must fit the split's table. The parser has seen to it that all rows are equally long.
bool BYSValidSpecs::CheckShapeRows(const std::vector<int>& factorSizes, const BYSProcAdapter& adapter) const {
  const std::vector<std::vector<double>>& rows = fvShapeParamRows;
  if (fpCompSettings->GetModelType() != BSNConst::LogLinear || rows.empty()) return true;
  BYS::Assert(factorSizes.size() == 2, kSource, "factorSizes.size() == 2");
  const auto nRows = static_cast<std::size_t>(factorSizes[0]);
  const auto nColumns = static_cast<std::size_t>(factorSizes[1]);
  if (nRows == rows.size() && nColumns == rows.front().size()) return true;
  const bool split = adapter.GetSplitFile();
  BYS::ShowMessage(split ? "Rectangular bad size, param ^1, subcom ^2, split [%1 = %2:,^1 = ^2:]3 ..."
                         : "Rectangular bad size, param ^1, subcom ^2 ...",
                   {BpString("SHAPEPARAMS", false), BpString("ESTBF", false)}, split,
                   split ? kBpErrorLevelWarning : kBpErrorLevelError);
  return false;
}

std::vector<int> BYSValidSpecs::CompleteFactorSizes(const std::vector<int>& factors, bool ascending,
                                                    BYSProcAdapter& adapter) const {
  std::vector<int> sizes;
  for (int slot : factors) {
    sizes.push_back(adapter.GetRecordCatVarSize(slot));
    adapter.ReorderRecordCats(slot, ascending);
  }
  return sizes;
}

int BYSValidSpecs::GetZARQVarIndex(int slot) const {
  const int index = fpVarValidSpecs->GetZARQVarIndex(slot);
  if (index >= 0) return index;
  if (slot == fpCompSettings->GetGroupVar()) return fpStatSettings->GetGroupVar();
  if (fpCompSettings->GetTestDistType() != BSNConst::Binomial) return index;

  const std::vector<int>& compFactors = fpCompSettings->GetFactors();
  const std::vector<int>& zarqFactors = fpStatSettings->GetFactors();
  BYS::Assert(compFactors.size() == zarqFactors.size(), kSource, "compFactors.size() == zarqFactors.size()");
  const auto found = std::find(compFactors.begin(), compFactors.end(), slot);
  return found == compFactors.end() ? index
                                    : zarqFactors[static_cast<std::size_t>(found - compFactors.begin())];
}

ZARQ_Format BYSValidSpecs::GetSaveFormat(SaveOptions option) const {
  if (option == kVariance) return {kMaxSaveWidth, kNumericFormat, 3};
  const int dependent = fpStatSettings->GetDependentVar();
  if (dependent < 0 || option < kMeanPred || option >= kNSaveOptions) return {8, kNumericFormat, 2};
  ZARQ_Format format = fDataSource.GetVariable(dependent).GetFormat();
  format.fWidth = static_cast<std::uint16_t>(std::min(format.fWidth + 3, kMaxSaveWidth));
  format.fDecimals = static_cast<std::uint8_t>(std::min(format.fDecimals + 2, kMaxSaveDecimals));
  return format;
}

// The name of a slot that stands for no dictionary variable: that of the variable it recodes, with a mark.
std::string BYSValidSpecs::GetFreeVarName(int slot) const {
  const int zarqInd = GetZARQVarIndex(slot);
  BYS::Assert(zarqInd >= 0, kSource, "zarqInd >= 0");
  const char* prefix = slot == fpCompSettings->GetGroupVar() ? "$Group_" : "$Binomial_";
  return prefix + fDataSource.GetVariable(zarqInd).GetName();
}

bool BYSValidSpecs::CompleteVarList(MCXML_850::MCVarList* varList, BYSProcAdapter* adapter) const {
  if (varList == nullptr || adapter == nullptr) return true;
  ACAVarListMetaData metaData(*varList, *fpVarValidSpecs, fDataSource, *adapter, true);
  for (int slot = 0; slot < fpVarValidSpecs->GetNRecordVars(); ++slot) {
    if (fpVarValidSpecs->GetZARQVarIndex(slot) < 0) metaData.SetFreeVarName(slot, GetFreeVarName(slot));
  }
  metaData.Fill();
  varList->SetUnWeightedCount(adapter->GetValidCount());
  varList->SetWeightedCount(adapter->GetWeightedValidCount());
  varList->SetDroppedCount(adapter->GetDroppedCount());
  varList->SetWeightedDroppedCount(adapter->GetWeightedDroppedCount());
  varList->SetListwiseDeletion(fpStatSettings->GetMissScope() == BSNConst::Listwise);
  return true;
}
