#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/text/TextWords.h"

// Unicode text as bytes. The platform's strings count and compare in UTF-16 code units. A Value
// holds UTF-8, with lone surrogates in their generalised three-byte form. Threads: any.
namespace platform::utf {

struct Decoded {
  char32_t scalar = 0;     // a surrogate if the bytes are its generalised form
  std::size_t length = 0;  // in bytes; 0 if the bytes are invalid
};

// Decodes the character at `offset`, which must be less than text.size(). Overlong forms and values
// above U+10FFFF are invalid.
Decoded decode(std::string_view text, std::size_t offset) noexcept;

inline bool isSurrogate(char32_t scalar) noexcept {
  return (scalar & 0xFFFFF800U) == 0xD800;
}

// Returns whether XML 1.0 allows the character.
bool isXmlCharacter(char32_t scalar) noexcept;

// Returns the offset of the first byte that is not part of a well-formed character allowed by XML
// 1.0, which excludes surrogates. Empty if all of the text is valid.
std::optional<std::size_t> firstNonXml(std::string_view text) noexcept;

// Appends the UTF-8 form of a scalar up to U+10FFFF, or the generalised form of a surrogate.
void append(std::string& text, char32_t scalar);

// Returns the number of UTF-16 code units. An invalid byte counts as one.
std::size_t codeUnits(std::string_view text) noexcept;

// Compares by UTF-16 code units. Returns a negative value, zero or a positive value if `a` is less
// than, equal to or greater than `b`.
int compare(std::string_view a, std::string_view b) noexcept;

// Returns whether `a` is less than `b` in that order. Compares only the first eight bytes if they
// differ.
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
  std::optional<std::size_t> badOffset;  // of an unpaired surrogate or half a code unit
};
enum class ByteOrder { little, big };
// Converts UTF-16 without a byte order mark to UTF-8.
FromUtf16 fromUtf16(std::string_view bytes, ByteOrder order);

// Converts to big-endian UTF-16, as used in binary property lists. An invalid byte becomes U+FFFD.
std::string toUtf16BigEndian(std::string_view text);

}  // namespace platform::utf
