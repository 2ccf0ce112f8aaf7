#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/scheduling/ThreadedScheduler.h"
#include "tests/support/TestProcess.h"

namespace test_support {

// A TestProcess with the machine's clock and real threads, for tests with several threads. The
// thread that makes it is the main thread.
class ThreadedTestProcess {
 public:
  ThreadedTestProcess()
      : _scheduler(std::make_shared<platform::ThreadedScheduler>(&_base.process())) {
    _base.process().provide<platform::Scheduler>(_scheduler);
  }

  // Everything except the clock.
  TestProcess& base() { return _base; }
  platform::ThreadedScheduler& scheduler() { return *_scheduler; }
  // Runs main work until the condition is true. Returns false after a long timeout.
  bool settles(const std::function<bool()>& condition) {
    constexpr double patienceSeconds = 20;
    return _scheduler->runMainUntil(condition, patienceSeconds);
  }

 private:
  TestProcess _base;
  std::shared_ptr<platform::ThreadedScheduler> _scheduler;
};

}  // namespace test_support
