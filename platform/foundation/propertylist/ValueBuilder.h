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

// Builds nested arrays and dictionaries bottom-up, without recursion: values are pushed on a stack,
// and the end of a container collects the values pushed since its beginning. For one thread.
class ValueBuilder {
 public:
  ValueBuilder();
  ~ValueBuilder();
  ValueBuilder(const ValueBuilder&) = delete;
  ValueBuilder& operator=(const ValueBuilder&) = delete;

  void beginArray() { _frames.push_back({_size, false, true}); }
  void beginDictionary() { _frames.push_back({_size, true, true}); }
  // Turns the innermost container into a value. A dictionary must have a value for each key; for a
  // duplicate key, the last value wins.
  void end();

  // Pushes an element, the value for the last key, or the root, and constructs it in place.
  template <class Content>
  void push(Content&& content) {
    if (_size == _room) grow();
    new (_values + _size) Value(std::forward<Content>(content));
    ++_size;
  }
  // Pushes a string. `readable` bytes may be read from the start of the text.
  void pushText(std::string_view text, std::size_t readable) {
    if (_size == _room) grow();
    new (_values + _size) Value(Value::string(text, readable));
    ++_size;
  }
  // The innermost container must be a dictionary that expects a key. The key must be a string.
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
  // Returns the value pushed last.
  const Value& last() const noexcept { return _values[_size - 1]; }
  // Returns whether the root is complete.
  bool complete() const noexcept { return _frames.empty() && _size == 1; }
  // Returns the root, which must be complete.
  Value take() noexcept { return std::move(_values[0]); }

 private:
  struct Frame {
    std::size_t start;  // index of its first value on the stack
    bool dictionary;
    bool sorted;  // whether the keys are in ascending order
  };
  // Space for a head before the values, so that the block itself can become a store.
  static constexpr std::size_t headSize = sizeof(detail::ArrayStore);
  static constexpr std::size_t inlineRoom = 160;

  // Records whether the key pushed last is greater than the one before.
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
  void* _block = nullptr;  // from malloc; null while the inline block is used
  Value* _values = nullptr;
  std::size_t _size = 0;
  std::size_t _room = 0;
  alignas(8) unsigned char _inline[inlineRoom * sizeof(Value)];
};

}  // namespace platform
