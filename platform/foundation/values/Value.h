#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/values/Counted.h"

namespace platform {

class Array;
class Data;
class Dictionary;
class Object;

// Seconds since 2001-01-01 00:00:00 UTC, as the platform counts dates. May be NaN or infinite.
struct Date {
  double secondsSinceReferenceDate = 0.0;
  friend bool operator==(Date, Date) = default;
};

// What a Value holds. Numbers remember what they came as.
enum class ValueKind : std::uint8_t {
  none,
  boolean,
  integer,          // signed, 64 bits
  unsignedInteger,  // unsigned, 64 bits; only for values above INT64_MAX when read from a file
  single,           // real of single precision
  real,             // real of double precision
  string,
  data,
  date,
  array,
  dictionary,
  object,  // a reference to any other object, which a property list cannot hold
};

// What a property list can hold, nothing ("none", which is not the same as empty), or a reference
// to any other object. A value is immutable but for assignment; a copy is cheap (strings that are
// not short, data, arrays and dictionaries are shared underneath).
//
// Threads: distinct Values may be used from distinct threads, also when they share what lies
// underneath. One Value must not be assigned while another thread reads it.
class Value {
 public:
  Value() noexcept = default;
  Value(std::nullptr_t) noexcept {}
  Value(const Value& other) noexcept : _storage(other._storage) {
    if (_storage.size == sharedSize) retain();
  }
  Value(Value&& other) noexcept : _storage(other._storage) { other._storage = Storage{}; }
  Value& operator=(const Value& other) noexcept {
    Value copy(other);
    std::swap(_storage, copy._storage);
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    Value taken(std::move(other));
    std::swap(_storage, taken._storage);
    return *this;
  }
  ~Value() {
    if (_storage.size == sharedSize) release();
  }

  // Exact types only, so that a pointer never becomes a boolean.
  template <std::same_as<bool> T>
  Value(T value) : Value(boolean(value)) {}
  template <std::signed_integral T>
  requires(!std::same_as<T, bool>) Value(T value) : Value(integer(value)) {}
  template <std::unsigned_integral T>
  requires(!std::same_as<T, bool>) Value(T value) : Value(unsignedInteger(value)) {}
  template <std::same_as<float> T>
  Value(T value) : Value(single(value)) {}
  template <std::same_as<double> T>
  Value(T value) : Value(real(value)) {}
  Value(const char* utf8) : Value(string(utf8)) {}
  Value(std::string_view utf8) : Value(string(utf8)) {}
  Value(const std::string& utf8) : Value(string(utf8)) {}
  Value(const std::optional<std::string>& utf8);  // none where there is no text
  Value(Data data);
  Value(Date date);
  Value(Array array);
  Value(Dictionary dictionary);
  // None where the pointer is empty.
  template <std::derived_from<Object> T>
  Value(const std::shared_ptr<T>& object) : Value(reference(object)) {}

  static Value boolean(bool value);
  static Value integer(std::int64_t value);
  static Value unsignedInteger(std::uint64_t value);  // kind integer where it fits
  static Value single(float value);
  static Value real(double value);
  // The bytes are UTF-8; a lone surrogate is kept in its generalised three-byte form.
  static Value string(std::string_view utf8);
  // The same, where `readable` bytes may be read from the start of the text, which can be faster.
  static Value string(std::string_view utf8, std::size_t readable) {
    if (utf8.size() > inlineCapacity || readable < inlineCapacity) return string(utf8);
    return Value(InlineText{utf8.data(), utf8.size()});
  }
  static Value reference(std::shared_ptr<Object> object);

  ValueKind kind() const noexcept { return _storage.kind; }
  bool isNone() const noexcept { return kind() == ValueKind::none; }
  // Boolean, integers and reals.
  bool isNumber() const noexcept {
    return kind() >= ValueKind::boolean && kind() <= ValueKind::real;
  }
  bool isString() const noexcept { return kind() == ValueKind::string; }
  explicit operator bool() const noexcept { return !isNone(); }

