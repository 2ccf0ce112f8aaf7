#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/foundation/scheduling/MainQueue.h"

namespace {

using platform::machineNanoseconds;
using platform::MainQueue;

constexpr std::int64_t millisecond = 1'000'000;

// A deadline for waits that are expected to succeed.
std::int64_t farAway() {
  return machineNanoseconds() + 20'000 * millisecond;
}

// Runs the queue until the condition is true. Returns how often the condition was checked.
int turnsUntil(MainQueue& queue, const std::function<bool()>& condition) {
  int turns = 0;
  const auto counted = [&] {
    ++turns;
    return condition();
  };
  EXPECT_TRUE(queue.runUntil(counted, farAway()));
  return turns;
}

TEST(MainQueue, RunsWorkInItsOrderWithWhatItQueues) {
  MainQueue queue;
  std::string order;
  queue.push([&] {
    order += "a";
    queue.push([&] { order += "c"; });
  });
  queue.push([&] { order += "b"; });
  queue.runReady();
  EXPECT_EQ(order, "abc");
}

TEST(MainQueue, WorkFromManyThreadsAllRuns) {
  MainQueue queue;
  int done = 0;
  constexpr int each = 200;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int piece = 0; piece < each; ++piece) queue.push([&] { ++done; });
    });
  }
  turnsUntil(queue, [&] { return done == 4 * each; });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(done, 4 * each);
}

TEST(MainQueue, RunUntilGivesUpAtItsDeadlineAfterASingleSleep) {
  MainQueue queue;
  int turns = 0;
  const auto never = [&] {
    ++turns;
    return false;
  };
  EXPECT_FALSE(queue.runUntil(never, machineNanoseconds() + 50 * millisecond));
  EXPECT_LE(turns, 3) << "before and after the sleep, and after an early wake-up";
}

TEST(MainQueue, ADescriptorEndsTheSleep) {
  std::array<int, 2> pipe{-1, -1};
  ASSERT_EQ(::pipe(pipe.data()), 0);
  MainQueue queue;
  bool isRead = false;
  queue.addWait(pipe[0], [&] { isRead = true; });
  std::thread writer([&] { EXPECT_EQ(::write(pipe[1], "x", 1), 1); });
  EXPECT_LE(turnsUntil(queue, [&] { return isRead; }), 3);
  writer.join();
  ::close(pipe[0]);
  ::close(pipe[1]);
}

TEST(MainQueue, TheOuterQueueEndsTheSleepAndKeepsItsWork) {
  const auto outer = std::make_shared<MainQueue>();
  MainQueue inner(outer);
  bool ran = false;
  std::thread other([&] { outer->push([&] { ran = true; }); });
  inner.sleep(farAway());
  other.join();
  inner.runReady();
  EXPECT_FALSE(ran);
  outer->runReady();
  EXPECT_TRUE(ran);
}

TEST(MainQueue, TheInnerQueueEndsTheSleepOfBoth) {
  const auto outer = std::make_shared<MainQueue>();
  MainQueue inner(outer);
  std::thread other([&] { inner.push([] {}); });
  outer->sleep(farAway());
  inner.sleep(farAway());
  other.join();
  EXPECT_TRUE(inner.takeReady());
}

TEST(MainQueue, AClosedQueueDropsWhatWaitsAndWhatComes) {
  const auto held = std::make_shared<int>(1);
  MainQueue queue;
  queue.push([held] {});
  queue.pushAt(5, [held] {});
  queue.addWait(0, [held, &queue] { queue.push([] {}); });
  EXPECT_EQ(queue.size(), 2U);
  queue.close();
  queue.push([held] {});
  queue.pushAt(5, [held] {});
  EXPECT_EQ(queue.addWait(0, [held] {}), 0U);
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_EQ(queue.size(), 0U);
}

}  // namespace
