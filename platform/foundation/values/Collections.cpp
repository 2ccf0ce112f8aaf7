#include "platform/foundation/values/Collections.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/foundation/text/Utf.h"

namespace platform {
namespace detail {
namespace {

// Allocates a head with space for `count` elements after it. Uses malloc, so that the reader can
// hand over a block that it has grown with realloc.
template <class Store, class Element>
Store* makeStore(std::size_t room) {
  static_assert(sizeof(Store) % alignof(Element) == 0);
  void* memory = std::malloc(sizeof(Store) + room * sizeof(Element));
  if (memory == nullptr) throw std::bad_alloc();
  auto* store = new (memory) Store;
  store->room = room;
  return store;
}

}  // namespace

ArrayStore* ArrayStore::make(std::size_t room) {
  return makeStore<ArrayStore, Value>(room);
}

void ArrayStore::destroy(ArrayStore* store) noexcept {
  std::destroy_n(store->values(), store->size);
  store->~ArrayStore();
  std::free(store);
}

DictionaryStore* DictionaryStore::make(std::size_t room) {
  return makeStore<DictionaryStore, DictionarySlot>(room);
}

void DictionaryStore::destroy(DictionaryStore* store) noexcept {
  std::destroy_n(store->slots(), store->size);
  store->~DictionaryStore();
  std::free(store);
}

}  // namespace detail

namespace {

using detail::ArrayStore;
using detail::DictionarySlot;
using detail::DictionaryStore;

template <class Iterator>
ArrayStore* arrayStoreOf(Iterator first, std::size_t size) {
  if (size == 0) return nullptr;
  ArrayStore* store = ArrayStore::make(size);
  std::uninitialized_copy_n(first, size, store->values());
  store->size = size;
  return store;
}

// Returns the position of the key, or the position to insert it.
std::size_t lowerBound(const DictionarySlot* slots, std::size_t size,
                       std::string_view key) noexcept {
  const auto* found = std::lower_bound(slots, slots + size, key,
                                       [](const DictionarySlot& slot, std::string_view sought) {
                                         return utf::compare(*slot.key.asString(), sought) < 0;
                                       });
  return static_cast<std::size_t>(found - slots);
}

bool hasKeyAt(const DictionaryStore* store, std::size_t index, std::string_view key) noexcept {
  return store != nullptr && index < store->size && store->slots()[index].key.asString() == key;
}

DictionaryStore* copyOf(const DictionaryStore* source, std::size_t room) {
  DictionaryStore* store = DictionaryStore::make(room);
  if (source == nullptr) return store;
  std::uninitialized_copy_n(source->slots(), source->size, store->slots());
  store->size = source->size;
  return store;
}

// Moves the slots of a store with a single owner to a larger store. Destroys the old one.
DictionaryStore* enlarged(DictionaryStore* source) {
  DictionaryStore* store = DictionaryStore::make(source->size * 2);
  std::uninitialized_move_n(source->slots(), source->size, store->slots());
  store->size = source->size;
  DictionaryStore::destroy(source);
  return store;
}

// The store must have a single owner and space for one more slot.
void insertAt(DictionaryStore* store, std::size_t index, DictionarySlot slot) {
  DictionarySlot* const slots = store->slots();
  if (index == store->size) {
    new (slots + index) DictionarySlot(std::move(slot));
  } else {
    new (slots + store->size) DictionarySlot(std::move(slots[store->size - 1]));
    std::move_backward(slots + index, slots + store->size - 1, slots + store->size);
    slots[index] = std::move(slot);
  }
  ++store->size;
}

void eraseAt(DictionaryStore* store, std::size_t index) {
  DictionarySlot* const slots = store->slots();
  std::move(slots + index + 1, slots + store->size, slots + index);
  std::destroy_at(slots + store->size - 1);
  --store->size;
}

bool precedes(const DictionarySlot& a, const DictionarySlot& b) noexcept {
  return utf::compare(*a.key.asString(), *b.key.asString()) < 0;
}

// Makes a store from slots in any order. Keeps the last of each duplicate key.
DictionaryStore* dictionaryStoreOf(std::vector<DictionarySlot> slots) {
  if (slots.empty()) return nullptr;
  std::stable_sort(slots.begin(), slots.end(), precedes);
  DictionaryStore* store = DictionaryStore::make(slots.size());
  for (DictionarySlot& slot : slots) {
    if (store->size > 0 && hasKeyAt(store, store->size - 1, *slot.key.asString())) {
      store->slots()[store->size - 1].value = std::move(slot.value);
    } else {
      new (store->slots() + store->size++) DictionarySlot(std::move(slot));
    }
  }
  return store;
}

std::vector<DictionarySlot> slotsOf(
    std::initializer_list<std::pair<std::string_view, Value>> entries) {
  std::vector<DictionarySlot> slots;
  slots.reserve(entries.size());
  for (const auto& [key, value] : entries) {
    if (!value.isNone()) slots.push_back({Value::string(key), value});
  }
  return slots;
}

std::vector<DictionarySlot> slotsOf(std::vector<std::pair<std::string, Value>>&& entries) {
  std::vector<DictionarySlot> slots;
  slots.reserve(entries.size());
  for (auto& [key, value] : entries) {
    if (!value.isNone()) slots.push_back({Value::string(key), std::move(value)});
  }
  return slots;
}

}  // namespace

Array::Array(std::initializer_list<Value> values)
    : _store(arrayStoreOf(values.begin(), values.size())) {}

Array::Array(std::vector<Value> values)
    : _store(arrayStoreOf(std::make_move_iterator(values.begin()), values.size())) {}

bool Array::contains(const Value& value) const {
  return std::find(begin(), end(), value) != end();
}

bool operator==(const Array& a, const Array& b) {
  return a.begin() == b.begin() || std::equal(a.begin(), a.end(), b.begin(), b.end());
}

Dictionary::Dictionary(std::initializer_list<std::pair<std::string_view, Value>> entries)
    : _store(dictionaryStoreOf(slotsOf(entries))) {}

Dictionary::Dictionary(std::vector<std::pair<std::string, Value>> entries)
    : _store(dictionaryStoreOf(slotsOf(std::move(entries)))) {}

const Value* Dictionary::find(std::string_view key) const noexcept {
  const std::size_t index = lowerBound(slots(), size(), key);
  return hasKeyAt(_store.get(), index, key) ? &slots()[index].value : nullptr;
}

Value Dictionary::valueForKey(std::string_view key) const {
  const Value* found = find(key);
  return found == nullptr ? Value() : *found;
}

Dictionary Dictionary::with(std::string_view key, const Value& value) const& {
  return Dictionary(*this).with(key, value);
}

Dictionary Dictionary::with(std::string_view key, const Value& value) && {
  if (value.isNone()) return std::move(*this).without(key);
  const std::size_t index = lowerBound(slots(), size(), key);
  if (hasKeyAt(_store.get(), index, key)) {
    Value replacement = value;  // `value` may be part of this dictionary
    if (!ownsAlone()) *this = Dictionary(copyOf(_store.get(), size()));
    _store->slots()[index].value = std::move(replacement);
    return std::move(*this);
  }
  DictionarySlot slot{Value::string(key), value};
  if (!_store || !_store->unique()) {
    *this = Dictionary(copyOf(_store.get(), size() + 1));
  } else if (_store->size == _store->room) {
    *this = Dictionary(enlarged(_store.detach()));
  }
  insertAt(_store.get(), index, std::move(slot));
  return std::move(*this);
}

Dictionary Dictionary::without(std::string_view key) const& {
  return Dictionary(*this).without(key);
}

Dictionary Dictionary::without(std::string_view key) && {
  const std::size_t index = lowerBound(slots(), size(), key);
  if (!hasKeyAt(_store.get(), index, key)) return std::move(*this);
  if (size() == 1) return {};
  if (!ownsAlone()) *this = Dictionary(copyOf(_store.get(), size()));
  eraseAt(_store.get(), index);
  return std::move(*this);
}

bool operator==(const Dictionary& a, const Dictionary& b) {
  if (a.slots() == b.slots()) return true;
  return std::equal(a.slots(), a.slots() + a.size(), b.slots(), b.slots() + b.size(),
                    [](const DictionarySlot& l, const DictionarySlot& r) {
                      return l.key == r.key && l.value == r.value;
                    });
}

}  // namespace platform
