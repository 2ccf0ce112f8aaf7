#include "platform/foundation/propertylist/ValueBuilder.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/foundation/text/Utf.h"

namespace platform {
namespace {

using detail::ArrayStore;
using detail::DictionarySlot;
using detail::DictionaryStore;

// Moves values by copying their bytes. The source is raw memory afterwards.
void relocate(Value* from, std::size_t count, void* to) noexcept {
  std::memcpy(to, static_cast<void*>(from), count * sizeof(Value));
}

// The position of a slot and the first bytes of its key as a big-endian number.
struct SortKey {
  std::uint64_t prefix;
  std::size_t index;
};

std::uint64_t prefixOf(std::string_view key) noexcept {
  std::uint64_t prefix = 0;
  for (std::size_t i = 0; i < sizeof prefix; ++i) {
    prefix = (prefix << 8U) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
  }
  return prefix;
}

bool isAsciiPrefix(std::uint64_t prefix) noexcept {
  return (prefix & 0x8080808080808080U) == 0;
}

std::vector<SortKey> sortedKeys(const DictionaryStore& store) {
  std::vector<SortKey> keys(store.size);
  const DictionarySlot* const slots = store.slots();
  for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = {prefixOf(*slots[i].key.asString()), i};
  std::sort(keys.begin(), keys.end(), [slots](const SortKey& a, const SortKey& b) {
    if (a.prefix != b.prefix && isAsciiPrefix(a.prefix | b.prefix)) return a.prefix < b.prefix;
    const int order = utf::compare(*slots[a.index].key.asString(), *slots[b.index].key.asString());
    return order != 0 ? order < 0 : a.index < b.index;
  });
  return keys;
}

// Returns a store with sorted slots and the last of each duplicate key. Destroys the given store.
DictionaryStore* sorted(DictionaryStore* store) {
  const std::vector<SortKey> keys = sortedKeys(*store);
  DictionaryStore* result = DictionaryStore::make(store->size);
  for (const SortKey& key : keys) {
    DictionarySlot& slot = store->slots()[key.index];
    DictionarySlot* const last = result->size == 0 ? nullptr : result->slots() + result->size - 1;
    if (last != nullptr && last->key == slot.key) {
      last->value = std::move(slot.value);
    } else {
      new (result->slots() + result->size++) DictionarySlot(std::move(slot));
    }
  }
  DictionaryStore::destroy(store);
  return result;
}

}  // namespace

ValueBuilder::ValueBuilder() {
  useInlineBlock();
}

ValueBuilder::~ValueBuilder() {
  std::destroy_n(_values, _size);
  std::free(_block);
}

void ValueBuilder::useInlineBlock() noexcept {
  _block = nullptr;
  _values = reinterpret_cast<Value*>(_inline);
  _room = inlineRoom;
}

Value* ValueBuilder::valuesOf(void* block) const noexcept {
  return reinterpret_cast<Value*>(static_cast<unsigned char*>(block) + headSize);
}

void ValueBuilder::grow() {
  const std::size_t room = _room * 2;
  void* block = std::realloc(_block, headSize + room * sizeof(Value));
  if (block == nullptr) throw std::bad_alloc();
  if (_block == nullptr) relocate(_values, _size, valuesOf(block));
  _block = block;
  _values = valuesOf(block);
  _room = room;
}

// Returns whether the outermost container should take over the whole block, because a copy would
// cost more than the unused space.
bool ValueBuilder::isWorthKeeping(const Frame& frame) const noexcept {
  constexpr std::size_t smallest = std::size_t{64} * 1024;
  return _block != nullptr && frame.start == 0 && _size * sizeof(Value) >= smallest;
}

template <class Store>
Store* ValueBuilder::gather(const Frame& frame, std::size_t valuesPerElement) {
  static_assert(sizeof(Store) == headSize);
  const std::size_t count = _size - frame.start;
  if (count == 0) return nullptr;
  Store* store = nullptr;
  if (isWorthKeeping(frame)) {
    void* fitting = std::realloc(_block, headSize + count * sizeof(Value));
    store = new (fitting == nullptr ? _block : fitting) Store;
    store->room = count / valuesPerElement;
    useInlineBlock();
  } else {
    store = Store::make(count / valuesPerElement);
    relocate(_values + frame.start, count, store + 1);
  }
  store->size = count / valuesPerElement;
  _size = frame.start;
  return store;
}

void ValueBuilder::end() {
  const Frame frame = _frames.back();
  _frames.pop_back();
  if (!frame.dictionary) return push(Array(gather<ArrayStore>(frame, 1)));
  DictionaryStore* store = gather<DictionaryStore>(frame, 2);
  push(Dictionary(frame.sorted || store == nullptr ? store : sorted(store)));
}

}  // namespace platform