  // Conversions of numbers, as the platform's: integers wrap to the width asked for, reals
  // truncate towards zero and saturate, NaN gives 0 (boolValue of NaN is true: it is not zero).
  // Strings answer as the platform's do: leading white space, a sign, digits, saturating;
  // boolValue is true for a leading Y, y, T, t or a digit 1-9 after white space, sign and zeros.
  // None answers 0. Any other kind raises the invalid-argument exception
  // "-[__NSCFArray intValue]: unrecognized selector sent to instance"; so does a string that is
  // asked for unsignedIntegerValue, which the platform's strings do not have.
  std::int32_t intValue() const;
  std::int64_t integerValue() const;
  std::uint64_t unsignedIntegerValue() const;
  float floatValue() const;
  double doubleValue() const;
  bool boolValue() const;

  // The content where the kind is the one asked for, else an empty optional or a null pointer.
  // Views and pointers live as long as this Value is neither assigned nor destroyed.
  std::optional<std::string_view> asString() const noexcept {
    if (!isString()) return std::nullopt;
    return stringView();
  }
  const Array* asArray() const noexcept;
  const Dictionary* asDictionary() const noexcept;
  const Data* asData() const noexcept;
  std::optional<Date> asDate() const noexcept;
  std::shared_ptr<Object> asObject() const noexcept;
  template <class T>
  std::shared_ptr<T> as() const {
    return std::dynamic_pointer_cast<T>(asObject());
  }
  // The text where this is a string, else no text.
  std::optional<std::string> text() const;

  // The number of UTF-16 units of a string, of bytes of data; 0 for none; raises as intValue does
  // otherwise.
  std::size_t length() const;

  // The platform's isEqualToString: to a string: whether the texts are the same. False for none;
  // raises as intValue does otherwise, also for numbers.
  bool isEqualToString(std::string_view utf8) const;

  // What "%@" prints: "(null)" for none, 1 and 0 for booleans, the text of a string as it is,
  // "<Class: 0x...>" or the object's own description for objects, nested lists in parentheses
  // and braces over several lines.
  std::string description() const;

  // The platform's isEqual: numbers compare by what they stand for (a boolean true equals the
  // integer 1), objects by identity, NaN equals NaN of the same kind only by representation.
  friend bool operator==(const Value& a, const Value& b);

 private:
  // Text of up to this many bytes needs no storage of its own.
  static constexpr std::size_t inlineCapacity = 30;
  // In place of an inline text's size: the payload is a pointer to shared storage, perhaps null.
  static constexpr std::uint8_t sharedSize = 0xFF;

  // Plain bytes, so that a value is moved by copying them.
  struct alignas(8) Storage {
    unsigned char payload[inlineCapacity];
    std::uint8_t size;
    ValueKind kind;
  };

  // NOLINTBEGIN(bugprone-sizeof-expression): the payload may be a pointer itself.
  template <class T>
  Value(ValueKind kind, T payload) noexcept {
    static_assert(sizeof(T) <= inlineCapacity);
    std::memcpy(_storage.payload, &payload, sizeof(T));
    _storage.kind = kind;
  }
  template <class T>
  T payload() const noexcept {
    T result;
    std::memcpy(&result, _storage.payload, sizeof(T));
    return result;
  }
  // NOLINTEND(bugprone-sizeof-expression)
  // Text of which inlineCapacity bytes may be read, however short it is.
  struct InlineText {
    const char* bytes;
    std::size_t size;
  };
  explicit Value(InlineText text) noexcept {
    std::memcpy(_storage.payload, text.bytes, inlineCapacity);
    _storage.size = static_cast<std::uint8_t>(text.size);
    _storage.kind = ValueKind::string;
  }
  static Value adopt(ValueKind kind, detail::Counted* share) noexcept;
  std::string_view stringView() const noexcept {
    if (_storage.size == sharedSize) return sharedText();
    return {reinterpret_cast<const char*>(_storage.payload), _storage.size};
  }
  std::string_view sharedText() const noexcept;
  void retain() const noexcept {
    if (auto* share = payload<detail::Counted*>()) share->retain();
  }
  void release() noexcept;
  double numericValue() const noexcept;
  [[noreturn]] void raiseSelector(std::string_view selector) const;

  Storage _storage{};
};

static_assert(sizeof(Value) == 32);

}  // namespace platform
