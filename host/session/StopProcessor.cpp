#include <atomic>
#include <chrono>

#include "host/session/Session.h"
#include "platform/host/Run.h"

namespace {
double ReadClock() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}
}  // namespace

// The session is found once, on the calling thread: workers that ask have none of their own.
struct ACAStopProcessor::State {
  const BayesHost::Session& fSession;
  double fInterval;
  std::atomic<double> fNextLook{0};
};

ACAStopProcessor::ACAStopProcessor(double interval)
    : fpState(new State{BayesHost::Session::Current(), interval}) {}
ACAStopProcessor::~ACAStopProcessor() = default;

bool ACAStopProcessor::IsCancelled() const {
  if (fpState->fInterval > 0) {
    const double now = ReadClock();
    if (now < fpState->fNextLook.load(std::memory_order_relaxed)) return false;
    fpState->fNextLook.store(now + fpState->fInterval, std::memory_order_relaxed);
  }
  return fpState->fSession.IsInterrupted();
}
