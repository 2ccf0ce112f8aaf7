#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>

#include "platform/foundation/scheduling/MainQueue.h"
#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

class ThreadPool;

// The scheduler of the real world: the clock of the machine, the main queue on the thread that
// made the scheduler, the queues on threads of their own.
//
// Threads: `run`, `runOnce`, `runMainUntil` and the destructor on the thread that made it,
// everything else from any. Work that has not begun when the scheduler goes away does not run.
class ThreadedScheduler final : public Scheduler {
 public:
  // The process that work runs for; null for none. It must outlive the scheduler.
  explicit ThreadedScheduler(Process* process = nullptr, std::size_t backgroundThreads = 2);
  ~ThreadedScheduler() override;

  double now() const override;
  bool isMainThread() const override;
  void asyncMain(Work work) override;
  void mainAfter(double seconds, Work work) override;
  void asyncGlobal(Work work) override;
  std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) override;
  bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) override;
  std::uint64_t whenReadable(int descriptor, Work work) override;
  void cancelWait(std::uint64_t wait) override;
  void setExceptionHandler(ExceptionHandler handler) override;

  // Runs the main queue until `stop`, which may have come before.
  void run();
  // From any thread: `run` returns after the piece of work that is running.
  void stop();
  // Waits for main work, at most the given seconds, and runs what is due then. Whether any was.
  bool runOnce(double timeoutSeconds);

 private:
  std::int64_t nowNanoseconds() const;
  bool runReady();
  void waitAtMost(std::int64_t nanoseconds);

  const std::thread::id _mainThread;
  const std::chrono::steady_clock::time_point _start;
  WorkRunner _runner;
  MainQueue _main;
  std::atomic<bool> _stopped{false};
  std::shared_ptr<ThreadPool> _pool;
};

}  // namespace platform
