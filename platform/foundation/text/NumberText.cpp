#include "platform/foundation/text/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

namespace platform::number_text {
namespace {

bool isDigit(char c) noexcept {
  return c >= '0' && c <= '9';
}

bool isSpace(char c) noexcept {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

char lower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string_view skipSpace(std::string_view text) noexcept {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  return text;
}

std::string_view trimmed(std::string_view text) noexcept {
  text = skipSpace(text);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

// Removes a leading sign. Returns true for a minus.
bool takeSign(std::string_view& text) noexcept {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool negative = text.front() == '-';
  text.remove_prefix(1);
  return negative;
}

bool equalIgnoringCase(std::string_view text, std::string_view lowerCase) noexcept {
  return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                    [](char a, char b) { return lower(a) == b; });
}

bool isHexadecimal(std::string_view text) noexcept {
  return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

// Returns the leading decimal exponent, limited so that a length can be added to it.
std::int64_t leadingExponent(std::string_view text) noexcept {
  const bool negative = takeSign(text);
  std::int64_t exponent = 0;
  for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
    exponent = std::min<std::int64_t>(exponent * 10 + (text.front() - '0'), 1'000'000'000'000);
  }
  return negative ? -exponent : exponent;
}

// Returns whether an unsigned decimal real outside of the range of a double is too large, not too
// small.
bool isLarge(std::string_view text) noexcept {
  std::int64_t position = 0;  // of the first significant digit, counted left from the point
  bool counts = false;
  bool fraction = false;
  std::size_t i = 0;
  for (; i < text.size() && (isDigit(text[i]) || text[i] == '.'); ++i) {
    if (text[i] == '.') {
      fraction = true;
      continue;
    }
    counts = counts || text[i] != '0';
    if (counts && !fraction) ++position;
    if (!counts && fraction) --position;
  }
  if (i < text.size() && lower(text[i]) == 'e') position += leadingExponent(text.substr(i + 1));
  return position > 0;
}

struct Real {
  double value = 0.0;
  std::size_t length = 0;  // of the parsed text
};

// Reads a leading unsigned decimal real.
Real readReal(std::string_view text) noexcept {
  if (text.empty() || !(isDigit(text.front()) || text.front() == '.')) return {};
  Real real;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), real.value);
  if (result.ec == std::errc::invalid_argument) return {};
  real.length = static_cast<std::size_t>(result.ptr - text.data());
  if (result.ec == std::errc::result_out_of_range) {
    real.value = isLarge(text.substr(0, real.length)) ? std::numeric_limits<double>::infinity() : 0;
  }
  return real;
}

// Formats a finite number with "%.<digits>g".
template <class Real>
std::string general(Real value, int digits) {
  std::array<char, 40> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::general, digits);
  return {buffer.data(), result.ptr};
}

template <class Real>
std::string shortest(Real value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
  for (int digits = std::numeric_limits<Real>::digits10;; ++digits) {
    std::string text = general(value, digits);
    Real back = 0;
    std::from_chars(text.data(), text.data() + text.size(), back);
    if (back == value || digits >= std::numeric_limits<Real>::max_digits10) return text;
  }
}

using Days = std::chrono::sys_days;

// The day of the reference date.
constexpr Days referenceDay = std::chrono::year(2001) / 1 / 1;

// The years with four digits.
constexpr std::chrono::year firstYear(1);
constexpr std::chrono::year yearAbove(10'000);

constexpr std::chrono::seconds sinceReference(Days day) noexcept {
  return day - referenceDay;
}

// Reads `count` digits at `offset`. Returns a number that is always out of range if there is any
// other character.
unsigned digitsAt(std::string_view text, std::size_t offset, std::size_t count) noexcept {
  unsigned value = 0;
  for (std::size_t i = offset; i < offset + count; ++i) {
    if (!isDigit(text[i])) return std::numeric_limits<unsigned>::max();
    value = value * 10 + static_cast<unsigned>(text[i] - '0');
  }
  return value;
}

}  // namespace

std::int64_t leadingInteger(std::string_view text, std::int64_t lowest,
                            std::int64_t highest) noexcept {
  text = skipSpace(text);
  const bool negative = takeSign(text);
  const std::uint64_t bound =
      negative ? 0 - static_cast<std::uint64_t>(lowest) : static_cast<std::uint64_t>(highest);
  std::uint64_t magnitude = 0;
  for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
    const auto digit = static_cast<std::uint64_t>(text.front() - '0');
    if (magnitude > (bound - digit) / 10) {
      magnitude = bound;
      break;
    }
    magnitude = magnitude * 10 + digit;
  }
  return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

double leadingReal(std::string_view text) noexcept {
  text = skipSpace(text);
  const bool negative = takeSign(text);
  const double value = readReal(text).value;
  return negative ? -value : value;
}

