#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace settings {

// Does work that would keep the main thread from the pages, one piece after the other on a thread
// of its own.
//
// Threads: any.
class WorkerThread {
 public:
  using Work = std::function<void()>;

  WorkerThread();
  // Waits for the work in hand; what waits behind it is dropped.
  ~WorkerThread();
  WorkerThread(const WorkerThread&) = delete;
  WorkerThread& operator=(const WorkerThread&) = delete;

  // The work must raise nothing.
  void post(Work work);

 private:
  void run();

  std::mutex _mutex;
  std::condition_variable _changed;
  std::deque<Work> _work;
  bool _stopped = false;
  std::thread _thread;
};

}  // namespace settings
