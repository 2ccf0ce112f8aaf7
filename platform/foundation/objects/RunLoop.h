#pragma once

#include <functional>

namespace platform {

using Work = std::function<void()>;

// The clock and the main thread of a process, as far as what lies below the queues needs them.
// Every Scheduler is one. Threads: any.
class RunLoop {
 public:
  virtual ~RunLoop() = default;
  // Seconds since the run loop was made; never goes back.
  virtual double now() const = 0;
  virtual bool isMainThread() const = 0;
};

}  // namespace platform
