#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

#include "host/session/Session.h"
#include "platform/host/Run.h"

namespace BayesHost {
namespace {

TEST(ThreadFactory, RunsEachTaskOnce) {
  for (const int threads : {0, 1, 2, 8}) {
    for (const int count : {0, 1, 100}) {
      std::vector<std::atomic<int>> runs(static_cast<std::size_t>(count));
      ACAThreadFactory().ForEach(count, threads, [&](int i) { ++runs[static_cast<std::size_t>(i)]; });
      for (const auto& n : runs) EXPECT_EQ(n, 1);
    }
  }
}

TEST(ThreadFactory, HandsOnTheFirstExceptionAndEnds) {
  std::atomic<int> runs{0};
  const auto task = [&](int i) {
    ++runs;
    if (i == 3) throw std::runtime_error("task 3");
  };
  EXPECT_THROW(ACAThreadFactory().ForEach(1000000, 2, task), std::runtime_error);
  EXPECT_LT(runs, 1000000);
}

TEST(RunServices, PassOnTheOptions) {
  RunOptions options;
  options.fThreads = 3;
  options.fMemoryBytes = std::size_t{5} << 20;
  Session session(options);
  const Session::Use use(session);
  EXPECT_EQ(getthreads_(), 3);
  EXPECT_EQ(getmcache_(), 5 * 1024);
}

TEST(RunServices, LookAtTheStopFlagAtIntervals) {
  Session session(RunOptions{});
  const Session::Use use(session);
  const ACAStopProcessor always(0.0);
  const ACAStopProcessor seldom(3600.0);
  EXPECT_FALSE(always.IsCancelled());
  EXPECT_FALSE(seldom.IsCancelled());
  session.Interrupt();
  EXPECT_TRUE(always.IsCancelled());
  EXPECT_FALSE(seldom.IsCancelled()) << "looked less than an hour ago";
}

}  // namespace
}  // namespace BayesHost
