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

// A C++ function that is called by name. Made by ClassBuilder. Immutable. Threads: any.
class Operation {
 public:
  using Arguments = std::span<const Value>;
  // Calls the function in the operation. The object is null for a class operation.
  using Call = Value (*)(const Operation& operation, Object* object, Arguments arguments);

  template <class F>
  Operation(F called, Call call) noexcept : _call(call) {
    static_assert(sizeof called <= sizeof _function);
    std::memcpy(_function.data(), &called, sizeof called);
  }

  // The object must be an instance of the class that has the operation.
  Value operator()(Object* object, Arguments arguments = {}) const {
    return _call(*this, object, arguments);
  }
  // Returns the function. F must be the type that the operation was made with.
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

// A class object: the run-time description of a class. Made by ClassBuilder, owned by the process's
// ClassRegistry. Immutable after registration. Threads: any.
class Class {
 public:
  Class(Class&&) noexcept;
  ~Class();

  const std::string& name() const noexcept { return _name; }
  // Null for a root class.
  const Class* base() const noexcept { return _base; }
  // Returns whether this class or one of its bases has the name.
  bool isSubclassOf(std::string_view className) const noexcept;

  // Returns an uninitialised object of the class. Raises NSInvalidArgumentException for an abstract
  // class.
  std::shared_ptr<Object> allocate() const;
  // Calls allocate() and init(). Empty if init fails.
  std::shared_ptr<Object> makeInstance() const;
  // Calls allocate() and the initialiser with that selector. Empty if it fails.
  std::shared_ptr<Object> makeInstance(std::string_view initialiser,
                                       std::initializer_list<Value> arguments) const;
  template <class T>
  std::shared_ptr<T> allocateAs() const {
    return std::dynamic_pointer_cast<T>(allocate());
  }

  // Search this class, then its bases. Return null if the operation or key is not found.
  const Operation* operation(std::string_view selector) const;
  const Operation* classOperation(std::string_view selector) const;
  const Operation* getter(std::string_view key) const;
  // The operation takes one argument.
  const Operation* setter(std::string_view key) const;

  bool respondsToSelector(std::string_view selector) const {
    return classOperation(selector) != nullptr;
  }
  // Sends an operation to the class object, so that a subclass can override it. Raises
  // NSInvalidArgumentException if there is no such operation.
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
  // Makes the key writable and adds the operation "setKey:".
  void addSetter(std::string_view key, const Operation& setter);
  const Operation* nearest(Operations Class::*table, std::string_view name) const;

  std::string _name;
  std::string _baseName;
  const Class* _base = nullptr;
  Factory _factory = nullptr;          // null for an abstract class
  bool (*_isInstance)(const Object&);  // whether an object has the C++ type of the class
  Operations _operations;
  Operations _classOperations;
  Operations _getters;
  Operations _setters;
};

// The classes of one process, by name. Class objects live as long as the registry. Threads: any.
class ClassRegistry {
 public:
  ClassRegistry();  // adds NSObject
  ~ClassRegistry();
  // Raises NSInvalidArgumentException if the name is taken or the base class is unknown.
  const Class& add(Class definition);
  // Finds a class by name, like the platform's run-time lookup. Returns null if there is none.
  const Class* find(std::string_view name) const;
  // Removes a class, for example when a neighbour is not installed. Ignores unknown names.
  void remove(std::string_view name);
  std::vector<std::string> names() const;
  // Returns the registered class for the C++ type of an object: the one named className() if it
  // fits, otherwise the most derived one.
  const Class& classOf(const Object& object) const;

 private:
  mutable std::shared_mutex _mutex;
  std::map<std::string, std::unique_ptr<Class>, std::less<>> _classes;
  std::vector<std::unique_ptr<Class>> _removed;
};

}  // namespace platform
