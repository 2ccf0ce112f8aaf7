#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Base64 as property lists have it: the standard alphabet, padded, in lines. Every function may be
// called from any thread and gives the same result on either path.
namespace platform::base64 {

// `vector` needs a processor with AVX2 and is `scalar` without one.
enum class Path { scalar, vector };
// The fastest path of this machine, but the scalar one where the environment has ZENTROVA_SCALAR.
Path defaultPath() noexcept;

// The length of the run of characters of the alphabet (padding is not among them) at the front.
std::size_t alphabetRun(std::string_view text, Path path) noexcept;

// A property list breaks data at the given indent (in tabs) into lines of this many characters.
constexpr std::size_t lineWidth(std::size_t indent) noexcept {
  return 76 - 8 * (indent < 8 ? indent : 8);
}

// What stands between a start tag and the next '<'.
struct Scan {
  std::size_t length = 0;  // up to the '<', the end of the text or the first bad character
  std::size_t size = 0;    // decoded bytes
  // What is wrong at `length`; null where nothing is.
  const char* problem = nullptr;
  // Set where the text is byte for byte what encodeLines gives for this indent.
  std::optional<std::size_t> indent;
};
// White space may stand anywhere.
Scan scan(std::string_view text, Path path = defaultPath()) noexcept;

// Decodes text that `scan` found good into `out`, which must hold the scan's size and
// decodeSlack bytes more, into which it may write anything.
inline constexpr std::size_t decodeSlack = 8;
void decode(std::string_view text, std::uint8_t* out, Path path = defaultPath()) noexcept;

// The same for text that `scan` found to be what encodeLines gives for that indent.
void decodeLines(std::string_view text, std::size_t indent, std::uint8_t* out,
                 Path path = defaultPath()) noexcept;

// In one line, padded.
std::string encode(std::span<const std::uint8_t> bytes, Path path = defaultPath());

// The size of, and the lines as they stand between the tags of a property list: a line end, lines
// at the indent, each with its end, and the indent of the end tag.
std::size_t encodedLinesSize(std::size_t size, std::size_t indent) noexcept;
void encodeLines(std::span<const std::uint8_t> bytes, std::size_t indent, char* out,
                 Path path = defaultPath()) noexcept;

}  // namespace platform::base64
