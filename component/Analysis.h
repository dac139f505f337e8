// One analysis of one split: fed with cases, then asked for its record.
#pragma once

#include <memory>
#include <vector>

#include "component/StatusList.h"
#include "platform/component/OutputStats.h"
#include "platform/component/Settings.h"

namespace BayesComponent {

using MCBSN_850::BSNOutputStats;
using MCBSN_850::BSNSettings;

class Analysis {
 public:
  virtual ~Analysis() = default;
  // The record slots that must all have values for a case to be used under listwise deletion.
  virtual std::vector<int> RequiredSlots() const = 0;
  // A case that counts `weight` times, a whole number above 0. Missing values are the analysis' own matter.
  virtual void Accumulate(const double* record, double weight) = 0;
  // Called once, after the last case. What can't be computed is missing in the record, with a status; after a
  // failure the record is dropped and may be null.
  virtual std::unique_ptr<BSNOutputStats> Finish() = 0;
};

// Settings and statuses must outlive the analysis. Null when there is no such analysis.
std::unique_ptr<Analysis> MakeAnalysis(const BSNSettings& settings, StatusList& statuses);

std::unique_ptr<Analysis> MakeOneSampleNormal(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeOneSampleBinomial(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeOneSamplePoisson(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeRelatedSamples(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeIndependentSamples(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeMultipleRegression(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeCorrelation(const BSNSettings& settings, StatusList& statuses);
std::unique_ptr<Analysis> MakeLogLinear(const BSNSettings& settings, StatusList& statuses);

}  // namespace BayesComponent
