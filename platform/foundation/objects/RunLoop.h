#pragma once

#include <functional>

namespace platform {

using Work = std::function<void()>;

// The clock and main thread of a process, for code below the queues. Every Scheduler is one.
// Threads: any.
class RunLoop {
 public:
  virtual ~RunLoop() = default;
  // Returns the seconds since the run loop was made. Never decreases.
  virtual double now() const = 0;
  virtual bool isMainThread() const = 0;
};

}  // namespace platform
