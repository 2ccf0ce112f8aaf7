#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/foundation/objects/RunLoop.h"
#include "platform/foundation/values/Exception.h"

namespace platform {

using ExceptionHandler = std::function<void(const Exception&)>;

// Work that runs one piece after another, in the order in which it came, off the main thread.
class SerialQueue {
 public:
  virtual ~SerialQueue() = default;
  virtual const std::string& label() const = 0;
  virtual void async(Work work) = 0;  // from any thread
};

// The run loop of the main thread, the queues and the clock. All waiting goes through here.
// Threads: every function from any thread unless it says otherwise.
class Scheduler : public RunLoop {
 public:
  // Runs the work on the main thread, after what was queued there before.
  virtual void asyncMain(Work work) = 0;
  // The same, no sooner than the given seconds from now. Equal times keep their order.
  virtual void mainAfter(double seconds, Work work) = 0;
  // Runs the work on a global background queue of default priority; no order is promised.
  virtual void asyncGlobal(Work work) = 0;
  virtual std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) = 0;
  // Main thread only: lets the main queue run until the condition holds; true when it holds,
  // false where the seconds (of the outside world, since what is waited for is a child process)
  // have passed before. Used by what blocks the main thread on a device while its run loop goes on.
  // In between the thread sleeps: what makes the condition true must be work of this scheduler, or
  // call the waker then.
  virtual bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) = 0;

  // Makes `runMainUntil` look at its condition. May be called from any thread, also when the
  // scheduler is gone.
  virtual std::function<void()> waker() const = 0;

  // Runs the work once, on the main thread, when the descriptor has something to read or is at
  // its end. The descriptor must stay open until then or until the wait is cancelled; the result
  // is the wait's number.
  virtual std::uint64_t whenReadable(int descriptor, Work work) = 0;
  // The work of that wait does not run any more, unless it is already running. Nothing where the
  // wait is over.
  virtual void cancelWait(std::uint64_t wait) = 0;

  // Takes every platform exception that leaves a piece of work from now on, on the thread where it
  // left it. Without a handler it leaves the function that ran the main queue; one of background
  // work that ran on a thread of its own is raised on the main thread.
  virtual void setExceptionHandler(ExceptionHandler handler) = 0;
};

}  // namespace platform
