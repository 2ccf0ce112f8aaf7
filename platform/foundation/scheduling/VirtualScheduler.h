#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/foundation/scheduling/QueueScheduler.h"

namespace platform {

// The scheduler for tests and scripts: the clock moves only in `advance`, and all work runs on the
// thread that made the scheduler, when the test asks for it. While runMainUntil waits for a child
// process, the clock stands still and background work does not run.
//
// Threads: any may queue work; functions that run work only on the main thread.
class VirtualScheduler final : public QueueScheduler {
 public:
  // Both arguments may be null. See QueueScheduler.
  explicit VirtualScheduler(Process* process = nullptr, std::shared_ptr<MainQueue> outer = nullptr);
  ~VirtualScheduler() override;

  double now() const override;
  // Returns false while background work runs, although it runs on the main thread.
  bool isMainThread() const override;
  void asyncGlobal(Work work) override;
  std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) override;

  // Moves the clock. Runs delayed main work that becomes due, each piece at its own time and in
  // order, including work queued in the meantime. Negative seconds and NaN count as 0. If an
  // exception is not handled, the clock stays at its time.
  void advance(double seconds);

  // Returns the number of queued pieces of main work, immediate and delayed.
  std::size_t pendingMain() const;
  // Returns the number of pieces of work in the global queue and the serial queues.
  std::size_t pendingBackground() const;
  // Runs the first n pieces in the order in which they were queued, which keeps the order of each
  // serial queue. Returns the number of pieces run.
  std::size_t runBackground(std::size_t count);
  // Runs background work until none is left, including work queued in the meantime. Returns the
  // number of pieces run.
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
