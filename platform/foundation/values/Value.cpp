#include "platform/foundation/values/Value.h"

#include <cstdlib>
#include <limits>
#include <new>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/DataStore.h"

namespace platform {
namespace {

// The bytes of a text that is too long to be stored inline follow this head.
struct TextStore : detail::Counted {
  std::size_t size = 0;

  static TextStore* make(std::string_view text) {
    void* memory = ::operator new(sizeof(TextStore) + text.size());
    auto* store = new (memory) TextStore;
    store->size = text.size();
    std::memcpy(store->bytes(), text.data(), text.size());
    return store;
  }
  static void destroy(TextStore* store) noexcept {
    store->~TextStore();
    ::operator delete(store);
  }
  char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }
};

struct ObjectStore : detail::Counted {
  explicit ObjectStore(std::shared_ptr<Object> target) noexcept : object(std::move(target)) {}
  static void destroy(ObjectStore* store) noexcept { delete store; }
  std::shared_ptr<Object> object;
};

}  // namespace

Value Value::adopt(ValueKind kind, detail::Counted* share) noexcept {
  Value value(kind, share);
  value._storage.size = sharedSize;
  return value;
}

Value::Value(const std::optional<std::string>& utf8) {
  if (utf8) *this = string(*utf8);
}

Value::Value(Data data) : Value(adopt(ValueKind::data, data._store.detach())) {}

Value::Value(Date date) : Value(ValueKind::date, date) {}

Value::Value(Array array) : Value(adopt(ValueKind::array, array._store.detach())) {}

Value::Value(Dictionary dictionary)
    : Value(adopt(ValueKind::dictionary, dictionary._store.detach())) {}

Value Value::boolean(bool value) {
  return {ValueKind::boolean, value};
}

Value Value::integer(std::int64_t value) {
  return {ValueKind::integer, value};
}

Value Value::unsignedInteger(std::uint64_t value) {
  if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    return integer(static_cast<std::int64_t>(value));
  }
  return {ValueKind::unsignedInteger, value};
}

Value Value::single(float value) {
  return {ValueKind::single, value};
}

Value Value::real(double value) {
  return {ValueKind::real, value};
}

Value Value::string(std::string_view utf8) {
  if (utf8.size() > inlineCapacity) return adopt(ValueKind::string, TextStore::make(utf8));
  Value value;
  value._storage.kind = ValueKind::string;
  value._storage.size = static_cast<std::uint8_t>(utf8.size());
  if (!utf8.empty()) std::memcpy(value._storage.payload, utf8.data(), utf8.size());
  return value;
}

Value Value::reference(std::shared_ptr<Object> object) {
  if (!object) return {};
  return adopt(ValueKind::object, new ObjectStore(std::move(object)));
}

std::string_view Value::sharedText() const noexcept {
  auto* store = static_cast<TextStore*>(payload<detail::Counted*>());
  return {store->bytes(), store->size};
}

void Value::release() noexcept {
  auto* share = payload<detail::Counted*>();
  if (share == nullptr || !share->release()) return;
  switch (_storage.kind) {
    case ValueKind::string:
      return TextStore::destroy(static_cast<TextStore*>(share));
    case ValueKind::data:
      return detail::DataStore::destroy(static_cast<detail::DataStore*>(share));
    case ValueKind::array:
      return detail::ArrayStore::destroy(static_cast<detail::ArrayStore*>(share));
    case ValueKind::dictionary:
      return detail::DictionaryStore::destroy(static_cast<detail::DictionaryStore*>(share));
    default:
      return ObjectStore::destroy(static_cast<ObjectStore*>(share));
  }
}

// Arrays, dictionaries and data are as large as a pointer, so the payload of a value with such
// content is the object itself.
const Array* Value::asArray() const noexcept {
  static_assert(sizeof(Array) == sizeof(void*));
  if (kind() != ValueKind::array) return nullptr;
  return reinterpret_cast<const Array*>(_storage.payload);
}

const Dictionary* Value::asDictionary() const noexcept {
  static_assert(sizeof(Dictionary) == sizeof(void*));
  if (kind() != ValueKind::dictionary) return nullptr;
  return reinterpret_cast<const Dictionary*>(_storage.payload);
}

const Data* Value::asData() const noexcept {
  static_assert(sizeof(Data) == sizeof(void*));
  if (kind() != ValueKind::data) return nullptr;
  return reinterpret_cast<const Data*>(_storage.payload);
}

std::optional<Date> Value::asDate() const noexcept {
  if (kind() != ValueKind::date) return std::nullopt;
  return payload<Date>();
}

std::shared_ptr<Object> Value::asObject() const noexcept {
  if (kind() != ValueKind::object) return nullptr;
  return static_cast<ObjectStore*>(payload<detail::Counted*>())->object;
}

std::optional<std::string> Value::text() const {
  if (!isString()) return std::nullopt;
  return std::string(stringView());
}

}  // namespace platform
