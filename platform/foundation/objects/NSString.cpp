#include "platform/foundation/objects/NSString.h"

#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Exception.h"

namespace platform {
namespace {

constexpr std::size_t escapeLength = 3;  // "%20"

int hexadecimalDigit(char digit) noexcept {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  return -1;
}

void appendEscaped(std::string& text, std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  for (const char each : bytes) {
    const auto byte = static_cast<unsigned char>(each);
    text += '%';
    text += digits[byte >> 4U];
    text += digits[byte & 0x0FU];
  }
}

bool isUtf8(std::string_view text) noexcept {
  for (std::size_t at = 0; at < text.size();) {
    const utf::Decoded character = utf::decode(text, at);
    if (character.length == 0 || utf::isSurrogate(character.scalar)) return false;
    at += character.length;
  }
  return true;
}

}  // namespace

std::string stringByAppendingString(std::string_view text,
                                    const std::optional<std::string>& appended) {
  if (!appended) raiseInvalidArgument("-[__NSCFString stringByAppendingString:]: nil argument");
  return std::string(text) + *appended;
}

std::optional<std::string> stringByAddingPercentEncodingWithAllowedCharacters(
    std::string_view text, const NSCharacterSet& allowed) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const utf::Decoded character = utf::decode(text, at);
    if (character.length == 0 || utf::isSurrogate(character.scalar)) return std::nullopt;
    const std::string_view bytes = text.substr(at, character.length);
    if (allowed.characterIsMember(character.scalar)) {
      result += bytes;
    } else {
      appendEscaped(result, bytes);
    }
    at += character.length;
  }
  return result;
}

bool isPercentEscape(std::string_view text, std::size_t percentOffset) noexcept {
  return text.size() - percentOffset >= escapeLength &&
         hexadecimalDigit(text[percentOffset + 1]) >= 0 &&
         hexadecimalDigit(text[percentOffset + 2]) >= 0;
}

std::optional<std::string> stringByRemovingPercentEncoding(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      result += text[at];
      continue;
    }
    if (!isPercentEscape(text, at)) return std::nullopt;
    result +=
        static_cast<char>(hexadecimalDigit(text[at + 1]) * 16 + hexadecimalDigit(text[at + 2]));
    at += escapeLength - 1;
  }
  if (!isUtf8(result)) return std::nullopt;
  return result;
}

}  // namespace platform
