#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "platform/foundation/scheduling/VirtualScheduler.h"
#include "platform/foundation/values/Exception.h"

namespace {

using platform::Exception;
using platform::VirtualScheduler;
using testing::ElementsAre;

TEST(VirtualScheduler, TheClockStandsStillUntilItIsMoved) {
  VirtualScheduler scheduler;
  EXPECT_EQ(scheduler.now(), 0.0);
  scheduler.asyncMain([] {});
  scheduler.runMain();
  EXPECT_EQ(scheduler.now(), 0.0);
  scheduler.advance(1.5);
  EXPECT_EQ(scheduler.now(), 1.5);
}

TEST(VirtualScheduler, RunMainLeavesDelayedWork) {
  VirtualScheduler scheduler;
  bool ran = false;
  scheduler.mainAfter(0.1, [&] { ran = true; });
  scheduler.runMain();
  EXPECT_FALSE(ran);
  scheduler.advance(0.0999);
  EXPECT_FALSE(ran);
  scheduler.advance(0.0001);
  EXPECT_TRUE(ran);
}

TEST(VirtualScheduler, WorkSeesItsOwnTime) {
  VirtualScheduler scheduler;
  std::vector<double> times;
  scheduler.mainAfter(0.3, [&] { times.push_back(scheduler.now()); });
  scheduler.mainAfter(0.1, [&] { times.push_back(scheduler.now()); });
  scheduler.advance(1.0);
  EXPECT_THAT(times, ElementsAre(0.1, 0.3));
  EXPECT_EQ(scheduler.now(), 1.0);
}

TEST(VirtualScheduler, WorkQueuedWithinTheSpanRunsAsWell) {
  VirtualScheduler scheduler;
  std::vector<std::string> order;
  scheduler.mainAfter(0.1, [&] {
    order.emplace_back("0.1");
    scheduler.mainAfter(0.3, [&] { order.emplace_back("0.4"); });
    scheduler.mainAfter(2.0, [&] { order.emplace_back("2.1"); });
    scheduler.asyncMain([&] { order.emplace_back("at once"); });
  });
  scheduler.mainAfter(0.2, [&] { order.emplace_back("0.2"); });
  scheduler.advance(1.0);
  EXPECT_THAT(order, ElementsAre("0.1", "at once", "0.2", "0.4"));
}

TEST(VirtualScheduler, EqualTimesKeepTheirOrder) {
  VirtualScheduler scheduler;
  std::vector<int> order;
  for (int index = 0; index < 4; ++index) {
    scheduler.mainAfter(0.1, [&, index] { order.push_back(index); });
  }
  scheduler.advance(0.1);
  EXPECT_THAT(order, ElementsAre(0, 1, 2, 3));
}

TEST(VirtualScheduler, TenTenthsAreASecond) {
  VirtualScheduler scheduler;
  bool ran = false;
  scheduler.mainAfter(1.0, [&] { ran = true; });
  for (int step = 0; step < 10; ++step) scheduler.advance(0.1);
  EXPECT_TRUE(ran);
  EXPECT_EQ(scheduler.now(), 1.0);
}

TEST(VirtualScheduler, OddSpansCountAsNoneOrAsVeryLong) {
  VirtualScheduler scheduler;
  scheduler.advance(-1);
  scheduler.advance(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(scheduler.now(), 0.0);
  bool ran = false;
  scheduler.mainAfter(-5, [&] { ran = true; });
  scheduler.runMain();
  EXPECT_TRUE(ran);
  bool never = false;
  scheduler.mainAfter(std::numeric_limits<double>::infinity(), [&] { never = true; });
  scheduler.advance(1e6);
  EXPECT_FALSE(never);
}

TEST(VirtualScheduler, BackgroundWorkWaitsForTheTest) {
  VirtualScheduler scheduler;
  int done = 0;
  scheduler.asyncGlobal([&] { ++done; });
  scheduler.makeSerialQueue("q")->async([&] { ++done; });
  scheduler.advance(10);
  EXPECT_FALSE(scheduler.runMainUntil([&] { return done > 0; }, 0.002));
  EXPECT_EQ(scheduler.pendingBackground(), 2U);
  EXPECT_EQ(scheduler.runBackground(1), 1U);
  EXPECT_EQ(done, 1);
  EXPECT_EQ(scheduler.runBackground(5), 1U);
  EXPECT_EQ(done, 2);
}

TEST(VirtualScheduler, BackgroundWorkRunsInTheOrderInWhichItWasQueued) {
  VirtualScheduler scheduler;
  std::vector<std::string> order;
  const auto one = scheduler.makeSerialQueue("one");
  const auto two = scheduler.makeSerialQueue("two");
  one->async([&] { order.emplace_back("one a"); });
  scheduler.asyncGlobal([&] { order.emplace_back("global"); });
  two->async([&] { order.emplace_back("two"); });
  one->async([&] { order.emplace_back("one b"); });
  EXPECT_EQ(scheduler.runAllBackground(), 4U);
  EXPECT_THAT(order, ElementsAre("one a", "global", "two", "one b"));
}

TEST(VirtualScheduler, AllBackgroundIncludesWhatItQueuesButNoMainWork) {
  VirtualScheduler scheduler;
  bool onMain = false;
  int done = 0;
  scheduler.asyncGlobal([&] {
    ++done;
    scheduler.asyncGlobal([&] { ++done; });
    scheduler.asyncMain([&] { onMain = true; });
  });
  EXPECT_EQ(scheduler.runAllBackground(), 2U);
  EXPECT_EQ(done, 2);
  EXPECT_FALSE(onMain);
  scheduler.runMain();
  EXPECT_TRUE(onMain);
}

TEST(VirtualScheduler, AnExceptionLeavesTheClockWhereItWasRaised) {
  VirtualScheduler scheduler;
  bool later = false;
  scheduler.mainAfter(0.2, [] { throw Exception("A", "b"); });
  scheduler.mainAfter(0.5, [&] { later = true; });
  EXPECT_THROW(scheduler.advance(1.0), Exception);
  EXPECT_EQ(scheduler.now(), 0.2);
  EXPECT_FALSE(later);
  scheduler.advance(0.8);
  EXPECT_TRUE(later);
}

TEST(VirtualScheduler, AnExceptionOfBackgroundWorkLeavesTheMainThreadTheMainThread) {
  VirtualScheduler scheduler;
  scheduler.asyncGlobal([] { throw Exception("A", "b"); });
  EXPECT_THROW(scheduler.runAllBackground(), Exception);
  EXPECT_TRUE(scheduler.isMainThread());
}

}  // namespace
