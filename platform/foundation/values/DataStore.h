#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/values/Counted.h"

namespace platform::detail {

// Valid base64 text, as between the tags of a property list.
struct Base64Text {
  std::shared_ptr<const void> keeper;  // owns the text's memory
  std::string_view text;
  std::optional<std::size_t> indent;  // set if the lines are those for this indent
};

// The storage of data: bytes, or base64 text that is decoded on demand, or both.
//
// Threads: any.
class DataStore : public Counted {
 public:
  DataStore(std::shared_ptr<const std::uint8_t[]> bytes, std::size_t size);
  DataStore(Base64Text text, std::size_t size);
  static void destroy(DataStore* store) noexcept { delete store; }

  std::size_t size() const noexcept { return _size; }
  std::span<const std::uint8_t> bytes();
  // Returns the text at that indent. If it is not cached, encodes it and replaces the cached text.
  Base64Text lines(std::size_t indent);

 private:
  Base64Text keptText() const;

  std::size_t _size;
  std::once_flag _decoding;
  std::atomic<const std::uint8_t*> _begin = nullptr;  // null until decoded
  std::shared_ptr<const std::uint8_t[]> _bytes;
  mutable std::mutex _mutex;  // guards _text, locked only to copy it
  Base64Text _text;
};

}  // namespace platform::detail
