#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <map>
#include <memory>
#include <shared_mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Value.h"

namespace platform {

// A C++ function that is called by name. ClassBuilder makes them. Immutable. Threads: any.
class Operation {
 public:
  using Arguments = std::span<const Value>;
  // Calls the function that the operation holds. The object is null for an operation of a class.
  using Call = Value (*)(const Operation& operation, Object* object, Arguments arguments);

  template <class F>
  Operation(F called, Call call) noexcept : _call(call) {
    static_assert(sizeof called <= sizeof _function);
    std::memcpy(_function.data(), &called, sizeof called);
  }

  // The object must be of the class that has the operation.
  Value operator()(Object* object, Arguments arguments = {}) const {
    return _call(*this, object, arguments);
  }
  // The function, which must be the F that the operation was made with.
  template <class F>
  F function() const noexcept {
    F result;
    std::memcpy(&result, _function.data(), sizeof result);
    return result;
  }

 private:
  Call _call;
  std::array<std::byte, sizeof(void (Object::*)())> _function{};
};

// A class object: what is known of a class while the program runs. Made with ClassBuilder, kept
// by the process's ClassRegistry. Immutable after registration, so safe from any thread.
class Class {
 public:
  Class(Class&&) noexcept;
  ~Class();

  const std::string& name() const noexcept { return _name; }
  // Null for a root class.
  const Class* base() const noexcept { return _base; }
  // Whether this class or one above it bears the name.
  bool isSubclassOf(std::string_view className) const noexcept;

  // An object of the class, not yet initialised. Raises NSInvalidArgumentException for an
  // abstract class.
  std::shared_ptr<Object> allocate() const;
  // allocate() and init(): empty where init refuses.
  std::shared_ptr<Object> makeInstance() const;
  // allocate() and the initialiser of that selector: empty where it refuses.
  std::shared_ptr<Object> makeInstance(std::string_view initialiser,
                                       std::initializer_list<Value> arguments) const;
  template <class T>
  std::shared_ptr<T> allocateAs() const {
    return std::dynamic_pointer_cast<T>(allocate());
  }

  // The nearest class, this one or a base, that offers the operation or the key; else null.
  const Operation* operation(std::string_view selector) const;
  const Operation* classOperation(std::string_view selector) const;
  const Operation* getter(std::string_view key) const;
  // Takes one argument.
  const Operation* setter(std::string_view key) const;

  bool respondsToSelector(std::string_view selector) const {
    return classOperation(selector) != nullptr;
  }
  // Sends an operation to the class itself, through the class object, so that a subclass can
  // replace it. Raises NSInvalidArgumentException where there is none.
  Value perform(std::string_view selector, std::span<const Value> arguments = {}) const;
  Value perform(std::string_view selector, std::initializer_list<Value> arguments) const;

 private:
  template <class T>
  friend class ClassBuilder;
  friend class ClassRegistry;

  using Operations = std::map<std::string, Operation, std::less<>>;
  using Factory = std::shared_ptr<Object> (*)();

  Class(std::string_view name, std::string_view baseName, bool (*isInstance)(const Object&));
  void addOperation(std::string_view selector, const Operation& operation);
  void addClassOperation(std::string_view selector, const Operation& operation);
  void addGetter(std::string_view key, const Operation& getter);
  // The key can be written, and the operation "setKey:" does the same.
  void addSetter(std::string_view key, const Operation& setter);
  const Operation* nearest(Operations Class::*table, std::string_view name) const;

  std::string _name;
  std::string _baseName;
  const Class* _base = nullptr;
  Factory _factory = nullptr;          // null for an abstract class
  bool (*_isInstance)(const Object&);  // of the C++ type behind the class
  Operations _operations;
  Operations _classOperations;
  Operations _getters;
  Operations _setters;
};

// The classes of one process, by name. A class object lives as long as the registry.
// Threads: any.
class ClassRegistry {
 public:
  ClassRegistry();  // holds NSObject
  ~ClassRegistry();
  // Raises NSInvalidArgumentException where the name is taken or the base class is unknown.
  const Class& add(Class definition);
  // Null where no class bears the name: the run-time class lookup of the platform.
  const Class* find(std::string_view name) const;
  // Takes a class away, as when a neighbour is not installed. Nothing where the name is unknown.
  void remove(std::string_view name);
  std::vector<std::string> names() const;
  // The registered class that an object belongs to by its C++ type: the one of its className()
  // where that fits, else the most derived one.
  const Class& classOf(const Object& object) const;

 private:
  mutable std::shared_mutex _mutex;
  std::map<std::string, std::unique_ptr<Class>, std::less<>> _classes;
  std::vector<std::unique_ptr<Class>> _removed;
};

}  // namespace platform
