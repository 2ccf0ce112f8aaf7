#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

class Process;

// Times of schedulers, in whole nanoseconds, so that 0.7 + 0.1 + 0.2 seconds are one second.
// Negative spans and NaN give 0; what is longer than about 100 years gives 100 years.
std::int64_t nanosecondsOfSeconds(double seconds) noexcept;
double secondsOfNanoseconds(std::int64_t nanoseconds) noexcept;

// Runs one piece of work for a process, and hands on the platform exceptions that leave it.
// Threads: any.
class WorkRunner {
 public:
  explicit WorkRunner(Process* process) noexcept : _process(process) {}
  void setHandler(ExceptionHandler handler);
  // The work and what it holds are gone when this returns. An exception that nobody handles
  // leaves it.
  void run(Work work);
  Process* process() const noexcept { return _process; }

 private:
  ExceptionHandler handler();

  Process* _process;
  std::mutex _mutex;
  ExceptionHandler _handler;
};

// What waits to run on a main thread: work for now, work for later, and work that waits for a
// file descriptor. Knows no clock: the times are whatever its owner counts.
// Threads: any, but only one thread takes and waits.
class MainQueue {
 public:
  MainQueue();
  ~MainQueue();
  MainQueue(const MainQueue&) = delete;
  MainQueue& operator=(const MainQueue&) = delete;

  void push(Work work);
  void pushAt(std::int64_t time, Work work);
  std::uint64_t addWait(int descriptor, Work work);
  void cancelWait(std::uint64_t wait);

  // The first piece that is ready; an empty function where there is none.
  Work takeReady();
  // Makes delayed work whose time has come ready, in the order of the times.
  void makeDueReady(std::int64_t now);
  std::optional<std::int64_t> nextTime() const;
  // Makes work ready whose descriptor can be read. Returns at once where the nanoseconds are 0 or
  // something is ready; else waits that long, or until somebody pushes or calls `wake`.
  void waitForDescriptors(std::int64_t nanoseconds);
  void wake();
  // Takes everything that still waits, so that it can go where nothing is locked.
  std::vector<Work> takeAll();

 private:
  struct Wait {
    int descriptor;
    Work work;
  };
  void makeReadableReady(const std::vector<std::uint64_t>& waits);

  mutable std::mutex _mutex;
  int _wakeDescriptor;
  std::deque<Work> _ready;
  std::multimap<std::int64_t, Work> _delayed;
  std::map<std::uint64_t, Wait> _waits;
  std::uint64_t _lastWait = 0;
};

}  // namespace platform
