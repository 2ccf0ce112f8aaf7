#include "platform/foundation/scheduling/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr double longestSeconds = 100.0 * 365 * 24 * 3600;

timespec timeUntil(std::int64_t deadline) {
  constexpr std::int64_t perSecond = 1'000'000'000;
  const std::int64_t left = std::max<std::int64_t>(deadline - machineNanoseconds(), 0);
  return {left / perSecond, left % perSecond};
}

}  // namespace

std::int64_t nanosecondsOfSeconds(double seconds) noexcept {
  if (!(seconds > 0)) return 0;
  return std::llround(std::min(seconds, longestSeconds) * nanosecondsPerSecond);
}

double secondsOfNanoseconds(std::int64_t nanoseconds) noexcept {
  return static_cast<double>(nanoseconds) / nanosecondsPerSecond;
}

std::int64_t machineNanoseconds() noexcept {
  return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The descriptors that a thread polls: its wake-up descriptor, then one for each wait.
struct MainQueue::Sleep {
  std::vector<pollfd> polled;
  std::vector<std::pair<MainQueue*, std::uint64_t>> waits;
  bool hasReady = false;
};

MainQueue::MainQueue(std::shared_ptr<MainQueue> outer)
    : _outer(std::move(outer)),
      _wakeDescriptor(_outer ? -1 : ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

MainQueue::~MainQueue() {
  if (_wakeDescriptor >= 0) ::close(_wakeDescriptor);
}

void MainQueue::wake() {
  const std::uint64_t one = 1;
  // A full counter wakes the thread too.
  [[maybe_unused]] const ssize_t written = ::write(wakeDescriptor(), &one, sizeof(one));
}

void MainQueue::push(Work work) {
  {
    const std::lock_guard lock(_mutex);
    if (_closed) return;
    _ready.push_back(std::move(work));
  }
  wake();
}

void MainQueue::pushAt(std::int64_t time, Work work) {
  {
    const std::lock_guard lock(_mutex);
    if (_closed) return;
    _delayed.emplace(time, std::move(work));
  }
  wake();
}

std::uint64_t MainQueue::addWait(int descriptor, Work work) {
  std::uint64_t number = 0;
  {
    const std::lock_guard lock(_mutex);
    if (_closed) return 0;
    number = ++_lastWait;
    _waits.emplace(number, Wait{descriptor, std::move(work)});
  }
  wake();
  return number;
}

void MainQueue::cancelWait(std::uint64_t wait) {
  Work gone;
  const std::lock_guard lock(_mutex);
  const auto found = _waits.find(wait);
  if (found == _waits.end()) return;
  gone = std::move(found->second.work);
  _waits.erase(found);
}

void MainQueue::close() {
  // Destroyed after the lock is released, because destructors may call this queue.
  std::deque<Work> ready;
  std::multimap<std::int64_t, Work> delayed;
  std::map<std::uint64_t, Wait> waits;
  const std::lock_guard lock(_mutex);
  _closed = true;
  ready.swap(_ready);
  delayed.swap(_delayed);
  waits.swap(_waits);
}

std::size_t MainQueue::size() const {
  const std::lock_guard lock(_mutex);
  return _ready.size() + _delayed.size();
}

Work MainQueue::takeReady() {
  const std::lock_guard lock(_mutex);
  if (_ready.empty()) return {};
  Work work = std::move(_ready.front());
  _ready.pop_front();
  return work;
}

void MainQueue::makeDueReady(std::int64_t now) {
  const std::lock_guard lock(_mutex);
  while (!_delayed.empty() && _delayed.begin()->first <= now) {
    _ready.push_back(std::move(_delayed.begin()->second));
    _delayed.erase(_delayed.begin());
  }
}

std::optional<std::int64_t> MainQueue::nextTime() const {
  const std::lock_guard lock(_mutex);
  if (_delayed.empty()) return std::nullopt;
  return _delayed.begin()->first;
}

void MainQueue::sleep(std::int64_t deadline) {
  Sleep sleep;
  sleep.polled.push_back({wakeDescriptor(), POLLIN, 0});
  if (_outer) _outer->takePart(sleep);
  takePart(sleep);
  const timespec span = timeUntil(sleep.hasReady ? 0 : deadline);
  const timespec* const atMost = sleep.hasReady || deadline != never ? &span : nullptr;
  if (::ppoll(sleep.polled.data(), sleep.polled.size(), atMost, nullptr) <= 0) return;
  if (sleep.polled.front().revents != 0) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = ::read(wakeDescriptor(), &count, sizeof(count));
  }
  for (std::size_t index = 0; index < sleep.waits.size(); ++index) {
    const auto& [queue, wait] = sleep.waits[index];
    if (sleep.polled[index + 1].revents != 0) queue->makeReadableReady(wait);
  }
}

void MainQueue::takePart(Sleep& sleep) {
  const std::lock_guard lock(_mutex);
  sleep.hasReady = sleep.hasReady || !_ready.empty();
  for (const auto& [number, wait] : _waits) {
    sleep.polled.push_back({wait.descriptor, POLLIN, 0});
    sleep.waits.emplace_back(this, number);
  }
}

void MainQueue::makeReadableReady(std::uint64_t wait) {
  const std::lock_guard lock(_mutex);
  const auto found = _waits.find(wait);
  if (found == _waits.end()) return;
  _ready.push_back(std::move(found->second.work));
  _waits.erase(found);
}

void MainQueue::runReady() {
  while (const Work work = takeReady()) work();
}

bool MainQueue::runUntil(const std::function<bool()>& condition, std::int64_t deadline) {
  while (true) {
    runReady();
    if (condition()) return true;
    if (machineNanoseconds() >= deadline) return false;
    sleep(deadline);
  }
}

}  // namespace platform
