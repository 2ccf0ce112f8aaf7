#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/text/TextWords.h"

// Unicode text as bytes. Strings of the platform count and compare in UTF-16 code units, while a
// Value keeps UTF-8, in which a lone surrogate has its generalised three-byte form. Every function
// may be called from any thread.
namespace platform::utf {

struct Decoded {
  char32_t scalar = 0;     // a surrogate where the bytes are its generalised form
  std::size_t length = 0;  // bytes; 0 where the bytes are no such form
};

// The character that starts at `offset`, which must be below text.size(). Overlong forms and
// values above U+10FFFF are none.
Decoded decode(std::string_view text, std::size_t offset) noexcept;

inline bool isSurrogate(char32_t scalar) noexcept {
  return (scalar & 0xFFFFF800U) == 0xD800;
}

// Whether a document in XML 1.0 may contain the character.
bool isXmlCharacter(char32_t scalar) noexcept;

// The offset of the first byte that does not belong to a well-formed character of XML 1.0 (a
// surrogate is none). Empty where all of the text is.
std::optional<std::size_t> firstNonXml(std::string_view text) noexcept;

// Appends the UTF-8 form of a scalar up to U+10FFFF; of a surrogate, the generalised one.
void append(std::string& text, char32_t scalar);

// UTF-16 code units; a byte that belongs to no character counts as one.
std::size_t codeUnits(std::string_view text) noexcept;

// Negative, zero or positive as `a` comes before, with or after `b` in the order of UTF-16 code
// units.
int compare(std::string_view a, std::string_view b) noexcept;

// Whether `a` comes before `b` in that order. Decided by the first eight bytes where that is
// possible.
inline bool precedes(std::string_view a, std::string_view b) noexcept {
  if (a.size() >= 8 && b.size() >= 8) {
    const std::uint64_t left = words::loadBigEndian(a.data());
    const std::uint64_t right = words::loadBigEndian(b.data());
    if (left != right && ((left | right) & words::highs) == 0) return left < right;
  }
  return compare(a, b) < 0;
}

struct FromUtf16 {
  std::string text;
  std::optional<std::size_t> badOffset;  // bytes; an unpaired surrogate or half a code unit
};
enum class ByteOrder { little, big };
// UTF-8 from UTF-16 without a byte order mark.
FromUtf16 fromUtf16(std::string_view bytes, ByteOrder order);

// UTF-16, big endian, as the binary form of property lists has it. A byte that belongs to no
// character becomes U+FFFD.
std::string toUtf16BigEndian(std::string_view text);

}  // namespace platform::utf
