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

// Times of schedulers, in whole nanoseconds, so that 0.7 + 0.1 + 0.2 seconds are one second.
// Negative spans and NaN give 0; what is longer than about 100 years gives 100 years.
std::int64_t nanosecondsOfSeconds(double seconds) noexcept;
double secondsOfNanoseconds(std::int64_t nanoseconds) noexcept;
// The clock of the machine, which never goes back. Only differences mean something.
std::int64_t machineNanoseconds() noexcept;

// What waits to run on a main thread: work for now, work for later, and work that waits for a
// file descriptor. `sleep` is the one place where a main thread waits for anything.
//
// The times of work for later are those of whatever clock its owner has. The deadlines are those
// of the machine's clock.
//
// Threads: any for what brings work, `cancelWait`, `close` and `size`; all else on the main thread.
class MainQueue {
 public:
  // A deadline that does not come.
  static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

  // `outer` is another queue of the same thread, which goes on while this one is waited for:
  // `sleep` also returns when there is something for it. Null for none; it has no outer one itself.
  explicit MainQueue(std::shared_ptr<MainQueue> outer = nullptr);
  ~MainQueue();
  MainQueue(const MainQueue&) = delete;
  MainQueue& operator=(const MainQueue&) = delete;

  void push(Work work);
  void pushAt(std::int64_t time, Work work);
  // Runs the work once, when the descriptor has something to read or is at its end. The result is
  // the wait's number, 0 after `close`.
  std::uint64_t addWait(int descriptor, Work work);
  // Nothing where the wait is over.
  void cancelWait(std::uint64_t wait);
  // Drops everything that waits here, and what comes from now on.
  void close();
  // Pieces of work for now and for later.
  std::size_t size() const;

  // Null where there is none.
  const std::shared_ptr<MainQueue>& outer() const noexcept { return _outer; }
  // The first piece that is ready; an empty function where there is none.
  Work takeReady();
  // Makes delayed work whose time has come ready, in the order of the times.
  void makeDueReady(std::int64_t now);
  std::optional<std::int64_t> nextTime() const;
  // Waits until a piece is ready or there was a push, at most until the deadline, and makes work
  // ready whose descriptor can be read. Does the latter alone where a piece is ready already or the
  // deadline has passed. May also return before for no reason.
  void sleep(std::int64_t deadline);

  // For a queue that belongs to no process: runs what is ready, and what that makes ready.
  void runReady();
  // The same, over and over until the condition holds; false where the deadline came before. The
  // condition must become true by work that runs here.
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
  const int _wakeDescriptor;  // -1 where there is an outer queue, whose is used
  mutable std::mutex _mutex;
  bool _closed = false;
  std::deque<Work> _ready;
  std::multimap<std::int64_t, Work> _delayed;
  std::map<std::uint64_t, Wait> _waits;
  std::uint64_t _lastWait = 0;
};

}  // namespace platform
