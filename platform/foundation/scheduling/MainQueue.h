#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

// Converts seconds to whole nanoseconds, so that 0.7 + 0.1 + 0.2 seconds are exactly one second.
// Negative values and NaN become 0; the maximum is about 100 years.
std::int64_t nanosecondsOfSeconds(double seconds) noexcept;
double secondsOfNanoseconds(std::int64_t nanoseconds) noexcept;
// The machine's monotonic clock. Only differences are meaningful.
std::int64_t machineNanoseconds() noexcept;

// The work of a main thread: immediate work, delayed work, and work that waits for a file
// descriptor. The main thread blocks only in `sleep`.
//
// Delayed work uses the clock of the queue's owner. Deadlines use the machine's clock.
//
// Threads: functions that add work, `cancelWait`, `close` and `size` from any thread; all others on
// the main thread.
class MainQueue {
 public:
  // A deadline in the infinite future.
  static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

  // `outer` is another queue of the same thread that continues while this one waits: `sleep` also
  // returns when the outer queue has work. May be null; must not have an outer queue itself.
  explicit MainQueue(std::shared_ptr<MainQueue> outer = nullptr);
  ~MainQueue();
  MainQueue(const MainQueue&) = delete;
  MainQueue& operator=(const MainQueue&) = delete;

  void push(Work work);
  void pushAt(std::int64_t time, Work work);
  // Runs the work once, when the descriptor is readable or at the end of the file. Returns the
  // number of the wait, or 0 after `close`.
  std::uint64_t addWait(int descriptor, Work work);
  // Does nothing if the wait is over.
  void cancelWait(std::uint64_t wait);
  // Drops all waiting work and any work added later.
  void close();
  // Returns the number of immediate and delayed pieces of work.
  std::size_t size() const;

  // May be null.
  const std::shared_ptr<MainQueue>& outer() const noexcept { return _outer; }
  // Returns the first ready piece of work; an empty function if there is none.
  Work takeReady();
  // Moves delayed work that is due to the ready work, in the order of its times.
  void makeDueReady(std::int64_t now);
  std::optional<std::int64_t> nextTime() const;
  // Blocks until work is ready or pushed, or the deadline passes. Then moves work whose descriptor
  // is readable to the ready work. If work is ready already or the deadline has passed, does not
  // block. May also return early without a reason.
  void sleep(std::int64_t deadline);

  // For a queue without a process: runs the ready work, and the work that this makes ready.
  void runReady();
  // Calls runReady until the condition is true; returns false if the deadline passes first. Only
  // work of this queue may make the condition true.
  bool runUntil(const std::function<bool()>& condition, std::int64_t deadline = never);

 private:
  struct Wait {
    int descriptor;
    Work work;
  };
  struct Sleep;
  int wakeDescriptor() const noexcept { return (_outer ? *_outer : *this)._wakeDescriptor; }
  void wake();
  void takePart(Sleep& sleep);
  void makeReadableReady(std::uint64_t wait);

  const std::shared_ptr<MainQueue> _outer;
  const int _wakeDescriptor;  // -1 if there is an outer queue; its descriptor is used then
  mutable std::mutex _mutex;
  bool _closed = false;
  std::deque<Work> _ready;
  std::multimap<std::int64_t, Work> _delayed;
  std::map<std::uint64_t, Wait> _waits;
  std::uint64_t _lastWait = 0;
};

}  // namespace platform
