#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Exception.h"
#include "platform/foundation/values/Value.h"

// Converts arguments and results between C++ functions and operations sent by name.
namespace platform::bridge {

template <class T>
struct IsObjectPointer : std::false_type {};
template <class T>
struct IsObjectPointer<std::shared_ptr<T>> : std::is_base_of<Object, T> {};
template <class T>
struct IsObjectPointer<std::weak_ptr<T>> : std::is_base_of<Object, T> {};

template <class T>
inline constexpr bool isWeakPointer = false;
template <class T>
inline constexpr bool isWeakPointer<std::weak_ptr<T>> = true;

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

// Holds an argument of type P while an operation runs. A view needs a string that owns the text.
template <class P>
using Kept = std::conditional_t<std::is_same_v<std::remove_cvref_t<P>, std::string_view>,
                                std::string, std::remove_cvref_t<P>>;

// Converts a Value to an argument of type T. If the kinds do not match, returns the empty value of
// T: 0, no text or an empty pointer.
template <class T>
T fromValue(const Value& value) {
  if constexpr (std::is_same_v<T, Value>) {
    return value;
  } else if constexpr (std::is_same_v<T, bool>) {
    return value.isNumber() && value.boolValue();
  } else if constexpr (std::is_unsigned_v<T>) {
    return static_cast<T>(value.isNumber() ? value.unsignedIntegerValue() : 0);
  } else if constexpr (std::is_enum_v<T> || std::is_integral_v<T>) {
    return static_cast<T>(value.isNumber() ? value.integerValue() : 0);
  } else if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>(value.isNumber() ? value.doubleValue() : 0.0);
  } else if constexpr (std::is_same_v<T, std::optional<std::string>>) {
    return value.text();
  } else if constexpr (std::is_same_v<T, std::string>) {
    return value.text().value_or(std::string());
  } else if constexpr (std::is_same_v<T, Data>) {
    return value.asData() ? *value.asData() : Data();
  } else if constexpr (std::is_same_v<T, Array>) {
    return value.asArray() ? *value.asArray() : Array();
  } else if constexpr (std::is_same_v<T, Dictionary>) {
    return value.asDictionary() ? *value.asDictionary() : Dictionary();
  } else {
    static_assert(IsObjectPointer<T>::value, "no way to carry this type by name");
    return std::dynamic_pointer_cast<typename T::element_type>(value.asObject());
  }
}

template <class T>
Value toValue(T&& result) {
  using Plain = std::remove_cvref_t<T>;
  if constexpr (std::is_enum_v<Plain>) {
    return Value::integer(static_cast<std::int64_t>(result));
  } else if constexpr (isWeakPointer<Plain>) {
    return Value(result.lock());
  } else if constexpr (isOptional<Plain>) {
    return result ? toValue(*std::forward<T>(result)) : Value();
  } else {
    return Value(std::forward<T>(result));
  }
}

// Returns the argument at the index; none if there are fewer.
const Value& argumentAt(std::span<const Value> arguments, std::size_t index) noexcept;

template <class R, class... P, class F, std::size_t... I>
Value invokeWith(const F& function, [[maybe_unused]] std::span<const Value> arguments,
                 std::index_sequence<I...>) {
  if constexpr (std::is_void_v<R>) {
    function(fromValue<Kept<P>>(argumentAt(arguments, I))...);
    return {};
  } else {
    return toValue(function(fromValue<Kept<P>>(argumentAt(arguments, I))...));
  }
}

// Calls a function with parameters P. Missing arguments count as none; too many raise
// NSInvalidArgumentException.
template <class R, class... P, class F>
Value invoke(const F& function, std::span<const Value> arguments) {
  if (arguments.size() > sizeof...(P)) raiseInvalidArgument("too many arguments for the operation");
  return invokeWith<R, P...>(function, arguments, std::index_sequence_for<P...>{});
}

}  // namespace platform::bridge
