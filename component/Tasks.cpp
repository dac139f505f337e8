#include "component/Tasks.h"

namespace BayesComponent {

void RunTasks(const BSNSettings& settings, std::size_t count, const std::function<void(std::size_t)>& task) {
  const auto run = [&task](int i) { task(static_cast<std::size_t>(i)); };
  if (MCCommon_850::MCThreadFactory* threads = settings.GetThreadFactory()) {
    threads->ForEach(static_cast<int>(count), settings.GetMaxThreadNum(), run);
    return;
  }
  for (std::size_t i = 0; i < count; ++i) task(i);
}

}  // namespace BayesComponent
