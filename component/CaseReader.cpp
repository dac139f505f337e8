#include "component/CaseReader.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "component/SettingsView.h"

namespace BayesComponent {

namespace {

constexpr double kRecordsPerReport = 4096;

// Rounded to whole cases, halves away from zero; 0 drops the case.
double WeightOf(double value) {
  return IsGiven(value) ? std::max(0.0, std::round(value)) : 0;
}

}  // namespace

CaseReader::CaseReader(const BSNSettings& settings, StatusList& statuses)
    : fSettings(settings), fStatuses(statuses) {}

void CaseReader::Read(MCCommon_850::MCRecordSource& records, Analysis& analysis) {
  const bool isListwise = fSettings.GetMissScope() == BSNConst::Listwise;
  const std::vector<int> required = isListwise ? analysis.RequiredSlots() : std::vector<int>();
  const auto recordSize = static_cast<std::size_t>(records.GetRecordSize());
  const int weightSlot = fSettings.GetFrequencyWeightVar();
  double nRead = 0;
  double nReported = 0;
  bool isEmpty = true;
  std::size_t count = 0;
  records.Restart();
  while (const double* block = records.NextBlock(count)) {
    for (const double* record = block; record != block + count * recordSize; record += recordSize) {
      const double weight = weightSlot < 0 ? 1 : WeightOf(record[weightSlot]);
      const auto isThere = [record](int slot) { return IsGiven(record[slot]); };
      if (weight == 0 || !std::all_of(required.begin(), required.end(), isThere)) continue;
      analysis.Accumulate(record, weight);
      isEmpty = false;
    }
    nRead += static_cast<double>(count);
    if (nRead - nReported < kRecordsPerReport) continue;
    Report(nReported = nRead);
    if (IsCancelled()) return fStatuses.Fail(kCancelled);
  }
  Report(nRead);
  if (IsCancelled()) return fStatuses.Fail(kCancelled);
  if (isEmpty) fStatuses.Fail(kNoValidCases);
}

bool CaseReader::IsCancelled() const {
  return fSettings.GetCancelPointer() && fSettings.GetCancelPointer()->IsCancelled();
}

void CaseReader::Report(double nRead) const {
  if (!fSettings.GetProgressListener()) return;
  MCCommon_850::ProgressReport report;
  constexpr double kLargestCount = std::numeric_limits<int>::max();
  report.SetCount("records", static_cast<int>(std::min(nRead, kLargestCount)));
  fSettings.GetProgressListener()->ReportProgress(report);
}

}  // namespace BayesComponent
