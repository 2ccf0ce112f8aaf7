#include "platform/foundation/text/Base64Blocks.h"

#if defined(__x86_64__)

#include <cstring>
#include <immintrin.h>

#define PLATFORM_AVX2 __attribute__((target("avx2")))

namespace platform::base64::avx2 {
namespace {

// Puts the same sixteen bytes in both lanes.
PLATFORM_AVX2 inline __m256i twice(__m128i lane) {
  return _mm256_broadcastsi128_si256(lane);
}

PLATFORM_AVX2 inline __m256i highNibbles(__m256i text) {
  return _mm256_and_si256(_mm256_srli_epi32(text, 4), _mm256_set1_epi8(0x0F));
}

// Returns nonzero bytes for characters outside of the alphabet. Each high nibble maps to one or
// more bits in `high`; `low` maps a low nibble to the bits of the high nibbles that it must not be
// combined with. High nibbles without any character of the alphabet share the bit that is set for
// every low nibble.
PLATFORM_AVX2 inline __m256i clashes(__m256i text) {
  const __m256i high = twice(_mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10,
                                           0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10));
  const __m256i low = twice(_mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                          0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A));
  const __m256i lowNibbles = _mm256_and_si256(text, _mm256_set1_epi8(0x0F));
  return _mm256_and_si256(_mm256_shuffle_epi8(high, highNibbles(text)),
                          _mm256_shuffle_epi8(low, lowNibbles));
}

// Returns a bit for each character outside of the alphabet.
PLATFORM_AVX2 inline std::uint32_t foreign(__m256i text) {
  const __m256i fine = _mm256_cmpeq_epi8(clashes(text), _mm256_setzero_si256());
  return ~static_cast<std::uint32_t>(_mm256_movemask_epi8(fine));
}

// Converts 32 characters of the alphabet to six-bit values: adds an offset by high nibble, with '/'
// as a special case.
PLATFORM_AVX2 inline __m256i sextets(__m256i text) {
  const __m256i offsets =
      twice(_mm_setr_epi8(0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0));
  const __m256i slash = _mm256_cmpeq_epi8(text, _mm256_set1_epi8('/'));
  const __m256i row = _mm256_add_epi8(slash, highNibbles(text));
  return _mm256_add_epi8(text, _mm256_shuffle_epi8(offsets, row));
}

// Packs each group of four sextets into three bytes, and moves all 24 bytes to the front.
PLATFORM_AVX2 inline __m256i packed(__m256i values) {
  const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
  const __m256i quads = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
  const __m256i order =
      twice(_mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
  return _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(quads, order),
                                     _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
}

// Splits twelve bytes at the front of each lane into sixteen sextets.
PLATFORM_AVX2 inline __m256i spread(__m256i bytes) {
  const __m256i order = twice(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
  const __m256i groups = _mm256_shuffle_epi8(bytes, order);
  const __m256i evens = _mm256_and_si256(groups, _mm256_set1_epi32(0x0FC0FC00));
  const __m256i odds = _mm256_and_si256(groups, _mm256_set1_epi32(0x003F03F0));
  return _mm256_or_si256(_mm256_mulhi_epu16(evens, _mm256_set1_epi32(0x04000040)),
                         _mm256_mullo_epi16(odds, _mm256_set1_epi32(0x01000010)));
}

// Converts sextets to characters: adds an offset by the range of the value.
PLATFORM_AVX2 inline __m256i characters(__m256i values) {
  const __m256i offsets =
      twice(_mm_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                          '0' - 52, '0' - 52, '0' - 52, '0' - 52, '+' - 62, '/' - 63, 'A', 0, 0));
  const __m256i range = _mm256_subs_epu8(values, _mm256_set1_epi8(51));
  const __m256i capital =
      _mm256_and_si256(_mm256_cmpgt_epi8(_mm256_set1_epi8(26), values), _mm256_set1_epi8(13));
  return _mm256_add_epi8(values, _mm256_shuffle_epi8(offsets, _mm256_or_si256(range, capital)));
}

PLATFORM_AVX2 inline __m256i load(const char* text) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text));
}

