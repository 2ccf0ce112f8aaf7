#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/foundation/scheduling/MainQueue.h"
#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

// The scheduler of tests and scripts: the clock stands still until `advance`, and everything runs
// on the thread that made the scheduler, where and when the test says so.
//
// Threads: work may be queued from any thread; what runs work is for the main thread only.
class VirtualScheduler final : public Scheduler {
 public:
  // The process that work runs for; null leaves the current one as it is. It must outlive the
  // scheduler's last work.
  explicit VirtualScheduler(Process* process = nullptr);
  ~VirtualScheduler() override;

  double now() const override;
  // False while background work runs, although it runs on the same thread.
  bool isMainThread() const override;
  void asyncMain(Work work) override;
  void mainAfter(double seconds, Work work) override;
  void asyncGlobal(Work work) override;
  std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) override;
  // Runs main work while the clock stands still and waits for the outside world in between;
  // background work stays where it is.
  bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) override;
  std::uint64_t whenReadable(int descriptor, Work work) override;
  void cancelWait(std::uint64_t wait) override;
  void setExceptionHandler(ExceptionHandler handler) override;

  // Runs the main work that is due, and what that work queues for now, until none is left.
  void runMain();
  // Moves the clock. Delayed main work that falls due within the span runs in the order of its
  // times, each at its own time, and so does what it queues within the span. Seconds that are
  // negative or not a number count as none. A platform exception that nobody handles leaves the
  // clock where it was raised.
  void advance(double seconds);

  // Pieces of work that wait in the global queue and in the serial queues.
  std::size_t pendingBackground() const;
  // Runs the first n pieces, in the order in which they were queued, whichever queue they are in
  // (which keeps the order of each serial queue). The result is how many there were to run.
  std::size_t runBackground(std::size_t count);
  // The same until none is left, with those that are queued meanwhile.
  std::size_t runAllBackground();

 private:
  struct Background;
  class Queue;

  bool runOnePieceOfBackground();
  void drainMain();

  const std::thread::id _mainThread;
  WorkRunner _runner;
  MainQueue _main;
  std::atomic<std::int64_t> _now{0};
  std::atomic<bool> _inBackground{false};
  std::shared_ptr<Background> _background;
};

}  // namespace platform
