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

// What lives once per process: the registered classes, the services (files, scheduler, programs,
// log, device traits, ...) and the state that code makes once and keeps. A test or a run of the
// Settings application has one of its own; there is no other process-wide state.
//
// Threads: `provide` before others look up; everything else from any thread. Threads that the
// platform starts for a process have it as their current one.
class Process {
 public:
  Process();
  // First the run loop goes, with its threads and the work that waits, then what was made once,
  // then the other services.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // The process that the calling thread works for. There must be one (see ProcessScope).
  static Process& current();
  // As current, but null where the thread works for none.
  static Process* currentOrNull() noexcept;

  ClassRegistry& classes() noexcept { return _classes; }

  // Gives the process its service of interface T, in place of an earlier one.
  template <class T>
  void provide(std::shared_ptr<T> service) {
    if constexpr (std::derived_from<T, RunLoop>) setRunLoop(service, typeid(T));
    provideErased(typeid(T), std::move(service));
  }
  // The service of interface T. Raises NSInternalInconsistencyException where none was provided.
  template <class T>
  T& service() const {
    return *static_cast<T*>(serviceErased(typeid(T), typeid(T).name()));
  }
  // As service, but null where none was provided.
  template <class T>
  std::shared_ptr<T> serviceOrNull() const {
    return std::static_pointer_cast<T>(findErased(typeid(T)));
  }

  // The service that is a run loop; null where none was provided.
  std::shared_ptr<RunLoop> runLoopOrNull() const;

  // The process's one T, made on the first call (which may come from any thread) and kept. Made
  // under a lock: the constructor must not wait for another thread.
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
  std::type_index _runLoopType = typeid(RunLoop);  // the interface that it was provided as
  std::unordered_map<std::type_index, Erased> _once;
};

// Makes a process the current one of this thread for as long as the scope lives.
class ProcessScope {
 public:
  explicit ProcessScope(Process& process) noexcept;
  ~ProcessScope();
  ProcessScope(const ProcessScope&) = delete;
  ProcessScope& operator=(const ProcessScope&) = delete;

 private:
  Process* _previous;
};

// The class of that name in the current process; null where there is none.
const Class* NSClassFromString(std::string_view name);

// A new object of the class of that name in the current process, initialised by init(). Empty if
// there is no such class, if init() refuses, or if the object is not a T.
template <std::derived_from<Object> T>
std::shared_ptr<T> makeNamed(std::string_view className) {
  const Class* found = NSClassFromString(className);
  return found ? std::dynamic_pointer_cast<T>(found->makeInstance()) : nullptr;
}
// The same, with the initialiser of that selector.
template <std::derived_from<Object> T>
std::shared_ptr<T> makeNamed(std::string_view className, std::string_view initialiser,
                             std::initializer_list<Value> arguments) {
  const Class* found = NSClassFromString(className);
  return found ? std::dynamic_pointer_cast<T>(found->makeInstance(initialiser, arguments))
               : nullptr;
}

}  // namespace platform
