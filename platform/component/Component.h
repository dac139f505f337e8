// The statistics component: settings and records in, results and statuses out.
#pragma once

#include <memory>

#include "platform/Visibility.h"
#include "platform/component/Common.h"
#include "platform/component/OutputStats.h"
#include "platform/component/Settings.h"
#include "platform/component/VarList.h"

namespace MCBSN_850 {

// One model for one split. All calls on one thread.
class BAYES_PLATFORM BSNComponent {
 public:
  // Copies the settings; the variable list must outlive the component. Settings that describe no analysis
  // leave an error status.
  BSNComponent(const BSNSettings& settings, const MCXML_850::MCVarList& variables);
  ~BSNComponent();
  BSNComponent(const BSNComponent&) = delete;
  BSNComponent& operator=(const BSNComponent&) = delete;

  // The status of construction, or of BuildModel once it ran.
  MCCommon_850::MCStatus GetStatus() const;
  // Reads the records (as often as the method needs) and computes. An error status is returned and listed; a
  // warning is returned only when it isn't in the list. Worker threads are joined before it returns.
  MCCommon_850::MCStatus BuildModel(MCCommon_850::MCRecordSource& records);
  // Finishes the results. Never null; an empty record when there is no model. Owned by the component.
  const BSNOutputStats* GetOutputStats();
  // Never null. Owned by the component.
  const MCCommon_850::MCWarnings* GetWarningMessages() const;

 private:
  struct State;
  std::unique_ptr<State> fpState;
};

}  // namespace MCBSN_850
