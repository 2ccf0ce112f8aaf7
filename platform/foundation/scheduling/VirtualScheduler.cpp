#include "platform/foundation/scheduling/VirtualScheduler.h"

#include <deque>
#include <mutex>
#include <utility>

#include "platform/foundation/objects/CurrentQueue.h"

namespace platform {

namespace {

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

// Shared with the serial queues, which may outlive the scheduler.
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

VirtualScheduler::VirtualScheduler(Process* process, std::shared_ptr<MainQueue> outer)
    : QueueScheduler(process, std::move(outer)), _background(std::make_shared<Background>()) {}

VirtualScheduler::~VirtualScheduler() {
  shutDown();
}

double VirtualScheduler::now() const {
  return secondsOfNanoseconds(_now);
}

bool VirtualScheduler::isMainThread() const {
  return QueueScheduler::isMainThread() && !_inBackground;
}

void VirtualScheduler::asyncGlobal(Work work) {
  _background->push(std::move(work));
}

std::shared_ptr<SerialQueue> VirtualScheduler::makeSerialQueue(std::string label) {
  return std::make_shared<Queue>(std::move(label), _background);
}

void VirtualScheduler::dropBackground() {
  _background->close();
}

void VirtualScheduler::advance(double seconds) {
  const std::int64_t end = _now + nanosecondsOfSeconds(seconds);
  runMain();
  for (auto next = queue().nextTime(); next && *next <= end; next = queue().nextTime()) {
    if (*next > _now) _now = *next;
    runDue();
  }
  // Work that advanced the clock itself may have moved it further.
  if (end > _now) _now = end;
}

std::size_t VirtualScheduler::pendingMain() const {
  return queue().size();
}

std::size_t VirtualScheduler::pendingBackground() const {
  return _background->size();
}

bool VirtualScheduler::runOnePieceOfBackground() {
  Work work = _background->take();
  if (!work) return false;
  const FlagScope scope(_inBackground);
  run(std::move(work));
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
