#include "platform/foundation/objects/CurrentQueue.h"

#include <utility>

#include "platform/foundation/objects/Process.h"

namespace platform {
namespace {

thread_local const std::string* currentLabel = nullptr;

class LabelScope {
 public:
  explicit LabelScope(const std::string& label) noexcept
      : _previous(std::exchange(currentLabel, &label)) {}
  ~LabelScope() { currentLabel = _previous; }
  LabelScope(const LabelScope&) = delete;
  LabelScope& operator=(const LabelScope&) = delete;

 private:
  const std::string* _previous;
};

}  // namespace

std::string currentQueueLabel() {
  if (currentLabel != nullptr) return *currentLabel;
  const auto runLoop = Process::current().runLoopOrNull();
  return runLoop && runLoop->isMainThread() ? "main" : "global";
}

Work workOfQueue(std::string label, Work work) {
  return [label = std::move(label), work = std::move(work)] {
    const LabelScope scope(label);
    work();
  };
}

}  // namespace platform
