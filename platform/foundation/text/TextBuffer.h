#pragma once

#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

namespace platform {

// Text that grows at its end without zeroing the new bytes. For one thread.
class TextBuffer {
 public:
  TextBuffer() noexcept = default;
  ~TextBuffer() { std::free(_begin); }
  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;

  std::size_t size() const noexcept { return _size; }
  std::string_view view(std::size_t offset, std::size_t size) const noexcept {
    return {_begin + offset, size};
  }
  void append(std::string_view text) {
    char* const to = extend(text.size());
    if (!text.empty()) std::memcpy(to, text.data(), text.size());
  }
  void append(std::size_t count, char c) { std::memset(extend(count), c, count); }
  // Appends `size` bytes, which the caller must fill.
  char* extend(std::size_t size) {
    char* const to = reserve(size);
    _size += size;
    return to;
  }
  // Reserves `size` bytes at the end. Call `commit` with the number of bytes used.
  char* reserve(std::size_t size) {
    if (_room - _size < size) grow(size);
    return _begin + _size;
  }
  void commit(std::size_t size) noexcept { _size += size; }

 private:
  void grow(std::size_t size) {
    const std::size_t room = (_room + size) * 2 + smallest;
    void* memory = std::realloc(_begin, room);
    if (memory == nullptr) throw std::bad_alloc();
    _begin = static_cast<char*>(memory);
    _room = room;
  }

  static constexpr std::size_t smallest = 8192;
  char* _begin = nullptr;
  std::size_t _size = 0;
  std::size_t _room = 0;
};

}  // namespace platform
