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

// Base64 text that has been checked, as it stands between the tags of a property list.
struct Base64Text {
  std::shared_ptr<const void> keeper;  // what the text lies in
  std::string_view text;
  std::optional<std::size_t> indent;  // set where the lines are those of this indent
};

// What data is made of: bytes, or base64 text until somebody asks for the bytes, or both.
//
// Threads: every function from any thread.
class DataStore : public Counted {
 public:
  DataStore(std::shared_ptr<const std::uint8_t[]> bytes, std::size_t size);
  DataStore(Base64Text text, std::size_t size);
  static void destroy(DataStore* store) noexcept { delete store; }

  std::size_t size() const noexcept { return _size; }
  std::span<const std::uint8_t> bytes();
  // The text at that indent; made, and kept instead of another, where there is none.
  Base64Text lines(std::size_t indent);

 private:
  Base64Text keptText() const;

  std::size_t _size;
  std::once_flag _decoding;
  std::atomic<const std::uint8_t*> _begin = nullptr;  // null until the bytes are there
  std::shared_ptr<const std::uint8_t[]> _bytes;
  mutable std::mutex _mutex;  // guards _text, held only to copy it
  Base64Text _text;
};

}  // namespace platform::detail
