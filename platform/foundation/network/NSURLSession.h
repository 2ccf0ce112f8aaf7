#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/network/NSHTTPURLResponse.h"
#include "platform/foundation/network/NSURLRequest.h"
#include "platform/foundation/objects/NSError.h"
#include "platform/foundation/scheduling/Scheduler.h"
#include "platform/foundation/values/Collections.h"

namespace platform {

enum class NSURLSessionTaskState : std::uint8_t {
  running = 0,
  suspended = 1,
  canceling = 2,
  completed = 3
};
// "running", "suspended", "canceling", "completed"
std::string_view taskStateName(NSURLSessionTaskState state) noexcept;

// What comes back for a task; each part may be absent.
struct URLAnswer {
  std::optional<Data> data;
  std::shared_ptr<NSURLResponse> response;
  std::shared_ptr<NSError> error;
};
using URLCompletionHandler = std::function<void(const URLAnswer&)>;

// A request that was made. It starts suspended. Nothing goes over a network from here: a task that
// was resumed runs until somebody hands it an answer (NSURLSession::answer). Threads: any.
class NSURLSessionDataTask : public Object {
  PLATFORM_CLASS(NSURLSessionDataTask)

 public:
  std::uint64_t taskIdentifier() const noexcept { return _identifier; }  // from 1 in its session
  // Nobody changes it; the one who made the task keeps another copy.
  const std::shared_ptr<NSMutableURLRequest>& originalRequest() const noexcept { return _request; }
  NSURLSessionTaskState state() const;
  // The label of the queue that the task was made on, as currentQueueLabel gives it.
  const std::string& creationQueue() const noexcept { return _creationQueue; }
  // The same of the queue that the completion handler ran on; none before it has run.
  std::optional<std::string> completionQueue() const;

  // Each does nothing where the task is in no state for it.
  void resume();
  void suspend();
  // Completes the task with the error NSURLErrorCancelled.
  void cancel();

 private:
  friend class NSURLSession;
  bool beginAnswer(NSURLSessionTaskState meanwhile);
  bool answer(URLAnswer answer, NSURLSessionTaskState meanwhile);
  void complete(const URLAnswer& answer);

  std::uint64_t _identifier = 0;
  std::shared_ptr<NSMutableURLRequest> _request;
  std::string _creationQueue;
  std::shared_ptr<SerialQueue> _callbackQueue;

  mutable std::mutex _mutex;  // guards what follows
  NSURLSessionTaskState _state = NSURLSessionTaskState::suspended;
  bool _answered = false;
  URLCompletionHandler _handler;
  std::optional<std::string> _completionQueue;
};

// Makes tasks and keeps them, with what their handlers hold, for the life of the process, so that a
// test or a script can list them and hand one an answer. Threads: any.
class NSURLSession : public Object {
  PLATFORM_CLASS(NSURLSession)

 public:
  using Task = std::shared_ptr<NSURLSessionDataTask>;

  // One per process.
  static std::shared_ptr<NSURLSession> sharedSession();

  // A suspended task for a copy of the request. The handler runs once, on the session's callback
  // queue, when the task was answered or cancelled, and goes after that; it may be empty.
  Task dataTaskWithRequest(const NSMutableURLRequest& request, URLCompletionHandler handler);

  // The tasks in the order in which they were made.
  std::vector<Task> tasks() const;
  // Hands a task its answer, as a server would: a suspended task counts as started by it. The
  // handler is queued, not run. False where there is no such task or it has an answer already.
  bool answer(std::uint64_t taskIdentifier, URLAnswer answer);

  static constexpr const char* callbackQueueLabel = "URLSession.callback-queue";

 private:
  const std::shared_ptr<SerialQueue>& callbackQueue();  // with _mutex held

  mutable std::mutex _mutex;
  std::shared_ptr<SerialQueue> _callbackQueue;
  std::vector<Task> _tasks;
};

}  // namespace platform
