#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/values/Counted.h"
#include "platform/foundation/values/Value.h"

namespace platform {

namespace detail {

struct Base64Text;
class DataStore;

// Values stored directly after this head, with capacity for `room` of them.
struct ArrayStore : Counted {
  std::size_t size = 0;
  std::size_t room = 0;

  static ArrayStore* make(std::size_t room);  // empty, with one owner
  static void destroy(ArrayStore* store) noexcept;
  Value* values() noexcept { return reinterpret_cast<Value*>(this + 1); }
  const Value* values() const noexcept { return reinterpret_cast<const Value*>(this + 1); }
};

struct DictionarySlot {
  Value key;  // a string
  Value value;
};

// Slots stored directly after this head, sorted by key without duplicates, with capacity for `room`
// of them.
struct DictionaryStore : Counted {
  std::size_t size = 0;
  std::size_t room = 0;

  static DictionaryStore* make(std::size_t room);  // empty, with one owner
  static void destroy(DictionaryStore* store) noexcept;
  DictionarySlot* slots() noexcept { return reinterpret_cast<DictionarySlot*>(this + 1); }
  const DictionarySlot* slots() const noexcept {
    return reinterpret_cast<const DictionarySlot*>(this + 1);
  }
};

}  // namespace detail

// A shared, immutable list of values. Copies are cheap and may be used on any thread.
class Array {
 public:
  Array() noexcept = default;
  Array(std::initializer_list<Value> values);
  explicit Array(std::vector<Value> values);

  std::size_t size() const noexcept { return _store ? _store->size : 0; }
  bool empty() const noexcept { return size() == 0; }
  // index must be below size().
  const Value& operator[](std::size_t index) const noexcept { return begin()[index]; }
  const Value* begin() const noexcept { return _store ? _store->values() : nullptr; }
  const Value* end() const noexcept { return begin() + size(); }
  std::span<const Value> values() const noexcept { return {begin(), size()}; }
  bool contains(const Value& value) const;
  std::vector<Value> mutableCopy() const { return {begin(), end()}; }

  friend bool operator==(const Array& a, const Array& b);

 private:
  friend class Value;
  friend class ValueBuilder;
  explicit Array(detail::ArrayStore* owned) noexcept : _store(owned) {}

  detail::Share<detail::ArrayStore> _store;  // null if empty
};

// Shared, immutable bytes. Data from an XML property list keeps its base64 text and decodes it on
// demand.
class Data {
 public:
  Data() noexcept;
  Data(const Data& other) noexcept;
  Data(Data&& other) noexcept;
  Data& operator=(const Data& other) noexcept;
  Data& operator=(Data&& other) noexcept;
  ~Data();
  explicit Data(std::vector<std::uint8_t> bytes);
  explicit Data(std::string_view bytes);

  std::size_t size() const;
  // Valid as long as any copy of this Data exists. Threads: any.
  std::span<const std::uint8_t> bytes() const;
  friend bool operator==(const Data& a, const Data& b);

  // The following functions serve the property list reader and writer.
  //
  // Makes data of bytes that `keeper` owns and that never change.
  static Data sharing(std::shared_ptr<const void> keeper, std::string_view bytes);
  // Makes data of `size` bytes from valid base64 text, which is decoded on demand.
  static Data fromBase64(detail::Base64Text text, std::size_t size);
  // Returns the base64 lines as in a property list, with the white space before the end tag. Uses
  // the cached text if it has this indent; otherwise encodes and caches it. The view is valid as
  // long as `keeper` exists. Threads: any.
  std::string_view base64Lines(std::size_t indent, std::shared_ptr<const void>& keeper) const;

 private:
  friend class Value;
  explicit Data(detail::DataStore* owned) noexcept;

  detail::Share<detail::DataStore> _store;  // null if empty
};

// A shared, immutable map from strings to values, ordered by the UTF-16 code units of the keys.
// Copies are cheap and may be used on any thread.
class Dictionary {
 public:
  // A key and its value. The views are valid as long as any copy of the dictionary exists.
  struct Entry {
    std::string_view key;
    const Value& value;
  };
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Entry;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = Entry;

    Iterator() noexcept = default;
    Entry operator*() const noexcept { return {*_slot->key.asString(), _slot->value}; }
    Iterator& operator++() noexcept {
      ++_slot;
      return *this;
    }
    Iterator operator++(int) noexcept { return Iterator(_slot++); }
    friend bool operator==(Iterator a, Iterator b) noexcept = default;
    friend difference_type operator-(Iterator a, Iterator b) noexcept { return a._slot - b._slot; }

   private:
    friend class Dictionary;
    explicit Iterator(const detail::DictionarySlot* slot) noexcept : _slot(slot) {}
    const detail::DictionarySlot* _slot = nullptr;
  };

  Dictionary() noexcept = default;
  // For duplicate keys, the last value wins.
  Dictionary(std::initializer_list<std::pair<std::string_view, Value>> entries);
  explicit Dictionary(std::vector<std::pair<std::string, Value>> entries);

  std::size_t size() const noexcept { return _store ? _store->size : 0; }
  bool empty() const noexcept { return size() == 0; }
  // Returns null if the key is absent; otherwise a pointer that is valid as long as any copy of
  // this dictionary exists.
  const Value* find(std::string_view key) const noexcept;
  bool contains(std::string_view key) const noexcept { return find(key) != nullptr; }
  // Returns none if the key is absent.
  Value valueForKey(std::string_view key) const;
  Iterator begin() const noexcept { return Iterator(slots()); }
  Iterator end() const noexcept { return Iterator(slots() + size()); }
  // Returns a copy with the entry set; a none value removes it. Copies the entries if they are
  // shared; an rvalue that is the only owner is changed in place.
  Dictionary with(std::string_view key, const Value& value) const&;
  Dictionary with(std::string_view key, const Value& value) &&;
  Dictionary without(std::string_view key) const&;
  Dictionary without(std::string_view key) &&;

  // Returns whether the entries are not shared, so that `with` on an rvalue copies nothing.
  bool ownsAlone() const noexcept { return !_store || _store->unique(); }

  friend bool operator==(const Dictionary& a, const Dictionary& b);

 private:
  friend class Value;
  friend class ValueBuilder;
  explicit Dictionary(detail::DictionaryStore* owned) noexcept : _store(owned) {}
  const detail::DictionarySlot* slots() const noexcept {
    return _store ? _store->slots() : nullptr;
  }

  detail::Share<detail::DictionaryStore> _store;  // null if empty
};

}  // namespace platform
