#pragma once

#include <cstddef>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

namespace platform {

// Builds nested arrays and dictionaries from the inside, without recursion: values are pushed on
// one stack, and the end of a container gathers what was pushed since its beginning. For one
// thread.
class ValueBuilder {
 public:
  ValueBuilder();
  ~ValueBuilder();
  ValueBuilder(const ValueBuilder&) = delete;
  ValueBuilder& operator=(const ValueBuilder&) = delete;

  void beginArray() { _frames.push_back({_size, false, true}); }
  void beginDictionary() { _frames.push_back({_size, true, true}); }
  // The container that was begun last becomes one value. A dictionary must have a value for each
  // key; of a key that comes twice the last value stays.
  void end();

  // An element, the value for the last key, or the root; made in its place from what a value can be
  // made from.
  template <class Content>
  void push(Content&& content) {
    if (_size == _room) grow();
    new (_values + _size) Value(std::forward<Content>(content));
    ++_size;
  }
  // The same for a string. `readable` bytes may be read from the start of the text.
  void pushText(std::string_view text, std::size_t readable) {
    if (_size == _room) grow();
    new (_values + _size) Value(Value::string(text, readable));
    ++_size;
  }
  // The innermost container must be a dictionary that expects a key; the key must be a string.
  void pushKey(Value&& key) {
    push(std::move(key));
    checkOrder();
  }
  void pushKeyText(std::string_view text, std::size_t readable) {
    pushText(text, readable);
    checkOrder();
  }

  std::size_t depth() const noexcept { return _frames.size(); }
  bool inDictionary() const noexcept { return !_frames.empty() && _frames.back().dictionary; }
  bool expectsKey() const noexcept {
    return inDictionary() && (_size - _frames.back().start) % 2 == 0;
  }
  // The value that was pushed last.
  const Value& last() const noexcept { return _values[_size - 1]; }
  // Whether the root is complete.
  bool complete() const noexcept { return _frames.empty() && _size == 1; }
  // The root, which must be complete.
  Value take() noexcept { return std::move(_values[0]); }

 private:
  struct Frame {
    std::size_t start;  // where its values begin on the stack
    bool dictionary;
    bool sorted;  // each key came after the one before
  };
  // Room for a head in front of the values, so that the whole block can become a store.
  static constexpr std::size_t headSize = sizeof(detail::ArrayStore);
  static constexpr std::size_t inlineRoom = 160;

  // Notes whether the key that was pushed last comes after the one before.
  void checkOrder() {
    Frame& frame = _frames.back();
    if (_size < frame.start + 3 || !frame.sorted) return;
    frame.sorted = utf::precedes(*_values[_size - 3].asString(), *last().asString());
  }
  void grow();
  bool isWorthKeeping(const Frame& frame) const noexcept;
  template <class Store>
  Store* gather(const Frame& frame, std::size_t valuesPerElement);
  Value* valuesOf(void* block) const noexcept;
  void useInlineBlock() noexcept;

  std::vector<Frame> _frames;
  void* _block = nullptr;  // from malloc; null while the inline one is enough
  Value* _values = nullptr;
  std::size_t _size = 0;
  std::size_t _room = 0;
  alignas(8) unsigned char _inline[inlineRoom * sizeof(Value)];
};

}  // namespace platform
