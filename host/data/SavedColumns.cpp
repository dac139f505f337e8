#include "host/data/SavedColumns.h"

#include <algorithm>

#include "platform/component/Common.h"

namespace BayesHost {

SavedColumns::SavedColumns(DataSet& data)
    : fData(data),
      fvVariables(data.ListUnfilled()),
      fpStore(std::make_unique<ColumnStore>(data.GetBudget(), static_cast<int>(fvVariables.size()))),
      fvCase(fvVariables.size()),
      fvMissing(fvVariables.size(), MCCommon_850::MCMV::Missing()) {}

void SavedColumns::BeginCase(std::uint64_t position) {
  AppendUpTo(position);
  fvCase = fvMissing;
  fHasCase = true;
}

void SavedColumns::SetColumnValue(int column, double value) {
  const auto found = std::lower_bound(fvVariables.begin(), fvVariables.end(), column);
  fvCase[static_cast<std::size_t>(found - fvVariables.begin())] = value;
}

void SavedColumns::Finish() {
  AppendUpTo(fData.CountCases());
  fpStore->Finish();
  fData.GiveValues(fvVariables, std::move(fpStore));
}

void SavedColumns::AppendUpTo(std::uint64_t position) {
  if (fHasCase) Append(fvCase.data());
  fHasCase = false;
  while (fpStore->CountRows() < position) Append(fvMissing.data());
}

void SavedColumns::Append(const double* values) {
  for (std::size_t i = 0; i < fvVariables.size(); ++i) *fpStore->GetTail(static_cast<int>(i)) = values[i];
  fpStore->Advance(1);
}

}  // namespace BayesHost
