#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Base64 as used in property lists: the standard alphabet, padded, in lines. All paths return the
// same results. Threads: any.
namespace platform::base64 {

// `vector` needs a processor with AVX2; without it, it is the same as `scalar`.
enum class Path { scalar, vector };
// Returns the fastest path of this machine, or `scalar` if ZENTROVA_SCALAR is set in the
// environment.
Path defaultPath() noexcept;

// Returns the number of leading characters in the alphabet, which excludes padding.
std::size_t alphabetRun(std::string_view text, Path path) noexcept;

// Returns the number of characters in a line of data in a property list at the given indent (in
// tabs).
constexpr std::size_t lineWidth(std::size_t indent) noexcept {
  return 76 - 8 * (indent < 8 ? indent : 8);
}

// The text between a start tag and the next '<'.
struct Scan {
  std::size_t length = 0;  // up to the '<', the first invalid character or the end of the text
  std::size_t size = 0;    // in decoded bytes
  // What is wrong at `length`; null if the text is valid.
  const char* problem = nullptr;
  // Set if the text equals the output of encodeLines for this indent, byte for byte.
  std::optional<std::size_t> indent;
};
// White space is accepted anywhere.
Scan scan(std::string_view text, Path path = defaultPath()) noexcept;

// Decodes text that `scan` accepted into `out`. `out` needs decodeSlack bytes more than the scan's
// size; they may be overwritten.
inline constexpr std::size_t decodeSlack = 8;
void decode(std::string_view text, std::uint8_t* out, Path path = defaultPath()) noexcept;

// Decodes text for which `scan` reported that indent.
void decodeLines(std::string_view text, std::size_t indent, std::uint8_t* out,
                 Path path = defaultPath()) noexcept;

// Encodes in one line, padded.
std::string encode(std::span<const std::uint8_t> bytes, Path path = defaultPath());

// Encodes in lines as between the tags of a property list: a line end, lines at the indent, each
// with a line end, and the indent of the end tag. encodedLinesSize returns the size of that text.
std::size_t encodedLinesSize(std::size_t size, std::size_t indent) noexcept;
void encodeLines(std::span<const std::uint8_t> bytes, std::size_t indent, char* out,
                 Path path = defaultPath()) noexcept;

}  // namespace platform::base64
