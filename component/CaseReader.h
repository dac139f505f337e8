// Reads a split's records into an analysis: weights, listwise deletion, progress, cancellation.
#pragma once

#include "component/Analysis.h"
#include "platform/component/Common.h"

namespace BayesComponent {

class CaseReader {
 public:
  CaseReader(const BSNSettings& settings, StatusList& statuses);

  // One pass over all records. Fails with kCancelled or, when no case counts, kNoValidCases.
  void Read(MCCommon_850::MCRecordSource& records, Analysis& analysis);

 private:
  bool IsCancelled() const;
  void Report(double nRead) const;

  const BSNSettings& fSettings;
  StatusList& fStatuses;
};

}  // namespace BayesComponent