bool leadingTruth(std::string_view text) noexcept {
  text = skipSpace(text);
  takeSign(text);
  while (!text.empty() && text.front() == '0') text.remove_prefix(1);
  if (text.empty()) return false;
  const char first = lower(text.front());
  return first == 'y' || first == 't' || (first >= '1' && first <= '9');
}

namespace {

// Fast path: up to 18 digits and nothing else, the usual form of integers.
bool parsePlainInteger(std::string_view text, std::uint64_t& magnitude) noexcept {
  if (text.empty() || text.size() > 18) return false;
  magnitude = 0;
  for (const char c : text) {
    if (!isDigit(c)) return false;
    magnitude = magnitude * 10 + static_cast<std::uint64_t>(c - '0');
  }
  return true;
}

}  // namespace

IntegerProblem parseInteger(std::string_view text, Integer& result) noexcept {
  if (parsePlainInteger(text, result.magnitude)) {
    result.negative = false;
    return IntegerProblem::none;
  }
  text = trimmed(text);
  result.negative = takeSign(text);
  const bool hexadecimal = isHexadecimal(text);
  if (hexadecimal) text.remove_prefix(2);
  if (text.empty() || text.front() == '-') return IntegerProblem::malformed;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, result.magnitude, hexadecimal ? 16 : 10);
  if (parsed.ec == std::errc::invalid_argument || parsed.ptr != end) {
    return IntegerProblem::malformed;
  }
  constexpr std::uint64_t lowest = std::uint64_t{1} << 63U;
  const bool outside =
      parsed.ec == std::errc::result_out_of_range || (result.negative && result.magnitude > lowest);
  return outside ? IntegerProblem::outOfRange : IntegerProblem::none;
}

std::optional<double> parseReal(std::string_view text) noexcept {
  text = trimmed(text);
  const bool negative = takeSign(text);
  if (equalIgnoringCase(text, "nan")) return std::nan("");
  if (equalIgnoringCase(text, "inf") || equalIgnoringCase(text, "infinity")) {
    return std::copysign(std::numeric_limits<double>::infinity(), negative ? -1.0 : 1.0);
  }
  const Real real = readReal(text);
  if (real.length == 0 || real.length != text.size()) return std::nullopt;
  return negative ? -real.value : real.value;
}

std::size_t formatReal(double value, char* out) noexcept {
  if (std::isfinite(value) && value != 0.0) {
    return static_cast<std::size_t>(std::to_chars(out, out + longestReal, value,
                                                  std::chars_format::general,
                                                  std::numeric_limits<double>::max_digits10)
                                        .ptr -
                                    out);
  }
  const std::string_view name = std::isnan(value) ? "nan"
                                : value == 0.0    ? "0.0"
                                : value > 0       ? "+infinity"
                                                  : "-infinity";
  return name.copy(out, name.size());
}

std::string formatReal(double value) {
  std::array<char, longestReal> buffer{};
  return {buffer.data(), formatReal(value, buffer.data())};
}

std::string formatShortest(double value) {
  return shortest(value);
}

std::string formatShortest(float value) {
  return shortest(value);
}

std::optional<double> parseDate(std::string_view text) noexcept {
  text = trimmed(text);
  constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ";
  if (text.size() != form.size()) return std::nullopt;
  for (std::size_t i = 0; i < form.size(); ++i) {
    if (form[i] != 'd' && form[i] != text[i]) return std::nullopt;
  }
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(digitsAt(text, 0, 4))),
                                         std::chrono::month(digitsAt(text, 5, 2)),
                                         std::chrono::day(digitsAt(text, 8, 2)));
  const unsigned hour = digitsAt(text, 11, 2);
  const unsigned minute = digitsAt(text, 14, 2);
  const unsigned second = digitsAt(text, 17, 2);
  if (!date.ok() || date.year() < firstYear || hour > 23 || minute > 59 || second > 59) {
    return std::nullopt;
  }
  const std::chrono::seconds time = sinceReference(date) + std::chrono::hours(hour) +
                                    std::chrono::minutes(minute) + std::chrono::seconds(second);
  return static_cast<double>(time.count());
}

std::optional<std::string> formatDate(double secondsSinceReferenceDate) {
  constexpr auto lowest = static_cast<double>(sinceReference(firstYear / 1 / 1).count());
  constexpr auto above = static_cast<double>(sinceReference(yearAbove / 1 / 1).count());
  const double whole = std::floor(secondsSinceReferenceDate);
  if (!(whole >= lowest && whole < above)) return std::nullopt;
  const std::chrono::sys_seconds time =
      referenceDay + std::chrono::seconds(static_cast<std::int64_t>(whole));
  const Days day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  std::array<char, 80> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return buffer.data();
}

}  // namespace platform::number_text
