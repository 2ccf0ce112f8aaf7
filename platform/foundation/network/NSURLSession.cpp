#include "platform/foundation/network/NSURLSession.h"

#include <utility>

#include "platform/foundation/objects/CurrentQueue.h"
#include "platform/foundation/objects/Process.h"

namespace platform {
namespace {

struct SharedSession {
  std::shared_ptr<NSURLSession> session = make<NSURLSession>();
};

}  // namespace

std::string_view taskStateName(NSURLSessionTaskState state) noexcept {
  switch (state) {
    case NSURLSessionTaskState::running:
      return "running";
    case NSURLSessionTaskState::suspended:
      return "suspended";
    case NSURLSessionTaskState::canceling:
      return "canceling";
    case NSURLSessionTaskState::completed:
      return "completed";
  }
  return "completed";
}

NSURLSessionTaskState NSURLSessionDataTask::state() const {
  const std::lock_guard lock(_mutex);
  return _state;
}

std::optional<std::string> NSURLSessionDataTask::completionQueue() const {
  const std::lock_guard lock(_mutex);
  return _completionQueue;
}

void NSURLSessionDataTask::resume() {
  const std::lock_guard lock(_mutex);
  if (_state == NSURLSessionTaskState::suspended) _state = NSURLSessionTaskState::running;
}

void NSURLSessionDataTask::suspend() {
  const std::lock_guard lock(_mutex);
  if (_state == NSURLSessionTaskState::running && !_answered) {
    _state = NSURLSessionTaskState::suspended;
  }
}

void NSURLSessionDataTask::cancel() {
  answer({{}, {}, NSError::errorWithDomain(NSURLErrorDomain, NSURLErrorCancelled, "cancelled")},
         NSURLSessionTaskState::canceling);
}

bool NSURLSessionDataTask::beginAnswer(NSURLSessionTaskState meanwhile) {
  const std::lock_guard lock(_mutex);
  if (std::exchange(_answered, true)) return false;
  _state = meanwhile;
  return true;
}

bool NSURLSessionDataTask::answer(URLAnswer answer, NSURLSessionTaskState meanwhile) {
  if (!beginAnswer(meanwhile)) return false;
  _callbackQueue->async([task = self<NSURLSessionDataTask>(), answer = std::move(answer)] {
    task->complete(answer);
  });
  return true;
}

void NSURLSessionDataTask::complete(const URLAnswer& answer) {
  URLCompletionHandler handler;
  {
    const std::lock_guard lock(_mutex);
    _state = NSURLSessionTaskState::completed;
    _completionQueue = currentQueueLabel();
    handler = std::exchange(_handler, nullptr);
  }
  if (handler) handler(answer);
}

std::shared_ptr<NSURLSession> NSURLSession::sharedSession() {
  return Process::current().once<SharedSession>().session;
}

const std::shared_ptr<SerialQueue>& NSURLSession::callbackQueue() {
  if (!_callbackQueue) {
    _callbackQueue = Process::current().service<Scheduler>().makeSerialQueue(callbackQueueLabel);
  }
  return _callbackQueue;
}

NSURLSession::Task NSURLSession::dataTaskWithRequest(const NSMutableURLRequest& request,
                                                     URLCompletionHandler handler) {
  auto task = make<NSURLSessionDataTask>();
  task->_request = request.copy();
  task->_creationQueue = currentQueueLabel();
  task->_handler = std::move(handler);
  const std::lock_guard lock(_mutex);
  task->_identifier = _tasks.size() + 1;
  task->_callbackQueue = callbackQueue();
  _tasks.push_back(task);
  return task;
}

std::vector<NSURLSession::Task> NSURLSession::tasks() const {
  const std::lock_guard lock(_mutex);
  return _tasks;
}

bool NSURLSession::answer(std::uint64_t taskIdentifier, URLAnswer answer) {
  Task task;
  {
    const std::lock_guard lock(_mutex);
    if (taskIdentifier == 0 || taskIdentifier > _tasks.size()) return false;
    task = _tasks[taskIdentifier - 1];
  }
  return task->answer(std::move(answer), NSURLSessionTaskState::running);
}

}  // namespace platform
