// Services of the running host: threads, memory, progress, interrupt, seeds, errors.
#pragma once

#include <functional>
#include <memory>

#include "platform/Visibility.h"
#include "platform/component/Common.h"

extern "C" {
// Threads that the run may use; 0 leaves the choice to the component.
BAYES_PLATFORM int getthreads_(void);
// Kilobytes that the run may keep in memory.
BAYES_PLATFORM int getmcache_(void);
// Cases done so far, for the host's progress display; -1 ends it.
BAYES_PLATFORM void casctr_(int count);
}

// Runs a component's independent work on the host's threads.
class BAYES_PLATFORM ACAThreadFactory : public MCCommon_850::MCThreadFactory {
 public:
  ACAThreadFactory();
  ~ACAThreadFactory() override;
  void ForEach(int count, int maxThreads, const std::function<void(int)>& task) override;
};

// Answers whether the user has asked the run to stop. Takes the run when it is built, on the calling thread;
// may be asked from any thread.
class BAYES_PLATFORM ACAStopProcessor : public MCCommon_850::MCCancelQuery {
 public:
  // `interval`: seconds between two looks at the flag; 0 looks each time.
  explicit ACAStopProcessor(double interval);
  ~ACAStopProcessor() override;
  ACAStopProcessor(const ACAStopProcessor&) = delete;
  ACAStopProcessor& operator=(const ACAStopProcessor&) = delete;
  bool IsCancelled() const override;

 private:
  struct State;
  std::unique_ptr<State> fpState;
};

// The run's own source of random numbers, used to draw seeds. Draws go on across the commands of a run; two
// runs with the same host seed draw the same.
class BAYES_PLATFORM ACAUniformRandom {
 public:
  ACAUniformRandom();
  // Uniform on [0, 1).
  double Draw();
};

// The host's error repository.
struct BAYES_PLATFORM BEPesRepos {
  static void BEPesClear();
  // Shows whatever was stored since BEPesClear.
  static void BEPesCheckError();
};
