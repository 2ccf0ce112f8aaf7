#include "platform/foundation/log/LogFormat.h"

#include <array>
#include <cstdio>

namespace platform {

namespace {

// A "%..." directive in a format.
struct Directive {
  std::string_view conversion;  // "@", "d", "i", "u", "x", "s", "f" or "%"; empty if unknown
  std::string_view precision;   // digits after the point; empty if absent
  std::size_t length = 0;       // of the whole directive
};

std::size_t skip(std::string_view text, std::size_t from, std::string_view characters) {
  const std::size_t end = text.find_first_not_of(characters, from);
  return end == std::string_view::npos ? text.size() : end;
}

Directive parseDirective(std::string_view text) {
  Directive directive;
  std::size_t at = 1;
  if (at < text.size() && text[at] == '{') {
    const std::size_t close = text.find('}', at);
    if (close == std::string_view::npos) return directive;
    at = close + 1;
  }
  at = skip(text, at, "-+ #0123456789");
  if (at < text.size() && text[at] == '.') {
    const std::size_t end = skip(text, at + 1, "0123456789");
    directive.precision = text.substr(at + 1, end - at - 1);
    at = end;
  }
  at = skip(text, at, "hlqztj");
  if (at >= text.size()) return directive;
  constexpr std::string_view known = "@diuxsf%";
  if (known.find(text[at]) == std::string_view::npos) return directive;
  directive.conversion = text.substr(at, 1);
  directive.length = at + 1;
  return directive;
}

int precisionOf(std::string_view digits, int standard) {
  if (digits.empty()) return standard;
  int precision = 0;
  for (const char digit : digits) {
    precision = precision * 10 + (digit - '0');
    if (precision > 100) return 100;
  }
  return precision;
}

std::string realText(double value, std::string_view digits) {
  std::array<char, 512> text{};
  const int size = std::snprintf(text.data(), text.size(), "%.*f", precisionOf(digits, 6), value);
  return {text.data(), static_cast<std::size_t>(size)};
}

std::string hexadecimalText(std::uint64_t value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%llx", static_cast<unsigned long long>(value));
  return text.data();
}

std::string convert(const Directive& directive, const Value& value) {
  const bool number = value.isNumber() || value.isNone() || value.isString();
  switch (directive.conversion.front()) {
    case 'd':
    case 'i':
      return number ? std::to_string(value.integerValue()) : value.description();
    case 'u':
      return number ? std::to_string(value.unsignedIntegerValue()) : value.description();
    case 'x':
      return number ? hexadecimalText(value.unsignedIntegerValue()) : value.description();
    case 'f':
      return number ? realText(value.doubleValue(), directive.precision) : value.description();
    default:
      return value.description();
  }
}

}  // namespace

std::string formatString(std::string_view format, std::initializer_list<Value> arguments) {
  std::string text;
  const Value* next = arguments.begin();
  while (!format.empty()) {
    const std::size_t percent = format.find('%');
    text += format.substr(0, percent);
    if (percent == std::string_view::npos) break;
    format.remove_prefix(percent);
    const Directive directive = parseDirective(format);
    if (directive.conversion.empty()) {
      text += '%';
      format.remove_prefix(1);
      continue;
    }
    format.remove_prefix(directive.length);
    if (directive.conversion == "%") {
      text += '%';
    } else {
      text += convert(directive, next != arguments.end() ? *next++ : Value());
    }
  }
  return text;
}

}  // namespace platform
