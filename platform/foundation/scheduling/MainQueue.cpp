#include "platform/foundation/scheduling/MainQueue.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "platform/foundation/objects/Process.h"

namespace platform {

namespace {

constexpr double nanosecondsPerSecond = 1e9;
constexpr double longestSeconds = 100.0 * 365 * 24 * 3600;

}  // namespace

std::int64_t nanosecondsOfSeconds(double seconds) noexcept {
  if (!(seconds > 0)) return 0;
  return std::llround(std::min(seconds, longestSeconds) * nanosecondsPerSecond);
}

double secondsOfNanoseconds(std::int64_t nanoseconds) noexcept {
  return static_cast<double>(nanoseconds) / nanosecondsPerSecond;
}

void WorkRunner::setHandler(ExceptionHandler handler) {
  const std::lock_guard lock(_mutex);
  _handler.swap(handler);
}

ExceptionHandler WorkRunner::handler() {
  const std::lock_guard lock(_mutex);
  return _handler;
}

void WorkRunner::run(Work work) {
  std::optional<ProcessScope> scope;
  if (_process != nullptr) scope.emplace(*_process);
  // What the work holds may only go while the process is the current one.
  const Work running = std::move(work);
  try {
    running();
  } catch (const Exception& exception) {
    const ExceptionHandler handle = handler();
    if (!handle) throw;
    handle(exception);
  }
}

MainQueue::MainQueue() : _wakeDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

MainQueue::~MainQueue() {
  if (_wakeDescriptor >= 0) ::close(_wakeDescriptor);
}

void MainQueue::wake() {
  const std::uint64_t one = 1;
  // A counter that is full wakes as well.
  [[maybe_unused]] const ssize_t written = ::write(_wakeDescriptor, &one, sizeof(one));
}

void MainQueue::push(Work work) {
  {
    const std::lock_guard lock(_mutex);
    _ready.push_back(std::move(work));
  }
  wake();
}

void MainQueue::pushAt(std::int64_t time, Work work) {
  {
    const std::lock_guard lock(_mutex);
    _delayed.emplace(time, std::move(work));
  }
  wake();
}

std::uint64_t MainQueue::addWait(int descriptor, Work work) {
  std::uint64_t number = 0;
  {
    const std::lock_guard lock(_mutex);
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

void MainQueue::waitForDescriptors(std::int64_t nanoseconds) {
  std::vector<pollfd> polled{{_wakeDescriptor, POLLIN, 0}};
  std::vector<std::uint64_t> waits;
  {
    const std::lock_guard lock(_mutex);
    if (!_ready.empty()) nanoseconds = 0;
    for (const auto& [number, wait] : _waits) {
      polled.push_back({wait.descriptor, POLLIN, 0});
      waits.push_back(number);
    }
  }
  constexpr std::int64_t perSecond = 1'000'000'000;
  const timespec span{nanoseconds / perSecond, nanoseconds % perSecond};
  if (::ppoll(polled.data(), polled.size(), &span, nullptr) <= 0) return;
  if (polled.front().revents != 0) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = ::read(_wakeDescriptor, &count, sizeof(count));
  }
  std::vector<std::uint64_t> readable;
  for (std::size_t index = 0; index < waits.size(); ++index) {
    if (polled[index + 1].revents != 0) readable.push_back(waits[index]);
  }
  makeReadableReady(readable);
}

void MainQueue::makeReadableReady(const std::vector<std::uint64_t>& waits) {
  const std::lock_guard lock(_mutex);
  for (const std::uint64_t number : waits) {
    const auto found = _waits.find(number);
    if (found == _waits.end()) continue;
    _ready.push_back(std::move(found->second.work));
    _waits.erase(found);
  }
}

std::vector<Work> MainQueue::takeAll() {
  std::vector<Work> all;
  const std::lock_guard lock(_mutex);
  for (Work& work : _ready) all.push_back(std::move(work));
  for (auto& [time, work] : _delayed) all.push_back(std::move(work));
  for (auto& [number, wait] : _waits) all.push_back(std::move(wait.work));
  _ready.clear();
  _delayed.clear();
  _waits.clear();
  return all;
}

}  // namespace platform
