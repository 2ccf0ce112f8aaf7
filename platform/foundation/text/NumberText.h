#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Converts numbers and dates to and from text, independent of the locale. Threads: any.
namespace platform::number_text {

// Parses a leading integer like the platform's strings: skips white space, accepts a sign, and
// ignores text after the digits. Values out of range are clamped. Returns 0 without digits.
std::int64_t leadingInteger(std::string_view text, std::int64_t lowest,
                            std::int64_t highest) noexcept;
// Parses a leading real in the same way. Returns infinity if it is too large.
double leadingReal(std::string_view text) noexcept;
// Returns true if a Y, y, T, t or a digit from 1 to 9 follows white space, a sign and zeros.
bool leadingTruth(std::string_view text) noexcept;

// The whole text, without white space around it, as a decimal or hexadecimal (0x) integer with an
// optional sign. `negative` is the sign of the magnitude.
struct Integer {
  std::uint64_t magnitude = 0;
  bool negative = false;
};
enum class IntegerProblem { none, malformed, outOfRange };
// Accepts -2^63 to 2^64-1.
IntegerProblem parseInteger(std::string_view text, Integer& result) noexcept;

// Parses the whole text, without white space around it: a decimal real, nan, inf or infinity, in
// any case and with an optional sign. Overflow becomes infinity, underflow becomes zero. The sign
// of nan is dropped, because it is not written either.
std::optional<double> parseReal(std::string_view text) noexcept;

// Formats with "%.17g", except for zero ("0.0", with either sign), "nan", "+infinity" and
// "-infinity".
std::string formatReal(double value);
// Like formatReal, but writes to a buffer and returns the size.
inline constexpr std::size_t longestReal = 32;
std::size_t formatReal(double value, char* out) noexcept;
// Formats with the fewest digits that parse to the same value, in the style of "%g".
std::string formatShortest(double value);
std::string formatShortest(float value);

// Parses "YYYY-MM-DDTHH:MM:SSZ" in the Gregorian calendar, with optional white space around it.
// Returns seconds since 2001-01-01 00:00:00 UTC.
std::optional<double> parseDate(std::string_view text) noexcept;
// Formats in the same form, rounded down to seconds. Empty for NaN and for years outside of 1 to
// 9999.
std::optional<std::string> formatDate(double secondsSinceReferenceDate);

}  // namespace platform::number_text
