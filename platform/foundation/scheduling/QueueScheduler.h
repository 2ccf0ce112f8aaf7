#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/foundation/scheduling/MainQueue.h"
#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

class Process;

// The common part of the schedulers: the main queue of a process, on the thread that made the
// scheduler, and how that thread waits.
//
// Threads: as in Scheduler; the functions added here only on the main thread.
class QueueScheduler : public Scheduler {
 public:
  // Receives the real seconds that runMainUntil has waited. Returns the longest time until the next
  // call.
  using WaitHandler = std::function<double(double seconds)>;

  bool isMainThread() const override;
  void asyncMain(Work work) final;
  void mainAfter(double seconds, Work work) final;
  bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) final;
  std::function<void()> waker() const final;
  std::uint64_t whenReadable(int descriptor, Work work) final;
  void cancelWait(std::uint64_t wait) final;
  void setExceptionHandler(ExceptionHandler handler) final;

  // Runs all main work that is due, including immediate work that it queues.
  void runMain();
  // Blocks until `runMain` or the outer queue has work.
  void sleep();
  // The handler is called before runMainUntil checks its condition: at the start and after each
  // wake-up.
  void setWaitHandler(WaitHandler handler) { _whileWaiting = std::move(handler); }
  // Waits for running background work and drops all other work, including work added later.
  // `runMainUntil` no longer waits.
  void shutDown();

 protected:
  // `process` is the process that work runs for; null keeps the current one. It must outlive the
  // scheduler. For `outer`, see MainQueue. Derived classes must call shutDown in their destructors.
  QueueScheduler(Process* process, std::shared_ptr<MainQueue> outer);

  MainQueue& queue() const noexcept { return *_main; }
  // Runs one piece of work for the process and passes platform exceptions to the handler. The work
  // and its captures are destroyed when this returns. Rethrows exceptions that are not handled.
  void run(Work work);
  void runDue();

 private:
  // The clock used by the times in the queue.
  virtual std::int64_t clock() const = 0;
  // The machine's time at which the next work is due; MainQueue::never if there is none.
  virtual std::int64_t nextTime() const = 0;
  virtual void dropBackground() = 0;
  ExceptionHandler exceptionHandler();

  Process* const _process;
  const std::thread::id _mainThread;
  const std::shared_ptr<MainQueue> _main;  // shared, because wakers may outlive the scheduler
  std::mutex _mutex;
  ExceptionHandler _handler;
  WaitHandler _whileWaiting;
  bool _isShutDown = false;
};

}  // namespace platform
