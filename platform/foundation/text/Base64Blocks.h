#pragma once

#include <cstddef>
#include <cstdint>

// The inner loops of Base64.cpp for processors with AVX2; call them only where there is one.
// Each handles whole blocks and says how far it came; the rest is the caller's.
namespace platform::base64::avx2 {

bool available() noexcept;

// Characters of the alphabet at the front of `size` characters. Stops early, at less than a block
// of 32 before the end.
struct Run {
  std::size_t length = 0;
  bool ended = false;  // a character that is not of the alphabet stands at `length`
};
Run alphabetRun(const char* text, std::size_t size) noexcept;

// Lines of `width` characters (at least 32), each with a gap of up to eight bytes after it.
struct Lines {
  std::size_t width = 0;
  std::size_t gapSize = 0;
  std::uint64_t gap = 0;      // its bytes, the first one lowest
  std::uint64_t gapMask = 0;  // as many bytes
};
// The number of lines at the front of the text that are of the alphabet throughout and have their
// gap. Stops early, before the last lines.
std::size_t regularLines(const char* text, std::size_t size, const Lines& lines) noexcept;
// Decodes that many such lines; up to 8 bytes more are written to.
void decodeLines(const char* text, std::size_t count, const Lines& lines,
                 std::uint8_t* out) noexcept;

// Decodes blocks of 32 characters, all of the alphabet, into 24 bytes each; up to 8 bytes more
// are written to. Gives the characters that were decoded.
std::size_t decode(const char* text, std::size_t size, std::uint8_t* out) noexcept;

// Encodes blocks of 24 bytes into 32 characters each while 28 bytes can be read. Gives the bytes
// that were encoded.
std::size_t encode(const std::uint8_t* bytes, std::size_t size, std::size_t readable,
                   char* out) noexcept;

}  // namespace platform::base64::avx2
