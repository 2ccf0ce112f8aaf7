#include "appearance/ColorCodec.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>

#include "platform/foundation/text/Utf.h"

namespace zentrova {

using platform::ColorComponents;
using platform::UIColor;

namespace {

struct NamedColor {
  std::string_view text;
  std::string_view systemName;
};

constexpr std::array namedColors{
    NamedColor{"red", "systemRedColor"},         NamedColor{"orange", "systemOrangeColor"},
    NamedColor{"yellow", "systemYellowColor"},   NamedColor{"green", "systemGreenColor"},
    NamedColor{"blue", "systemBlueColor"},       NamedColor{"teal", "systemTealColor"},
    NamedColor{"indigo", "systemIndigoColor"},   NamedColor{"purple", "systemPurpleColor"},
    NamedColor{"pink", "systemPinkColor"},       NamedColor{"default", "labelColor"},
    NamedColor{"tertiary", "tertiaryLabelColor"}};

// --- Reading ---

constexpr std::size_t shortLength = 3;   // RGB
constexpr std::size_t opaqueLength = 6;  // RRGGBB

// The text with each character doubled.
std::string doubled(std::string_view text) {
  namespace utf = platform::utf;
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = std::max<std::size_t>(1, utf::decode(text, at).length);
    result.append(text.substr(at, length)).append(text.substr(at, length));
    at += length;
  }
  return result;
}

// The digits that the scanner reads. Lengths count UTF-16 units.
std::string withoutShortForms(std::string_view text) {
  std::string digits(text);
  std::erase(digits, '#');
  if (platform::utf::codeUnits(digits) == shortLength) digits = doubled(digits);
  if (platform::utf::codeUnits(digits) == opaqueLength) digits += "ff";
  return digits;
}

// The white space and line ends of Unicode.
bool isSpace(char32_t scalar) {
  constexpr std::array<char32_t, 9> others{0x20,   0x85,   0xA0,   0x1680, 0x2028,
                                           0x2029, 0x202F, 0x205F, 0x3000};
  return (scalar >= 0x09 && scalar <= 0x0D) || (scalar >= 0x2000 && scalar <= 0x200A) ||
         std::ranges::find(others, scalar) != others.end();
}

std::string_view withoutLeadingSpace(std::string_view text) {
  while (!text.empty()) {
    const auto first = platform::utf::decode(text, 0);
    if (first.length == 0 || !isSpace(first.scalar)) break;
    text.remove_prefix(first.length);
  }
  return text;
}

std::optional<std::uint32_t> hexDigit(char character) {
  if (character >= '0' && character <= '9') return static_cast<std::uint32_t>(character - '0');
  if (character >= 'a' && character <= 'f') return static_cast<std::uint32_t>(character - 'a' + 10);
  if (character >= 'A' && character <= 'F') return static_cast<std::uint32_t>(character - 'A' + 10);
  return std::nullopt;
}

std::uint32_t scanHexInt(std::string_view text) {
  text = withoutLeadingSpace(text);
  if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
  constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();
  std::uint32_t value = 0;
  for (const char character : text) {
    const auto digit = hexDigit(character);
    if (!digit) break;
    if (value > largest >> 4U) return largest;
    value = value << 4U | *digit;
  }
  return value;
}

// Divides in single precision, so that a colour has the same components everywhere.
double component(std::uint32_t value, unsigned shift) {
  const auto byte = static_cast<float>((value >> shift) & 0xFFU);
  return static_cast<double>(byte / 255.0F);
}

// --- Writing ---

// Rounds to the nearest integer, halves away from zero. Saturates; NaN gives 0.
std::int64_t rounded(float value) {
  if (std::isnan(value)) return 0;
  const float whole = std::round(value);
  if (whole >= 0x1p63F) return std::numeric_limits<std::int64_t>::max();
  if (whole < -0x1p63F) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(whole);
}

// At least two digits; 64-bit two's complement for a negative number.
std::string hexText(std::int64_t value) {
  std::array<char, 17> text{};
  std::snprintf(text.data(), text.size(), "%02llX", static_cast<unsigned long long>(value));
  return text.data();
}

}  // namespace

std::shared_ptr<UIColor> colorFromValueString(std::string_view text) {
  const auto* const named = std::ranges::find(namedColors, text, &NamedColor::text);
  if (named != namedColors.end()) return UIColor::systemColorNamed(named->systemName);
  const std::uint32_t value = scanHexInt(withoutShortForms(text));
  return UIColor::colorWithRed(component(value, 24), component(value, 16), component(value, 8),
                               component(value, 0));
}

std::string valueStringFromColor(const ColorComponents& color) {
  std::string text;
  for (const double value : {color.red, color.green, color.blue, color.alpha}) {
    text += hexText(rounded(static_cast<float>(value * 255.0)));
  }
  return text;
}

}  // namespace zentrova
