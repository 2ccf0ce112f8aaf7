#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyListTypes.h"
#include "platform/foundation/values/Collections.h"

// Property lists: the XML and the binary form read, the XML form written exactly as the platform
// writes it, the binary form written for conversions.
namespace platform {

class MutableDictionary;

// Reads either form (recognised by its first bytes). Never raises.
PropertyListResult readPropertyList(std::string_view bytes, const PropertyListLimits& limits = {});
// The same of bytes that `keeper` owns and nobody changes; large data keeps a share of them instead
// of a copy of its part.
PropertyListResult readSharedPropertyList(std::string_view bytes,
                                          const std::shared_ptr<const void>& keeper,
                                          const PropertyListLimits& limits = {});

// The XML form, byte for byte as the platform writes it: declaration, DOCTYPE, LF line ends and a
// final one, a tab a level, keys sorted by UTF-16 code unit, data in lines of
// 76 - 8 x min(indent, 8) characters. Refused are what no property list can hold, text that XML
// cannot hold (a control other than tab, line feed and carriage return, a lone surrogate, U+FFFE,
// U+FFFF), a date outside the years 1 to 9999, and what the reader would refuse by the limits.
PropertyListText writeXmlPropertyList(const Value& root);

// The XML form in pieces, whose concatenation is what writeXmlPropertyList gives. The text of large
// data that is kept anyway is a piece of its own and is not copied.
PropertyListPieces writeXmlPropertyListPieces(const Value& root);

// NSDictionary's initWithContentsOfFile:. Nothing where the file cannot be read, is no property
// list, or holds another root. `problem` takes the reason, for people; a caller that fails
// silently passes null.
std::optional<Dictionary> dictionaryWithContentsOfFile(std::string_view path,
                                                       std::string* problem = nullptr);

// NSDictionary's writeToFile:atomically:, in the file system of the current process. True when
// the file has been replaced; else the old file is whole, and `problem` says why.
bool writeToFileAtomically(const Dictionary& dictionary, std::string_view path,
                           std::string* problem = nullptr);
// The same of the entries at the moment of the writing. Writes of one dictionary follow one
// another, so that the file ends equal to the memory when several threads set and write.
bool writeToFileAtomically(const MutableDictionary& dictionary, std::string_view path);

}  // namespace platform
