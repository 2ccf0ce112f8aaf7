#pragma once

#include <concepts>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string_view>
#include <typeindex>
#include <unordered_map>

#include "platform/foundation/objects/Class.h"
#include "platform/foundation/objects/RunLoop.h"

namespace platform {

// Owns everything that exists once per process: the registered classes, the services (files,
// scheduler, programs, log, device traits, ...) and lazily created state. Each test and each run of
// the Settings application has its own; there is no other global state.
//
// Threads: call `provide` before other threads look services up; everything else from any thread.
// Threads that the platform starts for a process have it as their current process.
class Process {
 public:
  Process();
  // Destroys the run loop first, with its threads and queued work, then the lazily created state,
  // then the other services.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // Returns the process that the calling thread works for, which must exist (see ProcessScope).
  static Process& current();
  // Like current, but returns null if there is none.
  static Process* currentOrNull() noexcept;

  ClassRegistry& classes() noexcept { return _classes; }

  // Sets the service with interface T and replaces an earlier one.
  template <class T>
  void provide(std::shared_ptr<T> service) {
    if constexpr (std::derived_from<T, RunLoop>) setRunLoop(service, typeid(T));
    provideErased(typeid(T), std::move(service));
  }
  // Returns the service with interface T. Raises NSInternalInconsistencyException if none was
  // provided.
  template <class T>
  T& service() const {
    return *static_cast<T*>(serviceErased(typeid(T), typeid(T).name()));
  }
  // Like service, but returns null if none was provided.
  template <class T>
  std::shared_ptr<T> serviceOrNull() const {
    return std::static_pointer_cast<T>(findErased(typeid(T)));
  }

  // Returns the service that is a run loop; null if none was provided.
  std::shared_ptr<RunLoop> runLoopOrNull() const;

  // Returns the process's only T. The first call, from any thread, makes it under a lock, so the
  // constructor must not wait for another thread.
  template <class T>
  T& once() {
    return *static_cast<T*>(
        onceErased(typeid(T), []() -> Erased { return std::make_shared<T>(); }));
  }

 private:
  using Erased = std::shared_ptr<void>;
  void setRunLoop(std::shared_ptr<RunLoop> runLoop, std::type_index type);
  void provideErased(std::type_index type, Erased service);
  void* serviceErased(std::type_index type, const char* name) const;
  Erased findErased(std::type_index type) const;
  void* onceErased(std::type_index type, Erased (*factory)());

  mutable std::recursive_mutex _mutex;
  ClassRegistry _classes;
  std::unordered_map<std::type_index, Erased> _services;
  std::shared_ptr<RunLoop> _runLoop;
  std::type_index _runLoopType = typeid(RunLoop);  // the interface it was provided as
  std::unordered_map<std::type_index, Erased> _once;
};

// Makes a process the current one of this thread until the end of the scope.
class ProcessScope {
 public:
  explicit ProcessScope(Process& process) noexcept;
  ~ProcessScope();
  ProcessScope(const ProcessScope&) = delete;
  ProcessScope& operator=(const ProcessScope&) = delete;

 private:
  Process* _previous;
};

// Returns the class with that name in the current process; null if there is none.
const Class* NSClassFromString(std::string_view name);

// Makes an object of the class with that name in the current process and calls init(). Returns an
// empty pointer if there is no such class, init() fails, or the object is not a T.
template <std::derived_from<Object> T>
std::shared_ptr<T> makeNamed(std::string_view className) {
  const Class* found = NSClassFromString(className);
  return found ? std::dynamic_pointer_cast<T>(found->makeInstance()) : nullptr;
}
// Like above, with the initialiser of that selector.
template <std::derived_from<Object> T>
std::shared_ptr<T> makeNamed(std::string_view className, std::string_view initialiser,
                             std::initializer_list<Value> arguments) {
  const Class* found = NSClassFromString(className);
  return found ? std::dynamic_pointer_cast<T>(found->makeInstance(initialiser, arguments))
               : nullptr;
}

}  // namespace platform
