#include "platform/foundation/scheduling/ThreadedScheduler.h"

#include <exception>
#include <utility>

#include "platform/foundation/scheduling/ThreadPool.h"

namespace platform {

namespace {

constexpr std::size_t backgroundThreads = 2;

}  // namespace

ThreadedScheduler::ThreadedScheduler(Process* process, std::shared_ptr<MainQueue> outer)
    : QueueScheduler(process, std::move(outer)), _start(machineNanoseconds()) {
  _pool = std::make_shared<ThreadPool>(backgroundThreads,
                                       [this](Work work) { runInBackground(std::move(work)); });
}

ThreadedScheduler::~ThreadedScheduler() {
  shutDown();
}

void ThreadedScheduler::runInBackground(Work work) {
  try {
    run(std::move(work));
    // The main thread may wait for a result of the work.
    queue().push([] {});
  } catch (const Exception&) {
    queue().push([raised = std::current_exception()] { std::rethrow_exception(raised); });
  }
}

std::int64_t ThreadedScheduler::clock() const {
  return machineNanoseconds();
}

std::int64_t ThreadedScheduler::nextTime() const {
  return queue().nextTime().value_or(MainQueue::never);
}

double ThreadedScheduler::now() const {
  return secondsOfNanoseconds(clock() - _start);
}

void ThreadedScheduler::asyncGlobal(Work work) {
  _pool->push(std::move(work));
}

std::shared_ptr<SerialQueue> ThreadedScheduler::makeSerialQueue(std::string label) {
  return _pool->makeSerialQueue(std::move(label));
}

void ThreadedScheduler::dropBackground() {
  _pool->stop();
}

}  // namespace platform
