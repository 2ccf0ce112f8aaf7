#include "settings/application/ApplicationScheduler.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

namespace settings {

using platform::Work;

// When main work is due, and which descriptors are waited for.
struct ApplicationScheduler::Agenda {
  std::mutex mutex;
  std::multiset<double> times;
  std::set<std::uint64_t> waits;

  void add(double time) {
    const std::lock_guard lock(mutex);
    times.insert(time);
  }
  void forget(double time) {
    const std::lock_guard lock(mutex);
    if (const auto found = times.find(time); found != times.end()) times.erase(found);
  }
};

namespace {

// Descriptors are looked at that often; the scheduler inside wakes nobody for them.
constexpr double descriptorIntervalSeconds = 0.01;

// A long wait is told of that often.
constexpr double waitSliceSeconds = 0.05;

// A queue of a process that has ended: nothing runs any more.
class EndedQueue final : public platform::SerialQueue {
 public:
  explicit EndedQueue(std::string label) : _label(std::move(label)) {}
  const std::string& label() const override { return _label; }
  void async(Work /*work*/) override {}

 private:
  std::string _label;
};

}  // namespace

ApplicationScheduler::ApplicationScheduler(std::shared_ptr<platform::Scheduler> inner,
                                           std::function<void()> wake)
    : _inner(std::move(inner)), _agenda(std::make_shared<Agenda>()), _wake(std::move(wake)) {}

ApplicationScheduler::~ApplicationScheduler() = default;

void ApplicationScheduler::shutDown() {
  std::shared_ptr<platform::Scheduler> ending;
  {
    const std::lock_guard lock(_gate);
    if (_inner) _lastTime = _inner->now();
    ending = std::exchange(_inner, nullptr);
  }
  const std::lock_guard lock(_agenda->mutex);
  _agenda->times.clear();
  _agenda->waits.clear();
}

void ApplicationScheduler::setWaitHandler(std::function<void(double seconds)> handler) {
  _whileWaiting = std::move(handler);
}

std::optional<double> ApplicationScheduler::secondsToNext() const {
  const double time = now();
  const std::lock_guard lock(_agenda->mutex);
  std::optional<double> result;
  if (!_agenda->times.empty()) result = std::max(0.0, *_agenda->times.begin() - time);
  if (!_agenda->waits.empty()) {
    result = std::min(result.value_or(descriptorIntervalSeconds), descriptorIntervalSeconds);
  }
  return result;
}

double ApplicationScheduler::now() const {
  const std::shared_lock lock(_gate);
  return _inner ? _inner->now() : _lastTime.load();
}

bool ApplicationScheduler::isMainThread() const {
  const std::shared_lock lock(_gate);
  return !_inner || _inner->isMainThread();
}

void ApplicationScheduler::asyncMain(Work work) {
  mainAfter(0, std::move(work));
}

void ApplicationScheduler::mainAfter(double seconds, Work work) {
  {
    const std::shared_lock lock(_gate);
    if (!_inner) return;
    ++_queuedMainWork;
    const double time = _inner->now() + std::max(0.0, seconds);
    _agenda->add(time);
    Work counted = [agenda = _agenda, time, work = std::move(work)] {
      agenda->forget(time);
      work();
    };
    if (seconds > 0) {
      _inner->mainAfter(seconds, std::move(counted));
    } else {
      _inner->asyncMain(std::move(counted));
    }
  }
  if (_wake) _wake();
}

void ApplicationScheduler::asyncGlobal(Work work) {
  const std::shared_lock lock(_gate);
  if (_inner) _inner->asyncGlobal(std::move(work));
}

std::shared_ptr<platform::SerialQueue> ApplicationScheduler::makeSerialQueue(std::string label) {
  const std::shared_lock lock(_gate);
  if (_inner) return _inner->makeSerialQueue(std::move(label));
  return std::make_shared<EndedQueue>(std::move(label));
}

bool ApplicationScheduler::runMainUntil(const std::function<bool()>& condition,
                                        double timeoutSeconds) {
  // On the main thread, which alone takes the scheduler away: no gate is needed.
  if (!_inner) return condition();
  for (double waited = 0; waited < timeoutSeconds || waited == 0;) {
    const double span = std::min(waitSliceSeconds, timeoutSeconds - waited);
    if (_inner->runMainUntil(condition, span)) return true;
    waited += waitSliceSeconds;
    if (_whileWaiting) _whileWaiting(waited);
  }
  return false;
}

std::uint64_t ApplicationScheduler::whenReadable(int descriptor, Work work) {
  std::uint64_t wait = 0;
  {
    const std::shared_lock lock(_gate);
    if (!_inner) return 0;
    // Held while the wait begins, so that work which runs at once finds its own number.
    const std::lock_guard agendaLock(_agenda->mutex);
    const auto number = std::make_shared<std::uint64_t>(0);
    wait = _inner->whenReadable(descriptor, [agenda = _agenda, number, work = std::move(work)] {
      {
        const std::lock_guard waitsLock(agenda->mutex);
        agenda->waits.erase(*number);
      }
      work();
    });
    *number = wait;
    _agenda->waits.insert(wait);
  }
  if (_wake) _wake();
  return wait;
}

void ApplicationScheduler::cancelWait(std::uint64_t wait) {
  const std::shared_lock lock(_gate);
  if (_inner) _inner->cancelWait(wait);
  const std::lock_guard agendaLock(_agenda->mutex);
  _agenda->waits.erase(wait);
}

void ApplicationScheduler::setExceptionHandler(platform::ExceptionHandler handler) {
  const std::shared_lock lock(_gate);
  if (_inner) _inner->setExceptionHandler(std::move(handler));
}

}  // namespace settings
