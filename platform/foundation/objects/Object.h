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

// The root of all classes. Objects receive operations by selector and values by key.
//
// Objects are owned by std::shared_ptr. Delegates, data sources and targets are held by
// std::weak_ptr. As on the platform, an object is made in two steps: it is allocated (the
// constructor only sets fields) and then initialised by an ordinary virtual function, which may
// queue work that holds the object, call overridden functions, or fail. `make` does both.
//
// Threads: an object belongs to the thread that uses it, unless its class says otherwise.
class Object : public std::enable_shared_from_this<Object> {
 public:
  static constexpr std::string_view staticClassName = "NSObject";

  Object();
  virtual ~Object();
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  // Returns the name of the object's class.
  virtual std::string_view className() const { return staticClassName; }
  // Returns the class object that allocated this object; otherwise the one registered under
  // className() in the current process, or its nearest registered base class. A class that was
  // removed from the registry still serves the objects that it made.
  const Class& objectClass() const;

  // The plain initialiser. If it returns false, `make` returns an empty pointer.
  virtual bool init() { return true; }

  // Returns the text that "%@" prints: "<Class: 0x...>".
  virtual std::string description() const;
  virtual bool isEqual(const Object& other) const { return this == &other; }

  // Returns whether the class or one of its bases has the operation.
  bool respondsToSelector(std::string_view selector) const;
  // Sends the operation by name. If there is no such operation, raises NSInvalidArgumentException,
  // "-[Class selector]: unrecognized selector sent to instance".
  Value perform(std::string_view selector, std::span<const Value> arguments = {});
  Value perform(std::string_view selector, std::initializer_list<Value> arguments);

  // Key-value coding. The default looks the key up in the class and its bases. Raises
  // NSUnknownKeyException if the key is not found or, for writing, is read-only.
  virtual Value valueForKey(std::string_view key);
  virtual void setValueForKey(const Value& value, std::string_view key);
  // Applies valueForKey for each key of a path such as "a.b.c". None returns none; a dictionary,
  // mutable or not, returns the entry; an array returns the results of its elements. Any other
  // value raises NSUnknownKeyException.
  Value valueForKeyPath(std::string_view keyPath);
  void setValueForKeyPath(const Value& value, std::string_view keyPath);

  // Returns the number of living objects in this program. Tests use it to detect reference cycles.
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
  const Class* _class = nullptr;  // in the process that allocated the object
};

// Declares the class name that objects of the type have and are looked up by.
#define PLATFORM_CLASS(Name)                                 \
 public:                                                     \
  static constexpr std::string_view staticClassName = #Name; \
  std::string_view className() const override {              \
    return staticClassName;                                  \
  }                                                          \
                                                             \
 private:

// Allocates a T and calls its plain initialiser. Returns an empty pointer if it fails.
template <std::derived_from<Object> T>
std::shared_ptr<T> make() {
  auto object = std::make_shared<T>();
  return object->init() ? object : nullptr;
}

// Allocates a T and calls the given initialiser, for example
// make(&ZVRManageModuleViewController::initWithIdentifier, identifier). Returns an empty pointer if
// it fails.
template <std::derived_from<Object> T, class... Parameters, class... Arguments>
std::shared_ptr<T> make(bool (T::*initialiser)(Parameters...), Arguments&&... arguments) {
  auto object = std::make_shared<T>();
  return (object.get()->*initialiser)(std::forward<Arguments>(arguments)...) ? object : nullptr;
}

}  // namespace platform
