#include "platform/foundation/text/Utf.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/foundation/text/TextWords.h"

namespace platform::utf {
namespace {

unsigned char byteAt(std::string_view text, std::size_t offset) noexcept {
  return static_cast<unsigned char>(text[offset]);
}

bool continues(std::string_view text, std::size_t offset) noexcept {
  return offset < text.size() && (byteAt(text, offset) & 0xC0U) == 0x80;
}

// Decodes `count` continuation bytes after the bits of the lead byte. Returns length 0 if they are
// missing or the form is overlong.
Decoded decodeTail(std::string_view text, std::size_t offset, char32_t lead, std::size_t count,
                   char32_t smallest) noexcept {
  char32_t scalar = lead;
  for (std::size_t i = 1; i <= count; ++i) {
    if (!continues(text, offset + i)) return {};
    scalar = (scalar << 6U) | (byteAt(text, offset + i) & 0x3FU);
  }
  if (scalar < smallest || scalar > 0x10FFFF) return {};
  return {scalar, count + 1};
}

// Iterates over the UTF-16 code units of a text.
class CodeUnits {
 public:
  explicit CodeUnits(std::string_view text) noexcept : _text(text) {}

  // Returns -1 at the end.
  std::int32_t next() noexcept {
    if (_pending >= 0) return std::exchange(_pending, -1);
    if (_offset >= _text.size()) return -1;
    const Decoded character = decode(_text, _offset);
    if (character.length == 0) return byteAt(_text, _offset++);
    _offset += character.length;
    if (character.scalar < 0x10000) return static_cast<std::int32_t>(character.scalar);
    const char32_t rest = character.scalar - 0x10000;
    _pending = static_cast<std::int32_t>(0xDC00U | (rest & 0x3FFU));
    return static_cast<std::int32_t>(0xD800U | (rest >> 10U));
  }

 private:
  std::string_view _text;
  std::size_t _offset = 0;
  std::int32_t _pending = -1;
};

int compareUnitByUnit(std::string_view a, std::string_view b) noexcept {
  CodeUnits left(a);
  CodeUnits right(b);
  for (;;) {
    const std::int32_t l = left.next();
    const std::int32_t r = right.next();
    if (l != r) return l < r ? -1 : 1;
    if (l < 0) return 0;
  }
}

}  // namespace

Decoded decode(std::string_view text, std::size_t offset) noexcept {
  const unsigned char first = byteAt(text, offset);
  if (first < 0x80) return {first, 1};
  if (first < 0xC2 || first > 0xF4) return {};
  if (first < 0xE0) return decodeTail(text, offset, first & 0x1FU, 1, 0x80);
  if (first < 0xF0) return decodeTail(text, offset, first & 0x0FU, 2, 0x800);
  return decodeTail(text, offset, first & 0x07U, 3, 0x10000);
}

bool isXmlCharacter(char32_t scalar) noexcept {
  if (scalar < 0x20) return scalar == '\t' || scalar == '\n' || scalar == '\r';
  return !isSurrogate(scalar) && scalar != 0xFFFE && scalar != 0xFFFF && scalar <= 0x10FFFF;
}

std::optional<std::size_t> firstNonXml(std::string_view text) noexcept {
  std::size_t offset = 0;
  while (offset < text.size()) {
    if (text.size() - offset >= sizeof(std::uint64_t) &&
        words::unprintableBytes(words::load(text.data() + offset)) == 0) {
      offset += sizeof(std::uint64_t);
      continue;
    }
    const Decoded character = decode(text, offset);
    if (character.length == 0 || !isXmlCharacter(character.scalar)) return offset;
    offset += character.length;
  }
  return std::nullopt;
}

void append(std::string& text, char32_t scalar) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (scalar < 0x80) {
    put(scalar);
  } else if (scalar < 0x800) {
    put(0xC0U | (scalar >> 6U));
    put(0x80U | (scalar & 0x3FU));
  } else if (scalar < 0x10000) {
    put(0xE0U | (scalar >> 12U));
    put(0x80U | ((scalar >> 6U) & 0x3FU));
    put(0x80U | (scalar & 0x3FU));
  } else {
    put(0xF0U | (scalar >> 18U));
    put(0x80U | ((scalar >> 12U) & 0x3FU));
    put(0x80U | ((scalar >> 6U) & 0x3FU));
    put(0x80U | (scalar & 0x3FU));
  }
}

std::size_t codeUnits(std::string_view text) noexcept {
  CodeUnits units(text);
  std::size_t count = 0;
  while (units.next() >= 0) ++count;
  return count;
}

int compare(std::string_view a, std::string_view b) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  const int order = std::memcmp(a.data(), b.data(), common);
  if (order == 0) return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
  const auto mismatch =
      std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(common), b.begin());
  const auto l = static_cast<unsigned char>(*mismatch.first);
  const auto r = static_cast<unsigned char>(*mismatch.second);
  // UTF-8 and UTF-16 have the same order, except that UTF-16 sorts characters above U+FFFF, which
  // are surrogates, below U+E000.
  if (std::max(l, r) < 0xF0 || std::min(l, r) < 0xED) return l < r ? -1 : 1;
  return compareUnitByUnit(a, b);
}

FromUtf16 fromUtf16(std::string_view bytes, ByteOrder order) {
  FromUtf16 result;
  const std::size_t even = bytes.size() & ~std::size_t{1};
  const auto unitAt = [&](std::size_t offset) -> char32_t {
    const char32_t first = byteAt(bytes, offset);
    const char32_t second = byteAt(bytes, offset + 1);
    return order == ByteOrder::big ? (first << 8U) | second : (second << 8U) | first;
  };
  result.text.reserve(bytes.size() / 2 + bytes.size() / 8);
  for (std::size_t offset = 0; offset < even; offset += 2) {
    char32_t scalar = unitAt(offset);
    if (isSurrogate(scalar)) {
      const char32_t second = scalar < 0xDC00 && offset + 2 < even ? unitAt(offset + 2) : 0;
      if (second < 0xDC00 || second > 0xDFFF) {
        result.badOffset = offset;
        return result;
      }
      scalar = 0x10000 + ((scalar & 0x3FFU) << 10U) + (second & 0x3FFU);
      offset += 2;
    }
    append(result.text, scalar);
  }
  if (even != bytes.size()) result.badOffset = even;
  return result;
}

std::string toUtf16BigEndian(std::string_view text) {
  std::string result;
  const auto put = [&result](char32_t unit) {
    result.push_back(static_cast<char>(unit >> 8U));
    result.push_back(static_cast<char>(unit & 0xFFU));
  };
  for (std::size_t offset = 0; offset < text.size();) {
    const Decoded character = decode(text, offset);
    offset += std::max<std::size_t>(character.length, 1);
    const char32_t scalar = character.length == 0 ? 0xFFFD : character.scalar;
    if (scalar < 0x10000) {
      put(scalar);
    } else {
      put(0xD800U | ((scalar - 0x10000) >> 10U));
      put(0xDC00U | ((scalar - 0x10000) & 0x3FFU));
    }
  }
  return result;
}

}  // namespace platform::utf
