#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

#include "platform/foundation/scheduling/ThreadPool.h"

namespace {

using platform::ThreadPool;
using platform::Work;

class OneThread : public testing::Test {
 protected:
  static void run(const Work& work) { work(); }
};

TEST_F(OneThread, WorkIsDoneInItsOrderOnAnotherThread) {
  std::vector<int> done;
  std::set<std::thread::id> threads;
  std::promise<void> last;
  ThreadPool worker(1, run);
  for (int count = 0; count < 5; ++count) {
    worker.push([&, count] {
      done.push_back(count);
      threads.insert(std::this_thread::get_id());
    });
  }
  worker.push([&] { last.set_value(); });
  last.get_future().wait();
  EXPECT_THAT(done, testing::ElementsAre(0, 1, 2, 3, 4));
  EXPECT_EQ(threads.size(), 1U);
  EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

TEST_F(OneThread, ItEndsAfterTheWorkInHand) {
  bool isDone = false;
  std::promise<void> begun;
  {
    ThreadPool worker(1, run);
    worker.push([&] {
      begun.set_value();
      for (int count = 0; count < 1000; ++count) std::this_thread::yield();
      isDone = true;
    });
    begun.get_future().wait();
  }
  EXPECT_TRUE(isDone);
}

}  // namespace
