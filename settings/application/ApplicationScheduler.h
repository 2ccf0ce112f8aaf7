#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <string>

#include "platform/foundation/scheduling/Scheduler.h"

namespace settings {

// The scheduler of one process of the application: another scheduler, with a word to the
// application whenever work for the main thread was queued, and an end: when the process is
// dropped, what still waits is dropped too and what comes later goes nowhere.
//
// Threads: as of the scheduler inside; `shutDown` and `secondsToNext` on the main thread.
class ApplicationScheduler final : public platform::Scheduler {
 public:
  ApplicationScheduler(std::shared_ptr<platform::Scheduler> inner, std::function<void()> wake);
  ~ApplicationScheduler() override;

  // Lets go of the scheduler inside and of all work that waits in it.
  void shutDown();
  // Called over and over while the main thread waits for a program, with the seconds that it has
  // waited.
  void setWaitHandler(std::function<void(double seconds)> handler);
  // Seconds until the next piece of main work is due, as far as it came through here.
  std::optional<double> secondsToNext() const;
  // Pieces of main work that were ever queued through here. Threads: any.
  std::uint64_t queuedMainWork() const noexcept { return _queuedMainWork; }

  double now() const override;
  bool isMainThread() const override;
  void asyncMain(platform::Work work) override;
  void mainAfter(double seconds, platform::Work work) override;
  void asyncGlobal(platform::Work work) override;
  std::shared_ptr<platform::SerialQueue> makeSerialQueue(std::string label) override;
  bool runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) override;
  std::uint64_t whenReadable(int descriptor, platform::Work work) override;
  void cancelWait(std::uint64_t wait) override;
  void setExceptionHandler(platform::ExceptionHandler handler) override;

 private:
  struct Agenda;

  // Taken by whoever uses the scheduler inside, whole by `shutDown`: so the scheduler goes on the
  // main thread and never while another thread is in it.
  mutable std::shared_mutex _gate;
  std::shared_ptr<platform::Scheduler> _inner;
  std::atomic<double> _lastTime{0};  // of the clock, once the scheduler is gone
  std::shared_ptr<Agenda> _agenda;
  std::atomic<std::uint64_t> _queuedMainWork{0};
  std::function<void()> _wake;
  std::function<void(double)> _whileWaiting;
};

}  // namespace settings
