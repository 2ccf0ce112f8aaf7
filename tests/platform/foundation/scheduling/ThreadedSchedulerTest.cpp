#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <thread>

#include "platform/foundation/scheduling/ThreadedScheduler.h"

namespace {

using platform::ThreadedScheduler;

constexpr double threadedPatience = 20.0;

TEST(ThreadedScheduler, DelayedWorkWakesARunLoopThatWaitsAlready) {
  ThreadedScheduler scheduler;
  scheduler.mainAfter(1000, [] { FAIL() << "far too early"; });
  bool ran = false;
  scheduler.asyncGlobal([&] { scheduler.mainAfter(0.001, [&] { ran = true; }); });
  EXPECT_TRUE(scheduler.runMainUntil([&] { return ran; }, threadedPatience));
}

TEST(ThreadedScheduler, GlobalWorkRunsSideBySide) {
  ThreadedScheduler scheduler;
  std::promise<void> first;
  std::promise<void> second;
  std::atomic<int> met{0};
  // The two wait for each other, which needs two threads.
  scheduler.asyncGlobal([&] {
    first.set_value();
    second.get_future().wait();
    ++met;
  });
  scheduler.asyncGlobal([&] {
    second.set_value();
    first.get_future().wait();
    ++met;
  });
  EXPECT_TRUE(scheduler.runMainUntil([&] { return met == 2; }, threadedPatience));
}

TEST(ThreadedScheduler, DestructionWaitsForRunningWork) {
  std::atomic<bool> started{false};
  std::atomic<bool> finished{false};
  {
    ThreadedScheduler scheduler;
    scheduler.asyncGlobal([&] {
      started = true;
      while (scheduler.now() < 0.02) std::this_thread::yield();
      finished = true;
    });
    while (!started) std::this_thread::yield();
  }
  EXPECT_TRUE(finished);
}

TEST(ThreadedScheduler, TheClockNeverGoesBack) {
  ThreadedScheduler scheduler;
  double last = scheduler.now();
  EXPECT_GE(last, 0.0);
  for (int index = 0; index < 1000; ++index) {
    const double now = scheduler.now();
    ASSERT_GE(now, last);
    last = now;
  }
}

}  // namespace
