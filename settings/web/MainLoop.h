#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace settings {

// The run loop of the main thread while pages are served: sleeps until another thread has work for
// it, something falls due, or it is told to stop.
//
// Threads: `run` on the main thread, all else from any.
class MainLoop {
 public:
  using Work = std::function<void()>;
  // Does what is due; gives the seconds until the next piece of work, if one waits.
  using Step = std::function<std::optional<double>()>;

  // Queues work for the main thread. After `stop` it is dropped.
  void post(Work work);
  // Lets the step run once more.
  void wake();
  // Ends `run` after the work in hand.
  void stop();

  // Runs the queued work in its order, then the step, over and over until `stop`.
  void run(const Step& step);
  // In the middle of the work in hand, on the same thread: runs what was queued meanwhile. False
  // after `stop`.
  bool turn();

 private:
  std::deque<Work> takeWork();
  void waitUntilDue(std::optional<double> seconds);

  std::mutex _mutex;
  std::condition_variable _changed;
  std::deque<Work> _work;
  bool _woken = false;
  bool _stopped = false;
};

}  // namespace settings
