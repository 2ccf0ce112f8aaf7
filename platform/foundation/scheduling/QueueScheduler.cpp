#include "platform/foundation/scheduling/QueueScheduler.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/foundation/objects/Process.h"

namespace platform {

QueueScheduler::QueueScheduler(Process* process, std::shared_ptr<MainQueue> outer)
    : _process(process),
      _mainThread(std::this_thread::get_id()),
      _main(std::make_shared<MainQueue>(std::move(outer))) {}

bool QueueScheduler::isMainThread() const {
  return std::this_thread::get_id() == _mainThread;
}

void QueueScheduler::asyncMain(Work work) {
  _main->push(std::move(work));
}

void QueueScheduler::mainAfter(double seconds, Work work) {
  if (seconds > 0) {
    _main->pushAt(clock() + nanosecondsOfSeconds(seconds), std::move(work));
  } else {
    _main->push(std::move(work));
  }
}

std::function<void()> QueueScheduler::waker() const {
  return [queue = _main->outer() ? _main->outer() : _main] { queue->push([] {}); };
}

std::uint64_t QueueScheduler::whenReadable(int descriptor, Work work) {
  return _main->addWait(descriptor, std::move(work));
}

void QueueScheduler::cancelWait(std::uint64_t wait) {
  _main->cancelWait(wait);
}

void QueueScheduler::setExceptionHandler(ExceptionHandler handler) {
  const std::lock_guard lock(_mutex);
  _handler.swap(handler);
}

ExceptionHandler QueueScheduler::exceptionHandler() {
  const std::lock_guard lock(_mutex);
  return _handler;
}

void QueueScheduler::run(Work work) {
  std::optional<ProcessScope> scope;
  if (_process != nullptr) scope.emplace(*_process);
  // The work's captures must be destroyed while the process is the current one.
  const Work running = std::move(work);
  try {
    running();
  } catch (const Exception& exception) {
    const ExceptionHandler handle = exceptionHandler();
    if (!handle) throw;
    handle(exception);
  }
}

void QueueScheduler::runDue() {
  _main->makeDueReady(clock());
  while (Work work = _main->takeReady()) {
    run(std::move(work));
    _main->makeDueReady(clock());
  }
}

void QueueScheduler::runMain() {
  _main->sleep(0);
  runDue();
}

void QueueScheduler::sleep() {
  _main->sleep(nextTime());
}

bool QueueScheduler::runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) {
  if (_isShutDown) return condition();
  const std::int64_t start = machineNanoseconds();
  const std::int64_t end = start + nanosecondsOfSeconds(timeoutSeconds);
  while (true) {
    runMain();
    if (_main->outer()) _main->outer()->runReady();
    const std::int64_t now = machineNanoseconds();
    std::int64_t deadline = std::min(end, nextTime());
    if (_whileWaiting) {
      const double next = _whileWaiting(secondsOfNanoseconds(now - start));
      deadline = std::min(deadline, start + nanosecondsOfSeconds(next));
    }
    if (condition()) {
      // Deliver what became readable before the condition became true.
      runMain();
      return true;
    }
    if (now >= end) return false;
    _main->sleep(deadline);
  }
}

void QueueScheduler::shutDown() {
  std::optional<ProcessScope> scope;
  if (_process != nullptr) scope.emplace(*_process);
  _isShutDown = true;
  dropBackground();
  _main->close();
}

}  // namespace platform
