#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/text/NumberText.h"
#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

namespace platform {
namespace {

constexpr std::size_t indentWidth = 4;

template <class... Arguments>
std::string formatted(const char* format, Arguments... arguments) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, arguments...);
  return buffer.data();
}

bool needsNoQuotes(std::string_view text) {
  const auto plain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || c == '/' || c == ':' || c == '.';
  };
  return !text.empty() && std::all_of(text.begin(), text.end(), plain);
}

std::string escapedUnits(char32_t scalar) {
  if (scalar < 0x10000) return formatted("\\U%04x", static_cast<unsigned>(scalar));
  const char32_t rest = scalar - 0x10000;
  return escapedUnits(0xD800U | (rest >> 10U)) + escapedUnits(0xDC00U | (rest & 0x3FFU));
}

std::string escaped(char32_t scalar) {
  switch (scalar) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    case '\t':
      return "\\t";
    case '\r':
      return "\\r";
    default:
      if (scalar >= 0x80) return escapedUnits(scalar);
      if (scalar < 0x20 || scalar == 0x7F) {
        return formatted("\\%03o", static_cast<unsigned>(scalar));
      }
      return std::string(1, static_cast<char>(scalar));
  }
}

std::string quoted(std::string_view text) {
  if (needsNoQuotes(text)) return std::string(text);
  std::string result = "\"";
  for (std::size_t offset = 0; offset < text.size();) {
    const utf::Decoded character = utf::decode(text, offset);
    offset += std::max<std::size_t>(character.length, 1);
    result += escaped(character.length == 0 ? 0xFFFD : character.scalar);
  }
  return result + "\"";
}

// Prints "{length = 4, bytes = 0xdeadbeef}". Long data is abbreviated to both ends.
std::string describe(const Data& data) {
  constexpr std::size_t shown = 24;
  constexpr std::size_t head = 16;
  constexpr std::size_t tail = 8;
  const auto bytes = data.bytes();
  std::string text = formatted("{length = %zu, bytes = 0x", bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes.size() > shown && i == head) {
      text += " ... ";
      i = bytes.size() - tail;
    }
    text += formatted("%02x", static_cast<unsigned>(bytes[i]));
  }
  return text + "}";
}

std::string describe(Date date) {
  const auto text = number_text::formatDate(date.secondsSinceReferenceDate);
  if (!text) return number_text::formatShortest(date.secondsSinceReferenceDate);
  return text->substr(0, 10) + " " + text->substr(11, 8) + " +0000";
}

std::string describeScalar(const Value& value) {
  switch (value.kind()) {
    case ValueKind::boolean:
      return value.boolValue() ? "1" : "0";
    case ValueKind::integer:
      return std::to_string(value.integerValue());
    case ValueKind::unsignedInteger:
      return std::to_string(value.unsignedIntegerValue());
    case ValueKind::single:
      return number_text::formatShortest(value.floatValue());
    case ValueKind::real:
      return number_text::formatShortest(value.doubleValue());
    case ValueKind::data:
      return describe(*value.asData());
    case ValueKind::date:
      return describe(*value.asDate());
    case ValueKind::object:
      return value.asObject()->description();
    default:
      return "(null)";
  }
}

std::string describe(const Value& value, std::size_t depth);

std::string describe(const Array& array, std::size_t depth) {
  const std::string indent(depth * indentWidth, ' ');
  std::string text = "(\n";
  for (std::size_t i = 0; i < array.size(); ++i) {
    text += indent + std::string(indentWidth, ' ') + describe(array[i], depth + 1);
    text += i + 1 < array.size() ? ",\n" : "\n";
  }
  return text + indent + ")";
}

std::string describe(const Dictionary& dictionary, std::size_t depth) {
  const std::string indent(depth * indentWidth, ' ');
  std::string text = "{\n";
  for (const auto& [key, value] : dictionary) {
    text += indent + std::string(indentWidth, ' ') + quoted(key) + " = ";
    text += describe(value, depth + 1) + ";\n";
  }
  return text + indent + "}";
}

// Prints an element of a list. Strings are quoted if necessary.
std::string describe(const Value& value, std::size_t depth) {
  if (const Array* array = value.asArray()) return describe(*array, depth);
  if (const Dictionary* dictionary = value.asDictionary()) return describe(*dictionary, depth);
  if (const auto text = value.asString()) return quoted(*text);
  const std::string scalar = describeScalar(value);
  return value.isNumber() && depth > 0 && !needsNoQuotes(scalar) ? "\"" + scalar + "\"" : scalar;
}

}  // namespace

std::string Value::description() const {
  if (const auto text = asString()) return std::string(*text);
  return describe(*this, 0);
}

}  // namespace platform
