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

// What the schedulers have in common: the main queue of a process, on the thread that made the
// scheduler, and how that thread waits.
//
// Threads: those of Scheduler; what is added here belongs to the main thread.
class QueueScheduler : public Scheduler {
 public:
  // Takes the seconds (of the outside world) that runMainUntil has waited; gives those after which
  // it is to be called again at the latest.
  using WaitHandler = std::function<double(double seconds)>;

  bool isMainThread() const override;
  void asyncMain(Work work) final;
  void mainAfter(double seconds, Work work) final;
  bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) final;
  std::function<void()> waker() const final;
  std::uint64_t whenReadable(int descriptor, Work work) final;
  void cancelWait(std::uint64_t wait) final;
  void setExceptionHandler(ExceptionHandler handler) final;

  // Runs the main work that is due, and what that work queues for now, until none is left.
  void runMain();
  // Sleeps until there is work for `runMain`, or for the outer queue.
  void sleep();
  // Called before runMainUntil looks at its condition, when it begins and whenever it was woken.
  void setWaitHandler(WaitHandler handler) { _whileWaiting = std::move(handler); }
  // Waits for the background work that is running, and drops all work that has not begun. What
  // comes later is dropped, too, and `runMainUntil` waits for nothing any more.
  void shutDown();

 protected:
  // The process that work runs for; null leaves the current one as it is. It must outlive the
  // scheduler. `outer` is as of MainQueue. Whoever derives from this calls shutDown in its
  // destructor.
  QueueScheduler(Process* process, std::shared_ptr<MainQueue> outer);

  MainQueue& queue() const noexcept { return *_main; }
  // Runs one piece of work for the process, and hands on the platform exceptions that leave it. The
  // work and what it holds are gone when this returns. An exception that nobody handles leaves it.
  void run(Work work);
  void runDue();

 private:
  // What the times in the queue are measured by.
  virtual std::int64_t clock() const = 0;
  // When the machine's clock will have made work due; MainQueue::never where it makes none due.
  virtual std::int64_t nextTime() const = 0;
  virtual void dropBackground() = 0;
  ExceptionHandler exceptionHandler();

  Process* const _process;
  const std::thread::id _mainThread;
  const std::shared_ptr<MainQueue> _main;  // wakers may live longer than the scheduler
  std::mutex _mutex;
  ExceptionHandler _handler;
  WaitHandler _whileWaiting;
  bool _isShutDown = false;
};

}  // namespace platform
