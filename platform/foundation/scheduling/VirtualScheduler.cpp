#include "platform/foundation/scheduling/VirtualScheduler.h"

#include <chrono>
#include <utility>
#include <vector>

#include "platform/foundation/objects/CurrentQueue.h"
#include "platform/foundation/objects/Process.h"

namespace platform {

namespace {

// How often a condition is asked again that a child process makes true.
constexpr std::int64_t pollNanoseconds = 1'000'000;

class FlagScope {
 public:
  explicit FlagScope(std::atomic<bool>& flag) : _flag(flag), _before(flag.exchange(true)) {}
  ~FlagScope() { _flag = _before; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  std::atomic<bool>& _flag;
  bool _before;
};

}  // namespace

// Shared with the serial queues, which may live longer than the scheduler.
struct VirtualScheduler::Background {
  std::mutex mutex;
  std::deque<Work> pending;
  bool closed = false;

  void push(Work work) {
    const std::lock_guard lock(mutex);
    if (!closed) pending.push_back(std::move(work));
  }
  Work take() {
    const std::lock_guard lock(mutex);
    if (pending.empty()) return {};
    Work work = std::move(pending.front());
    pending.pop_front();
    return work;
  }
  std::size_t size() {
    const std::lock_guard lock(mutex);
    return pending.size();
  }
  std::deque<Work> close() {
    const std::lock_guard lock(mutex);
    closed = true;
    return std::exchange(pending, {});
  }
};

class VirtualScheduler::Queue final : public SerialQueue {
 public:
  Queue(std::string label, std::shared_ptr<Background> background)
      : _label(std::move(label)), _background(std::move(background)) {}
  const std::string& label() const override { return _label; }
  void async(Work work) override { _background->push(workOfQueue(_label, std::move(work))); }

 private:
  const std::string _label;
  const std::shared_ptr<Background> _background;
};

VirtualScheduler::VirtualScheduler(Process* process)
    : _mainThread(std::this_thread::get_id()),
      _runner(process),
      _background(std::make_shared<Background>()) {}

VirtualScheduler::~VirtualScheduler() {
  std::optional<ProcessScope> scope;
  if (_runner.process() != nullptr) scope.emplace(*_runner.process());
  _background->close();
  _main.takeAll();
}

double VirtualScheduler::now() const {
  return secondsOfNanoseconds(_now);
}

bool VirtualScheduler::isMainThread() const {
  return std::this_thread::get_id() == _mainThread && !_inBackground;
}

void VirtualScheduler::asyncMain(Work work) {
  _main.push(std::move(work));
}

void VirtualScheduler::mainAfter(double seconds, Work work) {
  _main.pushAt(_now + nanosecondsOfSeconds(seconds), std::move(work));
}

void VirtualScheduler::asyncGlobal(Work work) {
  _background->push(std::move(work));
}

std::shared_ptr<SerialQueue> VirtualScheduler::makeSerialQueue(std::string label) {
  return std::make_shared<Queue>(std::move(label), _background);
}

std::uint64_t VirtualScheduler::whenReadable(int descriptor, Work work) {
  return _main.addWait(descriptor, std::move(work));
}

void VirtualScheduler::cancelWait(std::uint64_t wait) {
  _main.cancelWait(wait);
}

void VirtualScheduler::setExceptionHandler(ExceptionHandler handler) {
  _runner.setHandler(std::move(handler));
}

void VirtualScheduler::drainMain() {
  _main.makeDueReady(_now);
  while (Work work = _main.takeReady()) {
    _runner.run(std::move(work));
    _main.makeDueReady(_now);
  }
}

void VirtualScheduler::runMain() {
  _main.waitForDescriptors(0);
  drainMain();
}

bool VirtualScheduler::runMainUntil(const std::function<bool()>& condition, double timeoutSeconds) {
  const auto end = std::chrono::steady_clock::now() +
                   std::chrono::nanoseconds(nanosecondsOfSeconds(timeoutSeconds));
  while (true) {
    runMain();
    if (condition()) {
      // What became readable before the condition did is still delivered.
      runMain();
      return true;
    }
    if (std::chrono::steady_clock::now() >= end) return false;
    _main.waitForDescriptors(pollNanoseconds);
  }
}

void VirtualScheduler::advance(double seconds) {
  const std::int64_t end = _now + nanosecondsOfSeconds(seconds);
  runMain();
  for (auto next = _main.nextTime(); next && *next <= end; next = _main.nextTime()) {
    if (*next > _now) _now = *next;
    drainMain();
  }
  // Work that moved the clock itself may have gone further.
  if (end > _now) _now = end;
}

std::size_t VirtualScheduler::pendingBackground() const {
  return _background->size();
}

bool VirtualScheduler::runOnePieceOfBackground() {
  Work work = _background->take();
  if (!work) return false;
  const FlagScope scope(_inBackground);
  _runner.run(std::move(work));
  return true;
}

std::size_t VirtualScheduler::runBackground(std::size_t count) {
  std::size_t done = 0;
  while (done < count && runOnePieceOfBackground()) ++done;
  return done;
}

std::size_t VirtualScheduler::runAllBackground() {
  std::size_t done = 0;
  while (runOnePieceOfBackground()) ++done;
  return done;
}

}  // namespace platform
