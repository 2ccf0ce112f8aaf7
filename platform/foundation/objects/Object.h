#pragma once

#include <atomic>
#include <concepts>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace platform {

class Class;

// The root of everything that has a class, answers operations by selector and values by key.
//
// Objects are owned by std::shared_ptr; a delegate, a data source or a target is kept as a
// std::weak_ptr. An object is made in two steps, as on the platform: it is allocated (the
// constructor only sets fields) and then initialised by an ordinary virtual function that may
// queue work that holds the object, call what subclasses override, or refuse. `make` does both.
//
// Threads: an object belongs to the thread that uses it unless its class says otherwise.
class Object : public std::enable_shared_from_this<Object> {
 public:
  static constexpr std::string_view staticClassName = "NSObject";

  Object();
  virtual ~Object();
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  // The name of the class that this object is an instance of.
  virtual std::string_view className() const { return staticClassName; }
  // The class object that allocated this object; else the one registered under className() in the
  // current process, or the nearest base class that is registered. A class that was removed from
  // the registry meanwhile still answers for the objects that it made.
  const Class& objectClass() const;

  // The plain initialiser; false refuses, and `make` then gives an empty pointer.
  virtual bool init() { return true; }

  // The text that "%@" prints: "<Class: 0x...>".
  virtual std::string description() const;
  virtual bool isEqual(const Object& other) const { return this == &other; }

  // Whether the class or one of its bases offers the operation.
  bool respondsToSelector(std::string_view selector) const;
  // Sends the operation by name. Raises NSInvalidArgumentException,
  // "-[Class selector]: unrecognized selector sent to instance", where there is none.
  Value perform(std::string_view selector, std::span<const Value> arguments = {});
  Value perform(std::string_view selector, std::initializer_list<Value> arguments);

  // Key-value access. The default looks the key up in the class and its bases and raises
  // NSUnknownKeyException where no class offers it (or, on writing, offers it for reading only).
  virtual Value valueForKey(std::string_view key);
  virtual void setValueForKey(const Value& value, std::string_view key);
  // "a.b.c": valueForKey of each step in turn; a step through none answers none; dictionaries
  // and their mutable kin answer by entry, an array with the answers of its elements. Any other
  // value raises NSUnknownKeyException.
  Value valueForKeyPath(std::string_view keyPath);
  void setValueForKeyPath(const Value& value, std::string_view keyPath);

  // Objects alive in this program, so that a test can see a reference cycle.
  static std::int64_t liveCount() noexcept;

 protected:
  template <class T>
  std::shared_ptr<T> self() {
    return std::static_pointer_cast<T>(shared_from_this());
  }
  template <class T>
  std::weak_ptr<T> weakSelf() {
    return self<T>();
  }

 private:
  friend class Class;
  const Class* _class = nullptr;  // of the process that allocated the object
};

// Declares the class name that objects of the type bear and are found by.
#define PLATFORM_CLASS(Name)                                 \
 public:                                                     \
  static constexpr std::string_view staticClassName = #Name; \
  std::string_view className() const override {              \
    return staticClassName;                                  \
  }                                                          \
                                                             \
 private:

// Allocates a T and runs its plain initialiser. Empty where that refuses.
template <std::derived_from<Object> T>
std::shared_ptr<T> make() {
  auto object = std::make_shared<T>();
  return object->init() ? object : nullptr;
}

// Allocates a T and runs the given initialiser, as in
// make(&ZVRManageModuleViewController::initWithIdentifier, identifier).
// Empty where that refuses.
template <std::derived_from<Object> T, class... Parameters, class... Arguments>
std::shared_ptr<T> make(bool (T::*initialiser)(Parameters...), Arguments&&... arguments) {
  auto object = std::make_shared<T>();
  return (object.get()->*initialiser)(std::forward<Arguments>(arguments)...) ? object : nullptr;
}

}  // namespace platform
