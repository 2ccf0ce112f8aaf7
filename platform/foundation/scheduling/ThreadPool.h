#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

// Threads that run work, and serial queues that share them. Threads: any; `stop` and the
// destructor, which calls it, not on a thread of the pool.
class ThreadPool : public std::enable_shared_from_this<ThreadPool> {
 public:
  // `run` runs one piece of work on the calling thread. It must not throw.
  ThreadPool(std::size_t threads, std::function<void(Work)> run);
  ~ThreadPool();
  ThreadPool(const ThreadPool&) = delete;
  ThreadPool& operator=(const ThreadPool&) = delete;

  // Does nothing after `stop`.
  void push(Work work);
  // Requires a pool owned by a shared_ptr. A queue may outlive its pool, but then ignores work.
  std::shared_ptr<SerialQueue> makeSerialQueue(std::string label);
  // Waits for running work and drops the rest.
  void stop();

 private:
  class Queue;
  void work(const std::stop_token& stop);

  const std::function<void(Work)> _run;
  std::mutex _mutex;
  std::condition_variable_any _changed;
  std::deque<Work> _pending;
  bool _stopped = false;
  std::vector<std::weak_ptr<Queue>> _queues;
  std::vector<std::jthread> _threads;
};

}  // namespace platform
