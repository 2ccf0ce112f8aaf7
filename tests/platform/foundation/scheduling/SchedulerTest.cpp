// The promises that both schedulers keep.
#include <array>
#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/foundation/scheduling/ThreadedScheduler.h"
#include "platform/foundation/scheduling/VirtualScheduler.h"

namespace {

using platform::Exception;
using platform::Process;
using platform::ProcessScope;
using platform::ThreadedScheduler;
using platform::VirtualScheduler;

constexpr double patience = 20.0;

// Runs background and main work until the condition is true.
bool settle(VirtualScheduler& scheduler, const std::function<bool()>& condition) {
  for (int round = 0; round < 1000 && !condition(); ++round) {
    scheduler.runAllBackground();
    scheduler.advance(0.01);
  }
  return condition();
}
bool settle(ThreadedScheduler& scheduler, const std::function<bool()>& condition) {
  return scheduler.runMainUntil(condition, patience);
}

template <class S>
class SchedulerTest : public testing::Test {
 protected:
  SchedulerTest() : _scope(_process), _scheduler(&_process) {}

  bool settles(const std::function<bool()>& condition) { return settle(_scheduler, condition); }

  Process _process;
  ProcessScope _scope;
  S _scheduler;
};

using Schedulers = testing::Types<VirtualScheduler, ThreadedScheduler>;
TYPED_TEST_SUITE(SchedulerTest, Schedulers);

TYPED_TEST(SchedulerTest, MainWorkRunsOnTheMainThreadInItsOrder) {
  std::vector<int> order;
  for (int index = 0; index < 5; ++index) {
    this->_scheduler.asyncMain([&, index] {
      EXPECT_TRUE(this->_scheduler.isMainThread());
      order.push_back(index);
    });
  }
  EXPECT_TRUE(order.empty()) << "work never runs inside the call that queues it";
  ASSERT_TRUE(this->settles([&] { return order.size() == 5; }));
  EXPECT_THAT(order, testing::ElementsAre(0, 1, 2, 3, 4));
}

TYPED_TEST(SchedulerTest, DelayedWorkRunsInTheOrderOfItsTimes) {
  std::vector<std::string> order;
  this->_scheduler.mainAfter(0.03, [&] { order.emplace_back("third"); });
  this->_scheduler.mainAfter(0.01, [&] { order.emplace_back("first"); });
  this->_scheduler.mainAfter(0.02, [&] { order.emplace_back("second"); });
  ASSERT_TRUE(this->settles([&] { return order.size() == 3; }));
  EXPECT_THAT(order, testing::ElementsAre("first", "second", "third"));
}

TYPED_TEST(SchedulerTest, DelayedWorkDoesNotRunBeforeItsTime) {
  const double start = this->_scheduler.now();
  double ran = -1;
  this->_scheduler.mainAfter(0.05, [&] { ran = this->_scheduler.now(); });
  ASSERT_TRUE(this->settles([&] { return ran >= 0; }));
  EXPECT_GE(ran, start + 0.05);
}

TYPED_TEST(SchedulerTest, GlobalWorkIsNotOnTheMainThreadAndHasTheProcess) {
  std::atomic<bool> done{false};
  this->_scheduler.asyncGlobal([&] {
    EXPECT_FALSE(this->_scheduler.isMainThread());
    EXPECT_EQ(Process::currentOrNull(), &this->_process);
    this->_scheduler.asyncMain([&] {
      EXPECT_TRUE(this->_scheduler.isMainThread());
      done = true;
    });
  });
  EXPECT_TRUE(this->settles([&] { return done.load(); }));
}

TYPED_TEST(SchedulerTest, ASerialQueueKeepsItsOrderAndRunsOneAtATime) {
  const auto queue = this->_scheduler.makeSerialQueue("icons");
  EXPECT_EQ(queue->label(), "icons");
  constexpr int count = 200;
  std::vector<int> order;  // unguarded: the queue serialises access
  std::atomic<int> running{0};
  std::atomic<int> done{0};
  for (int index = 0; index < count; ++index) {
    queue->async([&, index] {
      EXPECT_EQ(running.fetch_add(1), 0);
      order.push_back(index);
      running.fetch_sub(1);
      ++done;
    });
  }
  ASSERT_TRUE(this->settles([&] { return done == count; }));
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TYPED_TEST(SchedulerTest, ASerialQueueThatIsDroppedStillDoesItsWork) {
  std::atomic<int> done{0};
  this->_scheduler.makeSerialQueue("once")->async([&] { ++done; });
  EXPECT_TRUE(this->settles([&] { return done == 1; }));
}

TYPED_TEST(SchedulerTest, WorkMayBeQueuedFromAnyThread) {
  constexpr int perThread = 50;
  std::atomic<int> onMain{0};
  std::atomic<int> global{0};
  std::vector<std::thread> threads;
  threads.reserve(4);
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int index = 0; index < perThread; ++index) {
        this->_scheduler.asyncMain([&] { ++onMain; });
        this->_scheduler.asyncGlobal([&] { ++global; });
        this->_scheduler.mainAfter(0.001, [&] { ++onMain; });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(this->settles([&] { return onMain == 8 * perThread && global == 4 * perThread; }));
}

TYPED_TEST(SchedulerTest, RunMainUntilRunsMainWorkUntilTheConditionHolds) {
  int count = 0;
  this->_scheduler.asyncMain([&] {
    ++count;
    this->_scheduler.asyncMain([&] { ++count; });
  });
  EXPECT_TRUE(this->_scheduler.runMainUntil([&] { return count == 2; }, patience));
}

TYPED_TEST(SchedulerTest, RunMainUntilGivesUpWhenTheTimeIsOver) {
  EXPECT_FALSE(this->_scheduler.runMainUntil([] { return false; }, 0.01));
}

TYPED_TEST(SchedulerTest, RunMainUntilWorksInsideMainWork) {
  std::vector<std::string> order;
  this->_scheduler.asyncMain([&] {
    bool inner = false;
    this->_scheduler.asyncMain([&] {
      order.emplace_back("inner");
      inner = true;
    });
    EXPECT_TRUE(this->_scheduler.runMainUntil([&] { return inner; }, patience));
    order.emplace_back("outer");
  });
  ASSERT_TRUE(this->settles([&] { return order.size() == 2; }));
  EXPECT_THAT(order, testing::ElementsAre("inner", "outer"));
}

TYPED_TEST(SchedulerTest, RunMainUntilSleepsUntilThereIsSomethingToLookAt) {
  int turns = 0;
  const auto counted = [&] {
    ++turns;
    return false;
  };
  EXPECT_FALSE(this->_scheduler.runMainUntil(counted, 0.05));
  EXPECT_LE(turns, 3) << "before and after the sleep, and after an early wake-up";
}

TYPED_TEST(SchedulerTest, TheWakerMakesRunMainUntilLookAgain) {
  std::atomic<bool> holds{false};
  const auto wake = this->_scheduler.waker();
  std::thread other([&] {
    holds = true;
    wake();
  });
  EXPECT_TRUE(this->_scheduler.runMainUntil([&] { return holds.load(); }, patience));
  other.join();
}

TYPED_TEST(SchedulerTest, AWakerMayOutliveItsScheduler) {
  std::function<void()> wake;
  {
    TypeParam scheduler(&this->_process);
    wake = scheduler.waker();
  }
  EXPECT_NO_THROW(wake());
}

TYPED_TEST(SchedulerTest, TheWaitHandlerIsCalledAtTheTimesThatItAsksFor) {
  std::vector<double> times;
  this->_scheduler.setWaitHandler([&](double seconds) {
    times.push_back(seconds);
    return seconds < 0.02 ? 0.02 : 1000;
  });
  EXPECT_FALSE(this->_scheduler.runMainUntil([] { return false; }, 0.04));
  ASSERT_GE(times.size(), 3U);
  EXPECT_LT(times.front(), 0.02);
  EXPECT_GE(times.back(), 0.04);
  EXPECT_LE(times.size(), 6U);
}

TYPED_TEST(SchedulerTest, TheOuterQueueGoesOnWhileTheMainThreadWaits) {
  const auto outer = std::make_shared<platform::MainQueue>();
  TypeParam scheduler(&this->_process, outer);
  bool ran = false;
  outer->push([&] { ran = true; });
  scheduler.runMain();
  EXPECT_FALSE(ran);
  EXPECT_TRUE(scheduler.runMainUntil([&] { return ran; }, patience));
}

TYPED_TEST(SchedulerTest, WhatIsShutDownDropsItsWorkAndWaitsForNothing) {
  const auto held = std::make_shared<int>(1);
  this->_scheduler.asyncMain([held] {});
  this->_scheduler.shutDown();
  this->_scheduler.mainAfter(0.001, [held] {});
  this->_scheduler.asyncGlobal([held] {});
  this->_scheduler.makeSerialQueue("late")->async([held] {});
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_FALSE(this->_scheduler.runMainUntil([] { return false; }, 1000));
}

class Pipe {
 public:
  Pipe() { EXPECT_EQ(::pipe(_ends.data()), 0); }
  ~Pipe() {
    ::close(_ends[0]);
    if (_ends[1] >= 0) ::close(_ends[1]);
  }
  int reading() const { return _ends[0]; }
  void write() { EXPECT_EQ(::write(_ends[1], "x", 1), 1); }
  void closeWriting() {
    ::close(_ends[1]);
    _ends[1] = -1;
  }

 private:
  std::array<int, 2> _ends{-1, -1};
};

TYPED_TEST(SchedulerTest, WhenReadableRunsOnceWhenThereIsData) {
  Pipe pipe;
  int count = 0;
  this->_scheduler.whenReadable(pipe.reading(), [&] {
    EXPECT_TRUE(this->_scheduler.isMainThread());
    ++count;
  });
  EXPECT_FALSE(this->_scheduler.runMainUntil([&] { return count > 0; }, 0.005));
  pipe.write();
  EXPECT_TRUE(this->_scheduler.runMainUntil([&] { return count > 0; }, patience));
  EXPECT_FALSE(this->_scheduler.runMainUntil([&] { return count > 1; }, 0.005));
}

TYPED_TEST(SchedulerTest, WhenReadableRunsAtTheEndOfTheDataToo) {
  Pipe pipe;
  bool ran = false;
  this->_scheduler.whenReadable(pipe.reading(), [&] { ran = true; });
  pipe.closeWriting();
  EXPECT_TRUE(this->_scheduler.runMainUntil([&] { return ran; }, patience));
}

TYPED_TEST(SchedulerTest, ACancelledWaitDoesNotRun) {
  Pipe pipe;
  bool ran = false;
  const auto wait = this->_scheduler.whenReadable(pipe.reading(), [&] { ran = true; });
  this->_scheduler.cancelWait(wait);
  this->_scheduler.cancelWait(wait);
  pipe.write();
  EXPECT_FALSE(this->_scheduler.runMainUntil([&] { return ran; }, 0.005));
}

TYPED_TEST(SchedulerTest, WhatBecomesReadableBeforeTheConditionHoldsIsDelivered) {
  Pipe pipe;
  bool delivered = false;
  this->_scheduler.whenReadable(pipe.reading(), [&] { delivered = true; });
  const auto condition = [&] {
    pipe.write();
    return true;
  };
  EXPECT_TRUE(this->_scheduler.runMainUntil(condition, patience));
  EXPECT_TRUE(delivered);
}

TYPED_TEST(SchedulerTest, TheHandlerTakesExceptionsThatLeaveWork) {
  std::mutex mutex;
  std::vector<std::string> names;
  this->_scheduler.setExceptionHandler([&](const Exception& exception) {
    const std::lock_guard lock(mutex);
    names.push_back(exception.name());
  });
  this->_scheduler.asyncMain([] { throw Exception("OnMain", ""); });
  this->_scheduler.asyncGlobal([] { throw Exception("InBackground", ""); });
  ASSERT_TRUE(this->settles([&] {
    const std::lock_guard lock(mutex);
    return names.size() == 2;
  }));
  EXPECT_THAT(names, testing::UnorderedElementsAre("OnMain", "InBackground"));
}

TYPED_TEST(SchedulerTest, WithoutAHandlerAnExceptionLeavesTheRunLoopAndTheRestGoesOn) {
  bool after = false;
  this->_scheduler.asyncMain([] { throw Exception("OnMain", ""); });
  this->_scheduler.asyncMain([&] { after = true; });
  EXPECT_THROW(this->settles([&] { return after; }), Exception);
  EXPECT_TRUE(this->settles([&] { return after; }));
}

TYPED_TEST(SchedulerTest, WithoutAHandlerAnExceptionOfBackgroundWorkIsNotLost) {
  this->_scheduler.asyncGlobal([] { throw Exception("InBackground", ""); });
  EXPECT_THROW(this->settles([] { return false; }), Exception);
}

TYPED_TEST(SchedulerTest, WorkThatNeverRanIsGoneWithTheScheduler) {
  const auto held = std::make_shared<int>(1);
  {
    TypeParam scheduler(&this->_process);
    const auto queue = scheduler.makeSerialQueue("never");
    scheduler.mainAfter(1000, [held] {});
    scheduler.asyncMain([held] {});
    queue->async([held, queue] {});
    queue->async([held, queue] {});
  }
  EXPECT_EQ(held.use_count(), 1);
}

TYPED_TEST(SchedulerTest, AQueueOutlivesItsSchedulerAndDropsWhatComesThen) {
  std::shared_ptr<platform::SerialQueue> queue;
  {
    TypeParam scheduler(&this->_process);
    queue = scheduler.makeSerialQueue("late");
  }
  const auto held = std::make_shared<int>(1);
  queue->async([held] {});
  EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
