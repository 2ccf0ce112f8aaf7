#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/values/Value.h"

// Parameters and results of the property list readers and writers.
namespace platform {

enum class PropertyListFormat { xml1, binary1 };

// Limits of the readers. A list beyond a limit is rejected, and the error names the limit.
struct PropertyListLimits {
  std::size_t depth = 512;  // nested containers
  // Applies to the size of the text or file, and to the text and data of a binary file, where
  // shared objects count each time.
  std::size_t bytes = 256ULL * 1024 * 1024;
  std::size_t objects = 8ULL * 1024 * 1024;  // values, counted when reached
};

// What is wrong with a property list, and where.
struct PropertyListError {
  std::string reason;                 // "expected </string>, found </dict>"
  std::optional<std::size_t> line;    // counts from 1, XML only
  std::optional<std::size_t> column;  // in characters, counts from 1, XML only
  std::optional<std::size_t> offset;  // in bytes
  std::string accepted;               // what is accepted there
  // Returns "line 3, column 7: reason" or "byte 112: reason".
  std::string text() const;
};

struct PropertyListResult {
  Value value;  // none if the list was rejected
  std::optional<PropertyListFormat> format;
  std::optional<PropertyListError> error;
  explicit operator bool() const noexcept { return !error; }
};

struct PropertyListText {
  std::string bytes;
  // Set if the value is not a valid property list: the key path and the reason ("items[2].icon: an
  // object of class UIImage"). bytes is empty then.
  std::optional<std::string> error;
};

// Text in consecutive pieces.
struct PropertyListPieces {
  std::vector<std::string_view> pieces;
  std::optional<std::string> error;  // as in PropertyListText; if set, pieces is empty
  std::vector<std::shared_ptr<const void>> keepers;  // own the memory of the pieces
};

}  // namespace platform
