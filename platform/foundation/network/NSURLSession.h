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
// Returns "running", "suspended", "canceling" or "completed".
std::string_view taskStateName(NSURLSessionTaskState state) noexcept;

// The result of a task. Each part may be absent.
struct URLAnswer {
  std::optional<Data> data;
  std::shared_ptr<NSURLResponse> response;
  std::shared_ptr<NSError> error;
};
using URLCompletionHandler = std::function<void(const URLAnswer&)>;

// One request, suspended at first. Nothing is sent over a network: a resumed task runs until
// NSURLSession::answer is called. Threads: any.
class NSURLSessionDataTask : public Object {
  PLATFORM_CLASS(NSURLSessionDataTask)

 public:
  // counts from 1 in its session
  std::uint64_t taskIdentifier() const noexcept { return _identifier; }
  // Never modified: the task keeps its own copy.
  const std::shared_ptr<NSMutableURLRequest>& originalRequest() const noexcept { return _request; }
  NSURLSessionTaskState state() const;
  // The queue that the task was made on, as returned by currentQueueLabel.
  const std::string& creationQueue() const noexcept { return _creationQueue; }
  // The queue that the completion handler ran on; none before it ran.
  std::optional<std::string> completionQueue() const;

  // Each function does nothing in a state that does not allow it.
  void resume();
  void suspend();
  // Completes the task with NSURLErrorCancelled.
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

  mutable std::mutex _mutex;  // guards the fields below
  NSURLSessionTaskState _state = NSURLSessionTaskState::suspended;
  bool _answered = false;
  URLCompletionHandler _handler;
  std::optional<std::string> _completionQueue;
};

// Makes tasks and keeps them, and what their handlers capture, as long as the process exists, so
// that a test or script can list and answer them. Threads: any.
class NSURLSession : public Object {
  PLATFORM_CLASS(NSURLSession)

 public:
  using Task = std::shared_ptr<NSURLSessionDataTask>;

  // One per process.
  static std::shared_ptr<NSURLSession> sharedSession();

  // Makes a suspended task for a copy of the request. When the task is answered or cancelled, the
  // handler runs once on the session's callback queue and is then released. It may be empty.
  Task dataTaskWithRequest(const NSMutableURLRequest& request, URLCompletionHandler handler);

  // Returns the tasks in creation order.
  std::vector<Task> tasks() const;
  // Answers a task as a server would; a suspended task is started first. The handler is queued, not
  // called. Returns false if the task does not exist or already has an answer.
  bool answer(std::uint64_t taskIdentifier, URLAnswer answer);

  static constexpr const char* callbackQueueLabel = "URLSession.callback-queue";

 private:
  const std::shared_ptr<SerialQueue>& callbackQueue();  // caller must hold _mutex

  mutable std::mutex _mutex;
  std::shared_ptr<SerialQueue> _callbackQueue;
  std::vector<Task> _tasks;
};

}  // namespace platform
