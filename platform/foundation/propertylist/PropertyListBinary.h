#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/foundation/propertylist/PropertyListTypes.h"

// The binary form: an 8-byte magic number, objects, a table of their offsets, a trailer.
namespace platform {

namespace binary_property_list {

inline constexpr std::string_view magic = "bplist00";
inline constexpr std::size_t trailerSize = 32;

// The high half of an object's first byte. The low half is a size, or 15 if an integer object with
// the size follows.
enum class Marker : std::uint8_t {
  simple = 0x0,
  integer = 0x1,
  real = 0x2,
  date = 0x3,
  data = 0x4,
  ascii = 0x5,
  utf16 = 0x6,
  array = 0xA,
  dictionary = 0xD,
};
inline constexpr std::uint8_t falseByte = 0x08;
inline constexpr std::uint8_t trueByte = 0x09;
inline constexpr std::uint8_t dateByte = 0x33;
inline constexpr std::uint8_t sizeFollows = 0x0F;

}  // namespace binary_property_list

// Reads the binary form. The offset of an error is that of the invalid object or byte. `keeper`
// owns the bytes and may be empty; if set, large data shares it.
PropertyListResult readBinaryPropertyList(std::string_view bytes,
                                          std::shared_ptr<const void> keeper,
                                          const PropertyListLimits& limits);

// Writes the binary form with each distinct scalar once. Fails for values that a property list
// cannot hold, text with a lone surrogate, dates that are not finite, and lists beyond the limits
// of the reader.
PropertyListText writeBinaryPropertyList(const Value& root);

}  // namespace platform
