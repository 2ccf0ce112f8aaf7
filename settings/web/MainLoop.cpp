#include "settings/web/MainLoop.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace settings {

void MainLoop::post(Work work) {
  {
    const std::lock_guard lock(_mutex);
    if (_stopped) return;
    _work.push_back(std::move(work));
  }
  _changed.notify_one();
}

void MainLoop::wake() {
  {
    const std::lock_guard lock(_mutex);
    _woken = true;
  }
  _changed.notify_one();
}

void MainLoop::stop() {
  {
    const std::lock_guard lock(_mutex);
    _stopped = true;
    _work.clear();
  }
  _changed.notify_one();
}

std::deque<MainLoop::Work> MainLoop::takeWork() {
  const std::lock_guard lock(_mutex);
  _woken = false;
  return std::exchange(_work, {});
}

void MainLoop::run(const Step& step) {
  const auto isStopped = [this] {
    const std::lock_guard lock(_mutex);
    return _stopped;
  };
  while (!isStopped()) {
    for (const Work& work : takeWork()) {
      if (isStopped()) return;
      work();
    }
    waitUntilDue(step());
  }
}

bool MainLoop::turn() {
  for (const Work& work : takeWork()) work();
  const std::lock_guard lock(_mutex);
  return !_stopped;
}

void MainLoop::waitUntilDue(std::optional<double> seconds) {
  // A bound that no clock overflows at; the loop only goes round once more.
  constexpr double longestSleepSeconds = 3600;
  const std::chrono::duration<double> sleep(
      std::clamp(seconds.value_or(longestSleepSeconds), 0.0, longestSleepSeconds));
  std::unique_lock lock(_mutex);
  _changed.wait_until(lock,
                      std::chrono::steady_clock::now() +
                          std::chrono::duration_cast<std::chrono::steady_clock::duration>(sleep),
                      [this] { return _stopped || _woken || !_work.empty(); });
}

}  // namespace settings
