// The platform's services of the running host, over the session.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>

#include "host/session/Session.h"
#include "platform/host/Output.h"
#include "platform/host/Run.h"

using BayesHost::Session;

int getthreads_(void) {
  return Session::Current().GetOptions().fThreads;
}

int getmcache_(void) {
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(Session::Current().GetOptions().fMemoryBytes / 1024, kMost));
}

// One line on a terminal that is written over and erased at the end; no line elsewhere, so that a redirected
// standard error holds diagnostics only.
void casctr_(int count) {
  if (!Session::Current().GetOptions().fProgress || isatty(STDERR_FILENO) == 0) return;
  constexpr const char* kErase = "\r\033[K";
  const std::string text = count < 0 ? kErase : kErase + std::to_string(count) + " cases";
  std::fputs(text.c_str(), stderr);
  std::fflush(stderr);
}

ACAUniformRandom::ACAUniformRandom() = default;

double ACAUniformRandom::Draw() {
  return Session::Current().DrawUniform();
}

void BEPesRepos::BEPesClear() {
  Session::Current().TakeStoredErrors();
}

void BEPesRepos::BEPesCheckError() {
  for (const std::string& text : Session::Current().TakeStoredErrors()) {
    BpError(BpString(text, false), kBpErrorShowAll, kBpErrorLevelError);
  }
}
