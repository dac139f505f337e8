// Independent tasks on the host's threads, and whether the user wants them to stop.
#pragma once

#include <cstddef>
#include <functional>

#include "component/SettingsView.h"

namespace BayesComponent {

// Runs task(0) to task(count - 1) in any order on the thread factory of the settings, or one after the other
// where they have none. A task must not depend on the others, nor on the thread it runs on.
void RunTasks(const BSNSettings& settings, std::size_t count, const std::function<void(std::size_t)>& task);

// Whether the run was cancelled. May be asked from any thread.
class Cancellation {
 public:
  explicit Cancellation(const BSNSettings& settings) : fpQuery(settings.GetCancelPointer()) {}
  bool operator()() const { return fpQuery && fpQuery->IsCancelled(); }

 private:
  const MCCommon_850::MCCancelQuery* fpQuery;
};

}  // namespace BayesComponent
