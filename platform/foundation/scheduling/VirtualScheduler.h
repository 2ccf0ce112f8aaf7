#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/foundation/scheduling/QueueScheduler.h"

namespace platform {

// The scheduler of tests and scripts: the clock stands still until `advance`, and everything runs
// on the thread that made the scheduler, where and when the test says so. While runMainUntil waits
// for the outside world, the clock stands still and background work stays where it is.
//
// Threads: work may be queued from any thread; what runs work is for the main thread only.
class VirtualScheduler final : public QueueScheduler {
 public:
  // Null for no process, and for no outer queue. See QueueScheduler.
  explicit VirtualScheduler(Process* process = nullptr, std::shared_ptr<MainQueue> outer = nullptr);
  ~VirtualScheduler() override;

  double now() const override;
  // False while background work runs, although it runs on the same thread.
  bool isMainThread() const override;
  void asyncGlobal(Work work) override;
  std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) override;

  // Moves the clock. Delayed main work that falls due within the span runs in the order of its
  // times, each at its own time, and so does what it queues within the span. Seconds that are
  // negative or not a number count as none. A platform exception that nobody handles leaves the
  // clock where it was raised.
  void advance(double seconds);

  // Pieces of main work that wait, for now and for later.
  std::size_t pendingMain() const;
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
  std::int64_t clock() const override { return _now; }
  std::int64_t nextTime() const override { return MainQueue::never; }
  void dropBackground() override;

  std::atomic<std::int64_t> _now{0};
  std::atomic<bool> _inBackground{false};
  std::shared_ptr<Background> _background;
};

}  // namespace platform
