#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyListTypes.h"
#include "platform/foundation/values/Collections.h"

// Reads property lists in XML and binary form. Writes the XML form exactly like the platform, and
// the binary form for conversions.
namespace platform {

class MutableDictionary;

// Reads either form, detected by the first bytes. Never raises.
PropertyListResult readPropertyList(std::string_view bytes, const PropertyListLimits& limits = {});
// Reads bytes that `keeper` owns and that never change. Large data shares them instead of copying.
PropertyListResult readSharedPropertyList(std::string_view bytes,
                                          const std::shared_ptr<const void>& keeper,
                                          const PropertyListLimits& limits = {});

// Writes the XML form, byte for byte like the platform: declaration, DOCTYPE, LF line ends with a
// final one, one tab per level, keys sorted by UTF-16 code unit, data in lines of 76 - 8 x
// min(indent, 8) characters. Fails for values that a property list cannot hold, text that XML
// cannot hold (controls other than tab, line feed and carriage return, lone surrogates, U+FFFE,
// U+FFFF), dates outside of the years 1 to 9999, and lists beyond the limits of the reader.
PropertyListText writeXmlPropertyList(const Value& root);

// Returns pieces whose concatenation equals the result of writeXmlPropertyList. Cached text of
// large data is a separate piece and is not copied.
PropertyListPieces writeXmlPropertyListPieces(const Value& root);

// NSDictionary's initWithContentsOfFile:. Returns nothing if the file cannot be read, is not a
// property list, or its root is not a dictionary. Sets `problem` to the reason, in words for the
// user; null to ignore it.
std::optional<Dictionary> dictionaryWithContentsOfFile(std::string_view path,
                                                       std::string* problem = nullptr);

// NSDictionary's writeToFile:atomically:, in the file system of the current process. Returns true
// if the file was replaced. Otherwise the old file is unchanged and `problem` has the reason.
bool writeToFileAtomically(const Dictionary& dictionary, std::string_view path,
                           std::string* problem = nullptr);
// Writes the current entries. Writes of one dictionary are serialised, so that the file matches the
// memory at the end even if several threads set and write.
bool writeToFileAtomically(const MutableDictionary& dictionary, std::string_view path);

}  // namespace platform
