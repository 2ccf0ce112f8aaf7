#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

// Property lists: the XML and the binary form read, the XML form written exactly as the platform
// writes it, the binary form written for conversions.
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

// Reads either form (recognised by its first bytes). Never raises.
PropertyListResult readPropertyList(std::string_view bytes, const PropertyListLimits& limits = {});
// The same of bytes that `keeper` owns and nobody changes; large data keeps a share of them instead
// of a copy of its part.
PropertyListResult readSharedPropertyList(std::string_view bytes,
                                          const std::shared_ptr<const void>& keeper,
                                          const PropertyListLimits& limits = {});

struct PropertyListText {
  std::string bytes;
  // Set where the value is not a valid property list: the key path of the culprit and why
  // ("items[2].icon: an object of class UIImage"). bytes is empty then.
  std::optional<std::string> error;
};

// The XML form, byte for byte as the platform writes it: declaration, DOCTYPE, LF line ends and a
// final one, a tab a level, keys sorted by UTF-16 code unit, data in lines of
// 76 - 8 x min(indent, 8) characters. Refused are what no property list can hold, text that XML
// cannot hold (a control other than tab, line feed and carriage return, a lone surrogate, U+FFFE,
// U+FFFF), a date outside the years 1 to 9999, and what the reader would refuse by the limits.
PropertyListText writeXmlPropertyList(const Value& root);

// The XML form in pieces, whose concatenation is what writeXmlPropertyList gives. The text of large
// data that is kept anyway is a piece of its own and is not copied.
struct PropertyListPieces {
  std::vector<std::string_view> pieces;
  std::optional<std::string> error;                  // as PropertyListText's; pieces is empty then
  std::vector<std::shared_ptr<const void>> keepers;  // what the pieces lie in
};
PropertyListPieces writeXmlPropertyListPieces(const Value& root);
// The binary form, each equal scalar once. Refused are what no property list can hold, text with a
// lone surrogate, a date that is no finite number, and what the reader would refuse by the limits.
PropertyListText writeBinaryPropertyList(const Value& root);

// NSDictionary's initWithContentsOfFile:. Nothing where the file cannot be read, is no property
// list, or holds another root. `problem` takes the reason, for people; a caller that fails
// silently passes null.
std::optional<Dictionary> dictionaryWithContentsOfFile(std::string_view path,
                                                       std::string* problem = nullptr);

// NSDictionary's writeToFile:atomically:, in the file system of the current process. True when
// the file has been replaced; else the old file is whole, and `problem` says why.
bool writeToFileAtomically(const Dictionary& dictionary, std::string_view path,
                           std::string* problem = nullptr);

}  // namespace platform
