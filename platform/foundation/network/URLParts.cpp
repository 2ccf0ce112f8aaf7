#include "platform/foundation/network/URLParts.h"

#include "platform/foundation/objects/NSString.h"

namespace platform {
namespace {

bool isLetter(char each) noexcept {
  return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
}

bool isDigit(char each) noexcept {
  return each >= '0' && each <= '9';
}

// Returns the length of the scheme at the start; 0 if there is none.
std::size_t schemeLength(std::string_view text) noexcept {
  if (text.empty() || !isLetter(text[0])) return 0;
  for (std::size_t at = 1; at < text.size(); ++at) {
    const char each = text[at];
    if (each == ':') return at;
    if (!isLetter(each) && !isDigit(each) && each != '+' && each != '-' && each != '.') return 0;
  }
  return 0;
}

// Removes the first `mark` and the text after it, and returns that text.
std::optional<std::string> takeAfter(std::string_view& text, char mark) {
  const std::size_t found = text.find(mark);
  if (found == std::string_view::npos) return std::nullopt;
  std::string result(text.substr(found + 1));
  text = text.substr(0, found);
  return result;
}

void splitUser(std::string_view text, URLParts& parts) {
  parts.password = takeAfter(text, ':');
  parts.user = std::string(text);
}

void splitAuthority(std::string_view text, URLParts& parts) {
  if (const std::size_t sign = text.rfind('@'); sign != std::string_view::npos) {
    splitUser(text.substr(0, sign), parts);
    text.remove_prefix(sign + 1);
  }
  const std::size_t bracket = text.starts_with('[') ? text.find(']') : std::string_view::npos;
  const std::size_t from = bracket == std::string_view::npos ? 0 : bracket;
  if (const std::size_t colon = text.find(':', from); colon != std::string_view::npos) {
    parts.port = std::string(text.substr(colon + 1));
    text = text.substr(0, colon);
  }
  parts.host = std::string(text);
}

}  // namespace

std::string URLParts::text() const {
  std::string result;
  if (scheme) result.append(*scheme).append(":");
  if (host) result += "//";
  if (user) {
    result += *user;
    if (password) result.append(":").append(*password);
    result += '@';
  }
  if (host) result += *host;
  if (port) result.append(":").append(*port);
  result += path;
  if (query) result.append("?").append(*query);
  if (fragment) result.append("#").append(*fragment);
  return result;
}

URLParts splitURL(std::string_view text) {
  URLParts parts;
  if (const std::size_t length = schemeLength(text); length > 0) {
    parts.scheme = std::string(text.substr(0, length));
    text.remove_prefix(length + 1);
  }
  parts.fragment = takeAfter(text, '#');
  parts.query = takeAfter(text, '?');
  if (text.starts_with("//")) {
    text.remove_prefix(2);
    const std::size_t slash = text.find('/');
    splitAuthority(text.substr(0, slash), parts);
    text = slash == std::string_view::npos ? std::string_view() : text.substr(slash);
  }
  parts.path = std::string(text);
  return parts;
}

bool isLegalURLText(std::string_view text) noexcept {
  constexpr std::string_view signs = "-_.!~*'();/?:@&=+$,[]#";
  bool sawFragment = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char each = text[at];
    if (isLetter(each) || isDigit(each)) continue;
    if (each == '%') {
      if (!isPercentEscape(text, at)) return false;
      continue;
    }
    if (signs.find(each) == std::string_view::npos) return false;
    if (each != '#') continue;
    if (sawFragment) return false;
    sawFragment = true;
  }
  return true;
}

}  // namespace platform
