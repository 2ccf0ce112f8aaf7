#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Processes text eight bytes at a time. Results do not depend on the byte order of the machine.
namespace platform::words {

inline constexpr std::uint64_t ones = 0x0101010101010101U;
inline constexpr std::uint64_t highs = 0x8080808080808080U;

// Loads eight bytes; the first becomes the lowest.
inline std::uint64_t load(const char* at) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof word);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return word;
}

// Loads eight bytes; the first becomes the highest.
inline std::uint64_t loadBigEndian(const char* at) noexcept {
  return __builtin_bswap64(load(at));
}

// Sets the high bit of the lowest zero byte. May also set high bits above it.
constexpr std::uint64_t zeroBytes(std::uint64_t word) noexcept {
  return (word - ones) & ~word & highs;
}

// Sets the high bit of the lowest byte that is a control or not ASCII. May also set high bits above
// it.
constexpr std::uint64_t unprintableBytes(std::uint64_t word) noexcept {
  return ((word - ones * 0x20) | word) & highs;
}

constexpr std::uint64_t bytesEqualTo(std::uint64_t word, char c) noexcept {
  return zeroBytes(word ^ (ones * static_cast<unsigned char>(c)));
}

// Returns the number of bytes before the first marked one. `marks` must not be 0.
inline std::size_t bytesBefore(std::uint64_t marks) noexcept {
  return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

// Returns whether no byte has its high bit set.
inline bool isAscii(std::string_view text) noexcept {
  std::uint64_t all = 0;
  std::size_t offset = 0;
  for (; offset + 8 <= text.size(); offset += 8) all |= load(text.data() + offset);
  for (; offset < text.size(); ++offset) all |= static_cast<unsigned char>(text[offset]);
  return (all & highs) == 0;
}

// Up to eight characters as returned by `load`, and a mask of that many bytes.
struct Pattern {
  std::uint64_t word = 0;
  std::uint64_t mask = 0;

  constexpr explicit Pattern(std::string_view text) noexcept {
    for (std::size_t i = 0; i < text.size() && i < 8; ++i) {
      word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
      mask |= std::uint64_t{0xFF} << (8 * i);
    }
  }
  constexpr bool matches(std::uint64_t loaded) const noexcept { return (loaded & mask) == word; }
};

// Skips white space of XML. It is usually a line end and tabs, of which deep lists have many.
inline const char* skipSpace(const char* at, const char* end) noexcept {
  if (at != end && *at == '\n') ++at;
  while (end - at >= 8 && load(at) == ones * '\t') at += 8;
  while (at != end && (*at == '\n' || *at == '\t' || *at == ' ' || *at == '\r')) ++at;
  return at;
}

inline constexpr std::size_t runLimit = 32;

// Returns the number of bytes, up to runLimit, before the first that is a control, one of the two
// given characters, or not ASCII. At least runLimit bytes must be readable.
inline std::size_t plainRun(const char* at, char first, char second) noexcept {
#if defined(__SSE2__)
  const auto bits = [&](const char* half) {
    const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(half));
    // As signed bytes, non-ASCII bytes are less than the controls.
    const __m128i low = _mm_cmplt_epi8(text, _mm_set1_epi8(0x20));
    const __m128i one = _mm_cmpeq_epi8(text, _mm_set1_epi8(first));
    const __m128i two = _mm_cmpeq_epi8(text, _mm_set1_epi8(second));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_or_si128(low, _mm_or_si128(one, two))));
  };
  return static_cast<std::size_t>(std::countr_zero(bits(at) | (bits(at + 16) << 16U)));
#else
  for (std::size_t offset = 0; offset < runLimit; offset += 8) {
    const std::uint64_t word = load(at + offset);
    const std::uint64_t special =
        unprintableBytes(word) | bytesEqualTo(word, first) | bytesEqualTo(word, second);
    if (special != 0) return offset + bytesBefore(special);
  }
  return runLimit;
#endif
}

}  // namespace platform::words
