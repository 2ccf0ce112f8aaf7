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

// Seconds since 2001-01-01 00:00:00 UTC, the platform's reference date. May be NaN or infinite.
struct Date {
  double secondsSinceReferenceDate = 0.0;
  friend bool operator==(Date, Date) = default;
};

// The kind of a Value. Numbers keep the kind that they were made with.
enum class ValueKind : std::uint8_t {
  none,
  boolean,
  integer,          // signed, 64 bits
  unsignedInteger,  // unsigned, 64 bits; only for values above INT64_MAX when read from a file
  single,           // single precision
  real,             // double precision
  string,
  data,
  date,
  array,
  dictionary,
  object,  // a reference to any other object, not allowed in a property list
};

// A property list value, nothing ("none", which differs from empty), or a reference to any other
// object. Immutable except for assignment. Copies are cheap: long strings, data, arrays and
// dictionaries are shared.
//
// Threads: distinct Values may be used on distinct threads, even if they share storage. A Value
// must not be assigned while another thread reads it.
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

  // Accepts exact types only, so that a pointer does not convert to a boolean.
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
  Value(const std::optional<std::string>& utf8);  // none if there is no text
  Value(Data data);
  Value(Date date);
  Value(Array array);
  Value(Dictionary dictionary);
  // An empty pointer becomes none.
  template <std::derived_from<Object> T>
  Value(const std::shared_ptr<T>& object) : Value(reference(object)) {}

  static Value boolean(bool value);
  static Value integer(std::int64_t value);
  static Value unsignedInteger(std::uint64_t value);  // kind integer if it fits
  static Value single(float value);
  static Value real(double value);
  // Takes UTF-8 with lone surrogates in their generalised three-byte form.
  static Value string(std::string_view utf8);
  // May be faster: `readable` bytes may be read from the start of the text.
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

  // Number conversions, as on the platform. Integers wrap to the requested width. Reals truncate
  // towards zero and saturate. NaN is 0, but its boolValue is true because it is not zero. Strings:
  // skip white space, accept a sign and digits, and saturate; boolValue is true if a Y, y, T, t or
  // a digit 1-9 follows white space, a sign and zeros. None is 0. Any other kind raises
  // NSInvalidArgumentException, "-[__NSCFArray intValue]: unrecognized selector sent to instance".
  // So does unsignedIntegerValue for a string, because the platform's strings do not have it.
  std::int32_t intValue() const;
  std::int64_t integerValue() const;
  std::uint64_t unsignedIntegerValue() const;
  float floatValue() const;
  double doubleValue() const;
  bool boolValue() const;

  // Return the content, or an empty optional or null if the kind differs. Views and pointers are
  // valid until this Value is assigned or destroyed.
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
  // Returns the text of a string; empty for other kinds.
  std::optional<std::string> text() const;

  // Returns the number of UTF-16 units of a string or of bytes of data; 0 for none. Raises as
  // intValue does for other kinds.
  std::size_t length() const;

  // The platform's isEqualToString: of a string: returns whether the texts are equal; false for
  // none. Raises as intValue does for other kinds, including numbers.
  bool isEqualToString(std::string_view utf8) const;

  // Returns what "%@" prints: "(null)" for none, 1 and 0 for booleans, the text of a string, the
  // object's description ("<Class: 0x...>" by default), and nested lists in parentheses and braces
  // over several lines.
  std::string description() const;

  // The platform's isEqual. Numbers are compared by value (true equals the integer 1), objects by
  // identity. NaN equals only NaN with the same kind and representation.
  friend bool operator==(const Value& a, const Value& b);

 private:
  // Text of up to this many bytes is stored inline.
  static constexpr std::size_t inlineCapacity = 30;
  // Replaces the size of inline text: the payload is a pointer to shared storage, which may be
  // null.
  static constexpr std::uint8_t sharedSize = 0xFF;

  // Plain bytes, so that a value can be moved by memcpy.
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
