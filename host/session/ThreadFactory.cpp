#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/host/Run.h"

ACAThreadFactory::ACAThreadFactory() = default;
ACAThreadFactory::~ACAThreadFactory() = default;

namespace {

// Tasks handed out one by one to whoever asks next. The first exception ends the handing out.
class TaskQueue {
 public:
  TaskQueue(int count, const std::function<void(int)>& task) : fCount(count), fTask(task) {}

  void Work() {
    for (int i = fNext++; i < fCount; i = fNext++) {
      try {
        fTask(i);
      } catch (...) {
        const std::lock_guard<std::mutex> lock(fMutex);
        if (!fError) fError = std::current_exception();
        fNext = fCount;
      }
    }
  }

  void Rethrow() const {
    if (fError) std::rethrow_exception(fError);
  }

 private:
  const int fCount;
  const std::function<void(int)>& fTask;
  std::atomic<int> fNext{0};
  std::mutex fMutex;
  std::exception_ptr fError;
};

int CountWorkers(int tasks, int maxThreads) {
  const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  return std::clamp(maxThreads > 0 ? maxThreads : cores, 1, std::max(tasks, 1));
}

// As many as the system lets us have: those that there are do all the work.
void Start(std::vector<std::jthread>& helpers, int count, TaskQueue& queue) {
  try {
    for (int i = 0; i < count; ++i) helpers.emplace_back([&queue] { queue.Work(); });
  } catch (const std::exception&) {
  }
}

}  // namespace

// The calling thread works, too. All are joined before the first exception, if any, goes on to the caller.
void ACAThreadFactory::ForEach(int count, int maxThreads, const std::function<void(int)>& task) {
  TaskQueue queue(count, task);
  {
    std::vector<std::jthread> helpers;
    Start(helpers, CountWorkers(count, maxThreads) - 1, queue);
    queue.Work();
  }
  queue.Rethrow();
}
