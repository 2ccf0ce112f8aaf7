#pragma once

#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/foundation/objects/Bridge.h"
#include "platform/foundation/objects/Class.h"

namespace platform {

namespace bridge {

// A member function of Object as an operation. Member functions of other classes are cast to
// members of Object, so that the compiled code depends on the signature only: a class has many
// operations but few signatures.
template <class R, class... P, class Member>
Operation operationOfMember(Member member) {
  return {member, [](const Operation& operation, Object* object, Operation::Arguments arguments) {
            const auto function = operation.function<Member>();
            return invoke<R, P...>(
                [&](P... values) -> R { return (object->*function)(std::forward<P>(values)...); },
                arguments);
          }};
}

// Makes an operation for objects of T from a member function of T or of a base of T.
template <class T, class R, class C, class... P>
Operation operationOf(R (C::*function)(P...)) {
  R (T::*const member)(P...) = function;
  return operationOfMember<R, P...>(static_cast<R (Object::*)(P...)>(member));
}

template <class T, class R, class C, class... P>
Operation operationOf(R (C::*function)(P...) const) {
  R (T::*const member)(P...) const = function;
  return operationOfMember<R, P...>(static_cast<R (Object::*)(P...) const>(member));
}

// Makes an operation from a function that takes the object.
template <class T, class R>
Operation operationOf(R (*function)(T&)) {
  return {function, [](const Operation& operation, Object* object, Operation::Arguments arguments) {
            const auto get = operation.function<R (*)(T&)>();
            return invoke<R>([&] { return get(static_cast<T&>(*object)); }, arguments);
          }};
}

template <class R, class... P>
Operation classOperationOf(R (*function)(P...)) {
  return {function, [](const Operation& operation, Object*, Operation::Arguments arguments) {
            return invoke<R, P...>(operation.function<R (*)(P...)>(), arguments);
          }};
}

}  // namespace bridge

// Describes the class of T for a registry:
//
//   registry.add(ClassBuilder<HBPreferences>("NSObject")
//                    .operation("setObject:forKey:", &HBPreferences::setObject)
//                    .property("identifier_rl", &HBPreferences::identifier_rl,
//                              &HBPreferences::setIdentifier_rl)
//                    .build());
//
// A getter is a member function of T or a function that takes T&. Bridge.h converts arguments and
// results; missing arguments count as none, too many raise NSInvalidArgumentException.
template <class T>
class ClassBuilder {
 public:
  explicit ClassBuilder(std::string_view baseName) : ClassBuilder(T::staticClassName, baseName) {}
  ClassBuilder(std::string_view name, std::string_view baseName)
      : _class(name, baseName, &isInstance) {
    if constexpr (!std::is_abstract_v<T> && std::is_default_constructible_v<T>) {
      _class._factory = []() -> std::shared_ptr<Object> { return std::make_shared<T>(); };
    }
  }

  template <class F>
  ClassBuilder& operation(std::string_view selector, F function) {
    _class.addOperation(selector, bridge::operationOf<T>(function));
    return *this;
  }
  // Adds a static function as a class operation.
  template <class F>
  ClassBuilder& classOperation(std::string_view selector, F function) {
    _class.addClassOperation(selector, bridge::classOperationOf(function));
    return *this;
  }
  // Adds a value that is read by key.
  template <class G>
  ClassBuilder& key(std::string_view name, G getter) {
    _class.addGetter(name, bridge::operationOf<T>(getter));
    return *this;
  }
  // Adds a value that is read by key and by the operation "name".
  template <class G>
  ClassBuilder& property(std::string_view name, G getter) {
    return key(name, getter).operation(name, getter);
  }
  // Like property with a getter, and also written by key and by the operation "setName:".
  template <class G, class C, class R, class P>
  ClassBuilder& property(std::string_view name, G getter, R (C::*setter)(P)) {
    _class.addSetter(name, bridge::operationOf<T>(setter));
    return property(name, getter);
  }

  Class build() { return std::move(_class); }

 private:
  static bool isInstance(const Object& object) {
    if constexpr (std::is_same_v<T, Object>) {
      return true;
    } else {
      return dynamic_cast<const T*>(&object) != nullptr;
    }
  }

  Class _class;
};

}  // namespace platform
