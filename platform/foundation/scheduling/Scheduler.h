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

// Runs work off the main thread, one piece at a time, in order.
class SerialQueue {
 public:
  virtual ~SerialQueue() = default;
  virtual const std::string& label() const = 0;
  virtual void async(Work work) = 0;  // from any thread
};

// The run loop of the main thread, the queues and the clock. All waiting goes through this class.
// Threads: any, unless a function says otherwise.
class Scheduler : public RunLoop {
 public:
  // Queues work for the main thread. Work runs in the order of the calls.
  virtual void asyncMain(Work work) = 0;
  // Queues work for the main thread, to run no sooner than the given seconds from now. Work with
  // equal times keeps its order.
  virtual void mainAfter(double seconds, Work work) = 0;
  // Queues work for a global background queue with default priority. The order is not defined.
  virtual void asyncGlobal(Work work) = 0;
  virtual std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) = 0;
  // Main thread only. Runs the main queue until the condition is true. Returns false if the timeout
  // passes first; it is in real seconds, because the caller waits for a child process. Used for
  // calls that block the main thread on a device while its run loop continues. The thread sleeps
  // between pieces of work, so the condition must be changed by work of this scheduler or followed
  // by a call of the waker.
  virtual bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) = 0;

  // Returns a function that makes `runMainUntil` check its condition. It may be called from any
  // thread, even after the scheduler is gone.
  virtual std::function<void()> waker() const = 0;

  // Runs the work once, on the main thread, when the descriptor is readable or at the end of the
  // file. The descriptor must stay open until then or until the wait is cancelled. Returns the
  // number of the wait.
  virtual std::uint64_t whenReadable(int descriptor, Work work) = 0;
  // Cancels the work of that wait, unless it is running. Does nothing if the wait is over.
  virtual void cancelWait(std::uint64_t wait) = 0;

  // Sets the handler for platform exceptions that leave a piece of work. It is called on the thread
  // that ran the work. Without a handler, the exception leaves the function that runs the main
  // queue; exceptions of work on background threads are rethrown on the main thread.
  virtual void setExceptionHandler(ExceptionHandler handler) = 0;
};

}  // namespace platform
