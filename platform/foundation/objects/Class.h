#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <shared_mutex>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/foundation/objects/Bridge.h"
#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Value.h"

namespace platform {

// A class object: what is known of a class while the program runs. Made with ClassBuilder, kept
// by the process's ClassRegistry. Immutable after registration, so safe from any thread.
class Class {
 public:
  using Operation = std::function<Value(Object&, std::span<const Value>)>;
  using ClassOperation = std::function<Value(const Class&, std::span<const Value>)>;
  using Getter = std::function<Value(Object&)>;
  using Setter = std::function<void(Object&, const Value&)>;

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
  template <class T>
  std::shared_ptr<T> allocateAs() const {
    return std::dynamic_pointer_cast<T>(allocate());
  }

  // The nearest class, this one or a base, that offers the operation or the key; else null.
  const Operation* operation(std::string_view selector) const;
  const ClassOperation* classOperation(std::string_view selector) const;
  const Getter* getter(std::string_view key) const;
  const Setter* setter(std::string_view key) const;

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

  std::string _name;
  std::string _baseName;
  const Class* _base = nullptr;
  std::function<std::shared_ptr<Object>()> _factory;
  bool (*_isInstance)(const Object&) = nullptr;  // of the C++ type behind the class
  std::map<std::string, Operation, std::less<>> _operations;
  std::map<std::string, ClassOperation, std::less<>> _classOperations;
  std::map<std::string, Getter, std::less<>> _getters;
  std::map<std::string, Setter, std::less<>> _setters;
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

// Describes the class of T, to be added to a registry:
//
//   registry.add(ClassBuilder<HBPreferences>("NSObject")
//                    .operation("setObject:forKey:", &HBPreferences::setObject)
//                    .property("identifier_rl", &HBPreferences::identifier_rl,
//                              &HBPreferences::setIdentifier_rl)
//                    .build());
//
// Arguments and results are carried over by Bridge.h; too few arguments count as none, more raise
// NSInvalidArgumentException.
template <class T>
class ClassBuilder {
 public:
  explicit ClassBuilder(std::string_view baseName) : ClassBuilder(T::staticClassName, baseName) {}
  ClassBuilder(std::string_view name, std::string_view baseName) {
    _class._name = name;
    _class._baseName = baseName;
    _class._isInstance = [](const Object& object) {
      if constexpr (std::is_same_v<T, Object>) {
        static_cast<void>(object);
        return true;
      } else {
        return dynamic_cast<const T*>(&object) != nullptr;
      }
    };
    if constexpr (!std::is_abstract_v<T> && std::is_default_constructible_v<T>) {
      _class._factory = [] { return std::make_shared<T>(); };
    }
  }

  template <class R, class C, class... P>
  ClassBuilder& operation(std::string_view selector, R (C::*function)(P...)) {
    _class._operations.insert_or_assign(
        std::string(selector), [function](Object& object, std::span<const Value> arguments) {
          return bridge::invoke<R, P...>(
              [&](auto&&... values) -> R {
                return (static_cast<T&>(object).*
                        function)(std::forward<decltype(values)>(values)...);
              },
              arguments);
        });
    return *this;
  }
  template <class R, class C, class... P>
  ClassBuilder& operation(std::string_view selector, R (C::*function)(P...) const) {
    _class._operations.insert_or_assign(
        std::string(selector), [function](Object& object, std::span<const Value> arguments) {
          return bridge::invoke<R, P...>(
              [&](auto&&... values) -> R {
                return (static_cast<const T&>(object).*
                        function)(std::forward<decltype(values)>(values)...);
              },
              arguments);
        });
    return *this;
  }
  // A static member, sent to the class.
  template <class R, class... P>
  ClassBuilder& classOperation(std::string_view selector, R (*function)(P...)) {
    _class._classOperations.insert_or_assign(
        std::string(selector), [function](const Class&, std::span<const Value> arguments) {
          return bridge::invoke<R, P...>(function, arguments);
        });
    return *this;
  }
  // A value read by key.
  template <class G>
  ClassBuilder& key(std::string_view name, G getter) {
    _class._getters.insert_or_assign(std::string(name), [getter](Object& object) {
      return bridge::toValue(std::invoke(getter, static_cast<T&>(object)));
    });
    return *this;
  }
  // A value read and written by key, and the operations "name" and "setName:".
  template <class G, class C, class R, class P>
  ClassBuilder& property(std::string_view name, G getter, R (C::*setter)(P)) {
    key(name, getter);
    _class._setters.insert_or_assign(
        std::string(name), [setter](Object& object, const Value& value) {
          (static_cast<T&>(object).*
           setter)(bridge::fromValue<bridge::Kept<std::remove_cvref_t<P>>>(value));
        });
    operation(setterSelector(name), setter);
    operation(name, getter);
    return *this;
  }

  Class build() { return std::move(_class); }

 private:
  static std::string setterSelector(std::string_view name) {
    std::string selector = "set" + std::string(name) + ":";
    if (selector[3] >= 'a' && selector[3] <= 'z') selector[3] = static_cast<char>(selector[3] - 32);
    return selector;
  }

  Class _class;
};

}  // namespace platform
