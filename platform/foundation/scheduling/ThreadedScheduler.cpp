#include "platform/foundation/scheduling/ThreadedScheduler.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/ThreadPool.h"

namespace platform {

namespace {

// How often a condition is asked again that a child process makes true.
constexpr std::int64_t threadedPollNanoseconds = 1'000'000;
// The longest single wait; whoever waits longer waits again.
constexpr std::int64_t longestWait = 3'600'000'000'000;

}  // namespace

ThreadedScheduler::ThreadedScheduler(Process* process, std::size_t backgroundThreads)
    : _mainThread(std::this_thread::get_id()),
      _start(std::chrono::steady_clock::now()),
      _runner(process) {
  _pool = std::make_shared<ThreadPool>(backgroundThreads, [this](Work work) {
    try {
      _runner.run(std::move(work));
    } catch (const Exception&) {
      _main.push([raised = std::current_exception()] { std::rethrow_exception(raised); });
    }
  });
}

ThreadedScheduler::~ThreadedScheduler() {
  std::optional<ProcessScope> scope;
  if (_runner.process() != nullptr) scope.emplace(*_runner.process());
  _pool->stop();
  _main.takeAll();
}

std::int64_t ThreadedScheduler::nowNanoseconds() const {
  return std::chrono::nanoseconds(std::chrono::steady_clock::now() - _start).count();
}

double ThreadedScheduler::now() const {
  return secondsOfNanoseconds(nowNanoseconds());
}

bool ThreadedScheduler::isMainThread() const {
  return std::this_thread::get_id() == _mainThread;
}

void ThreadedScheduler::asyncMain(Work work) {
  _main.push(std::move(work));
}

void ThreadedScheduler::mainAfter(double seconds, Work work) {
  _main.pushAt(nowNanoseconds() + nanosecondsOfSeconds(seconds), std::move(work));
}

void ThreadedScheduler::asyncGlobal(Work work) {
  _pool->push(std::move(work));
}

std::shared_ptr<SerialQueue> ThreadedScheduler::makeSerialQueue(std::string label) {
  return _pool->makeSerialQueue(std::move(label));
}

std::uint64_t ThreadedScheduler::whenReadable(int descriptor, Work work) {
  return _main.addWait(descriptor, std::move(work));
}

void ThreadedScheduler::cancelWait(std::uint64_t wait) {
  _main.cancelWait(wait);
}

void ThreadedScheduler::setExceptionHandler(ExceptionHandler handler) {
  _runner.setHandler(std::move(handler));
}

// Runs what is ready now, but not what that makes ready without an end.
bool ThreadedScheduler::runReady() {
  _main.waitForDescriptors(0);
  _main.makeDueReady(nowNanoseconds());
  bool any = false;
  while (Work work = _main.takeReady()) {
    any = true;
    _runner.run(std::move(work));
    if (_stopped) break;
  }
  return any;
}

// Waits for work, for the time of delayed work, or until the nanoseconds have passed.
void ThreadedScheduler::waitAtMost(std::int64_t nanoseconds) {
  if (const auto next = _main.nextTime()) {
    nanoseconds = std::min(nanoseconds, std::max<std::int64_t>(*next - nowNanoseconds(), 0));
  }
  _main.waitForDescriptors(std::min(nanoseconds, longestWait));
}

bool ThreadedScheduler::runMainUntil(const std::function<bool()>& condition,
                                     double timeoutSeconds) {
  const std::int64_t end = nowNanoseconds() + nanosecondsOfSeconds(timeoutSeconds);
  while (true) {
    runReady();
    if (condition()) {
      // What became readable before the condition did is still delivered.
      runReady();
      return true;
    }
    if (nowNanoseconds() >= end) return false;
    waitAtMost(threadedPollNanoseconds);
  }
}

void ThreadedScheduler::run() {
  while (!_stopped) {
    if (!runReady()) waitAtMost(longestWait);
  }
  _stopped = false;
}

void ThreadedScheduler::stop() {
  _stopped = true;
  _main.wake();
}

bool ThreadedScheduler::runOnce(double timeoutSeconds) {
  const std::int64_t end = nowNanoseconds() + nanosecondsOfSeconds(timeoutSeconds);
  while (!runReady()) {
    const std::int64_t left = end - nowNanoseconds();
    if (left <= 0) return false;
    waitAtMost(left);
  }
  return true;
}

}  // namespace platform
