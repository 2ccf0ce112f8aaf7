#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/foundation/propertylist/PropertyListTypes.h"

// The binary form: eight bytes of magic, objects, a table of their offsets, a trailer.
namespace platform {

namespace binary_property_list {

inline constexpr std::string_view magic = "bplist00";
inline constexpr std::size_t trailerSize = 32;

// The high half of an object's first byte; the low half is a size, or 15 where an integer object
// with the size follows.
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

// Reads the binary form. An error's offset is where the culprit stands. `keeper` owns the bytes,
// or is empty; large data shares it then.
PropertyListResult readBinaryPropertyList(std::string_view bytes,
                                          std::shared_ptr<const void> keeper,
                                          const PropertyListLimits& limits);

// The binary form, each equal scalar once. Refused are what no property list can hold, text with a
// lone surrogate, a date that is no finite number, and what the reader would refuse by the limits.
PropertyListText writeBinaryPropertyList(const Value& root);

}  // namespace platform