// The starting characters of the blocks of a line. The last block ends with the line and may
// overlap the one before.
struct Blocks {
  std::size_t middle;
  std::size_t last;

  explicit Blocks(std::size_t width) noexcept : middle(width >= 64 ? 32 : 0), last(width - 32) {}
};

PLATFORM_AVX2 inline bool isPlain(const char* line, const Blocks& blocks) {
  const __m256i ends = _mm256_or_si256(clashes(load(line)), clashes(load(line + blocks.last)));
  const __m256i all = _mm256_or_si256(ends, clashes(load(line + blocks.middle)));
  return _mm256_testz_si256(all, all) != 0;
}

PLATFORM_AVX2 inline void decodeBlock(const char* text, std::uint8_t* out) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), packed(sextets(load(text))));
}

bool hasGap(const char* text, const Lines& lines) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, text, sizeof word);
  return (word & lines.gapMask) == lines.gap;
}

}  // namespace

bool available() noexcept {
  return __builtin_cpu_supports("avx2") != 0;
}

PLATFORM_AVX2 Run alphabetRun(const char* text, std::size_t size) noexcept {
  std::size_t offset = 0;
  for (; offset + 32 <= size; offset += 32) {
    const std::uint32_t bad = foreign(load(text + offset));
    if (bad != 0) return {offset + static_cast<std::size_t>(__builtin_ctz(bad)), true};
  }
  return {offset, false};
}

PLATFORM_AVX2 std::size_t regularLines(const char* text, std::size_t size,
                                       const Lines& lines) noexcept {
  const Blocks blocks(lines.width);
  const std::size_t stride = lines.width + lines.gapSize;
  const std::size_t most =
      size < sizeof(std::uint64_t) ? 0 : (size - sizeof(std::uint64_t)) / stride;
  for (std::size_t line = 0; line < most; ++line, text += stride) {
    if (!isPlain(text, blocks) || !hasGap(text + lines.width, lines)) return line;
  }
  return most;
}

PLATFORM_AVX2 void decodeLines(const char* text, std::size_t count, const Lines& lines,
                               std::uint8_t* out) noexcept {
  const Blocks blocks(lines.width);
  const std::size_t stride = lines.width + lines.gapSize;
  const std::size_t bytes = lines.width / 4 * 3;
  for (std::size_t line = 0; line < count; ++line, text += stride, out += bytes) {
    decodeBlock(text, out);
    if (blocks.middle != 0) decodeBlock(text + blocks.middle, out + 24);
    decodeBlock(text + blocks.last, out + blocks.last / 4 * 3);
  }
}

PLATFORM_AVX2 std::size_t decode(const char* text, std::size_t size, std::uint8_t* out) noexcept {
  std::size_t offset = 0;
  for (; offset + 32 <= size; offset += 32, out += 24) decodeBlock(text + offset, out);
  return offset;
}

PLATFORM_AVX2 std::size_t encode(const std::uint8_t* bytes, std::size_t size, std::size_t readable,
                                 char* out) noexcept {
  std::size_t offset = 0;
  for (; offset + 24 <= size && offset + 28 <= readable; offset += 24, out += 32) {
    const auto* from = reinterpret_cast<const __m128i*>(bytes + offset);
    const auto* then = reinterpret_cast<const __m128i*>(bytes + offset + 12);
    const __m256i both = _mm256_set_m128i(_mm_loadu_si128(then), _mm_loadu_si128(from));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), characters(spread(both)));
  }
  return offset;
}

}  // namespace platform::base64::avx2

#else

namespace platform::base64::avx2 {

bool available() noexcept {
  return false;
}
Run alphabetRun(const char*, std::size_t) noexcept {
  return {};
}
std::size_t decode(const char*, std::size_t, std::uint8_t*) noexcept {
  return 0;
}
std::size_t encode(const std::uint8_t*, std::size_t, std::size_t, char*) noexcept {
  return 0;
}
std::size_t regularLines(const char*, std::size_t, const Lines&) noexcept {
  return 0;
}
void decodeLines(const char*, std::size_t, const Lines&, std::uint8_t*) noexcept {}

}  // namespace platform::base64::avx2

#endif
