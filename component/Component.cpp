// The component's frame: from settings and records to a result record and statuses.
#include "platform/component/Component.h"

#include <ostream>
#include <utility>

#include "component/Analysis.h"
#include "component/CaseReader.h"
#include "component/RegressionRecord.h"

namespace MCBSN_850 {

using BayesComponent::Analysis;
using BayesComponent::CaseReader;
using BayesComponent::StatusList;

namespace {

// The record of a model that was not built.
class EmptyOutputStats : public BSNOutputStats {
 public:
  void Write(std::ostream& stream) const override { stream << "no results\n"; }
};

// Of models that score cases there is a record in any case: it scores none.
std::unique_ptr<BSNOutputStats> MakeEmptyStats(const BSNSettings& settings) {
  const BSNConst::ModelTypes type = settings.GetModelType();
  if (type != BSNConst::Regression && type != BSNConst::Anova) return std::make_unique<EmptyOutputStats>();
  return std::make_unique<BSNMultiRegOutputStats>(std::make_shared<BSNMultiRegOutputStats::Data>());
}

}  // namespace

struct BSNComponent::State {
  BSNSettings fSettings;
  StatusList fStatuses;
  std::unique_ptr<Analysis> fpAnalysis;  // until it is run
  std::unique_ptr<BSNOutputStats> fpStats;
};

BSNComponent::BSNComponent(const BSNSettings& settings, const MCXML_850::MCVarList& /*variables*/)
    : fpState(std::make_unique<State>()) {
  fpState->fSettings = settings;
  fpState->fpStats = MakeEmptyStats(settings);
  if (settings.IsValidSettings()) {
    fpState->fpAnalysis = BayesComponent::MakeAnalysis(fpState->fSettings, fpState->fStatuses);
  }
  if (!fpState->fpAnalysis) fpState->fStatuses.Fail(BayesComponent::kNoAnalysis);
}

BSNComponent::~BSNComponent() = default;

MCCommon_850::MCStatus BSNComponent::GetStatus() const {
  return fpState->fStatuses.Error();
}

MCCommon_850::MCStatus BSNComponent::BuildModel(MCCommon_850::MCRecordSource& records) {
  StatusList& statuses = fpState->fStatuses;
  if (statuses.Error().IsError()) return statuses.Error();
  std::unique_ptr<Analysis> analysis = std::exchange(fpState->fpAnalysis, nullptr);
  if (!analysis) analysis = BayesComponent::MakeAnalysis(fpState->fSettings, statuses);
  CaseReader(fpState->fSettings, statuses).Read(records, *analysis);
  if (statuses.Error().IsError()) return statuses.Error();
  std::unique_ptr<BSNOutputStats> stats = analysis->Finish();
  if (!statuses.Error().IsError()) fpState->fpStats = std::move(stats);
  return statuses.Error();
}

const BSNOutputStats* BSNComponent::GetOutputStats() {
  return fpState->fpStats.get();
}

const MCCommon_850::MCWarnings* BSNComponent::GetWarningMessages() const {
  return &fpState->fStatuses.Warnings();
}

}  // namespace MCBSN_850
