#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers and dates as text, in no locale. Every function may be called from any thread.
namespace platform::number_text {

// What the platform's strings answer for the number at their start: white space and a sign are
// passed over, what follows the digits is ignored, a value beyond the bounds becomes the bound,
// and 0 where there is no digit.
std::int64_t leadingInteger(std::string_view text, std::int64_t lowest,
                            std::int64_t highest) noexcept;
// The same for a real, infinite where it is too large.
double leadingReal(std::string_view text) noexcept;
// True where a Y, y, T, t or a digit from 1 to 9 comes after white space, a sign and zeros.
bool leadingTruth(std::string_view text) noexcept;

// All of the text, white space around it passed over, as a decimal or (0x) hexadecimal integer
// with an optional sign. `negative` tells the sign of the magnitude.
struct Integer {
  std::uint64_t magnitude = 0;
  bool negative = false;
};
enum class IntegerProblem { none, malformed, outOfRange };
// From -2^63 to 2^64-1.
IntegerProblem parseInteger(std::string_view text, Integer& result) noexcept;

// All of the text, white space around it passed over: a decimal real, or nan, inf, infinity with
// an optional sign, in any case of letters. Too large a number is infinite, too small a one zero,
// and nan has no sign, as it has none where it is written.
std::optional<double> parseReal(std::string_view text) noexcept;

// "%.17g", zero of either sign as "0.0", "nan", "+infinity", "-infinity".
std::string formatReal(double value);
// The same into a buffer; gives the size.
inline constexpr std::size_t longestReal = 32;
std::size_t formatReal(double value, char* out) noexcept;
// The fewest digits that give the value back, in the style of "%g".
std::string formatShortest(double value);
std::string formatShortest(float value);

// "YYYY-MM-DDTHH:MM:SSZ" in the Gregorian calendar, white space around it passed over; seconds
// since 2001-01-01 00:00:00 UTC.
std::optional<double> parseDate(std::string_view text) noexcept;
// The same form, to the second that the time lies in. Empty for NaN and where the year is not
// from 1 to 9999.
std::optional<std::string> formatDate(double secondsSinceReferenceDate);

}  // namespace platform::number_text
