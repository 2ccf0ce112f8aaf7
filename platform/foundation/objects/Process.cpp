#include "platform/foundation/objects/Process.h"

#include <utility>

#include "platform/foundation/values/Exception.h"

namespace platform {

namespace {

thread_local Process* currentProcess = nullptr;

}  // namespace

Process::Process() = default;

// Users of classes, services or the process are destroyed first: threads and queued work, then
// lazily created state, then services, and classes last.
Process::~Process() {
  const ProcessScope scope(*this);
  setRunLoop(nullptr, _runLoopType);
  provideErased(_runLoopType, nullptr);
  std::exchange(_once, {}).clear();
  std::exchange(_services, {}).clear();
}

Process& Process::current() {
  if (currentProcess == nullptr) {
    throw Exception(std::string(internalInconsistencyException),
                    "this thread has no current process (create a ProcessScope)");
  }
  return *currentProcess;
}

Process* Process::currentOrNull() noexcept {
  return currentProcess;
}

void Process::provideErased(std::type_index type, Erased service) {
  // Swap, so that the earlier service is destroyed after the lock is released.
  const std::lock_guard lock(_mutex);
  _services[type].swap(service);
}

void Process::setRunLoop(std::shared_ptr<RunLoop> runLoop, std::type_index type) {
  const std::lock_guard lock(_mutex);
  _runLoop.swap(runLoop);
  _runLoopType = type;
}

std::shared_ptr<RunLoop> Process::runLoopOrNull() const {
  const std::lock_guard lock(_mutex);
  return _runLoop;
}

Process::Erased Process::findErased(std::type_index type) const {
  const std::lock_guard lock(_mutex);
  const auto found = _services.find(type);
  return found == _services.end() ? nullptr : found->second;
}

void* Process::serviceErased(std::type_index type, const char* name) const {
  const Erased service = findErased(type);
  if (!service) {
    throw Exception(std::string(internalInconsistencyException),
                    std::string("no service of type ") + name + " was provided to the process");
  }
  return service.get();
}

void* Process::onceErased(std::type_index type, Erased (*factory)()) {
  const std::lock_guard lock(_mutex);
  if (const auto found = _once.find(type); found != _once.end()) return found->second.get();
  Erased made = factory();
  return _once.emplace(type, std::move(made)).first->second.get();
}

ProcessScope::ProcessScope(Process& process) noexcept
    : _previous(std::exchange(currentProcess, &process)) {}

ProcessScope::~ProcessScope() {
  currentProcess = _previous;
}

const Class* NSClassFromString(std::string_view name) {
  return Process::current().classes().find(name);
}

}  // namespace platform
