#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/values/Value.h"

// What the readers and writers of property lists take and give.
namespace platform {

enum class PropertyListFormat { xml1, binary1 };

// Limits of the readers. What meets one is refused, and the error says which.
struct PropertyListLimits {
  std::size_t depth = 512;  // nested containers
  // Of the whole text or file; and of the text and data of a binary file, shared ones each time.
  std::size_t bytes = 256ULL * 1024 * 1024;
  std::size_t objects = 8ULL * 1024 * 1024;  // values, counted as they are reached
};

// What is wrong with a property list, and where.
struct PropertyListError {
  std::string reason;                 // "expected </string>, found </dict>"
  std::optional<std::size_t> line;    // from 1, XML only
  std::optional<std::size_t> column;  // from 1, in characters, XML only
  std::optional<std::size_t> offset;  // bytes from the start
  std::string accepted;               // what would be accepted there
  // "line 3, column 7: reason" or "byte 112: reason"
  std::string text() const;
};

struct PropertyListResult {
  Value value;  // none where the list is refused
  std::optional<PropertyListFormat> format;
  std::optional<PropertyListError> error;
  explicit operator bool() const noexcept { return !error; }
};

struct PropertyListText {
  std::string bytes;
  // Set where the value is not a valid property list: the key path of the culprit and why
  // ("items[2].icon: an object of class UIImage"). bytes is empty then.
  std::optional<std::string> error;
};

// Text in pieces, which follow one another.
struct PropertyListPieces {
  std::vector<std::string_view> pieces;
  std::optional<std::string> error;                  // as PropertyListText's; pieces is empty then
  std::vector<std::shared_ptr<const void>> keepers;  // what the pieces lie in
};

}  // namespace platform
