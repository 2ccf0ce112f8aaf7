#include "platform/foundation/network/NSURL.h"

#include <charconv>

#include "platform/foundation/objects/NSString.h"

namespace platform {
namespace {

std::optional<std::string> decoded(const std::optional<std::string>& part) {
  return part ? stringByRemovingPercentEncoding(*part) : std::nullopt;
}

}  // namespace

NSURL::NSURL(std::string text) : _text(std::move(text)), _parts(splitURL(_text)) {}

std::shared_ptr<NSURL> NSURL::URLWithString(std::string_view text) {
  return isLegalURLText(text) ? std::make_shared<NSURL>(std::string(text)) : nullptr;
}

std::optional<std::string> NSURL::host() const {
  return decoded(_parts.host);
}

std::optional<std::string> NSURL::user() const {
  return decoded(_parts.user);
}

std::optional<std::string> NSURL::path() const {
  std::string_view path = _parts.path;
  if (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  return stringByRemovingPercentEncoding(path);
}

std::optional<std::int64_t> NSURL::port() const {
  constexpr std::int64_t largest = 65535;
  if (!_parts.port) return std::nullopt;
  const std::string& text = *_parts.port;
  std::int64_t number = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  if (!whole || number < 0 || number > largest) return std::nullopt;
  return number;
}

bool NSURL::isEqual(const Object& other) const {
  const auto* url = dynamic_cast<const NSURL*>(&other);
  return url != nullptr && url->_text == _text;
}

}  // namespace platform
