#pragma once

#include <cstddef>
#include <cstdint>

// The inner loops of Base64.cpp for processors with AVX2; do not call them on others. Each
// processes whole blocks and returns how far it got. The caller processes the rest.
namespace platform::base64::avx2 {

bool available() noexcept;

// The leading characters in the alphabet. Stops early, less than one block of 32 characters before
// the end.
struct Run {
  std::size_t length = 0;
  bool ended = false;  // whether the character at `length` is not in the alphabet
};
Run alphabetRun(const char* text, std::size_t size) noexcept;

// Lines of `width` characters (at least 32), each followed by a gap of up to eight bytes.
struct Lines {
  std::size_t width = 0;
  std::size_t gapSize = 0;
  std::uint64_t gap = 0;      // the bytes of the gap, the first one lowest
  std::uint64_t gapMask = 0;  // a mask of as many bytes
};
// Returns the number of leading lines that contain only the alphabet and end with their gap. Stops
// before the last lines.
std::size_t regularLines(const char* text, std::size_t size, const Lines& lines) noexcept;
// Decodes that many lines. May write up to 8 more bytes.
void decodeLines(const char* text, std::size_t count, const Lines& lines,
                 std::uint8_t* out) noexcept;

// Decodes blocks of 32 characters of the alphabet into 24 bytes each. May write up to 8 more bytes.
// Returns the number of decoded characters.
std::size_t decode(const char* text, std::size_t size, std::uint8_t* out) noexcept;

// Encodes blocks of 24 bytes into 32 characters each, while 28 bytes can be read. Returns the
// number of encoded bytes.
std::size_t encode(const std::uint8_t* bytes, std::size_t size, std::size_t readable,
                   char* out) noexcept;

}  // namespace platform::base64::avx2
