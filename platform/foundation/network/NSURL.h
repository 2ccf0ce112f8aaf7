#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/network/URLParts.h"
#include "platform/foundation/objects/Object.h"

namespace platform {

// A URL, parsed like in system versions up to 16. Text with a character outside of RFC 2396 (plus
// the brackets of RFC 2732), such as a space, a non-ASCII letter or a "%" without two hexadecimal
// digits, is rejected, not corrected. All other text is split according to RFC 3986, section 3.
// Empty text is a valid URL without parts.
//
// Immutable. Threads: any.
class NSURL : public Object {
  PLATFORM_CLASS(NSURL)

 public:
  NSURL() = default;  // the empty URL
  explicit NSURL(std::string text);

  // Returns an empty pointer if the text does not parse.
  static std::shared_ptr<NSURL> URLWithString(std::string_view text);

  const std::string& absoluteString() const noexcept { return _text; }
  const std::optional<std::string>& scheme() const noexcept { return _parts.scheme; }
  // Without percent escapes. None if the part is absent or does not decode to UTF-8.
  std::optional<std::string> host() const;
  std::optional<std::string> user() const;
  // Without percent escapes. Without a trailing slash, except for the root path.
  std::optional<std::string> path() const;
  // With percent escapes, as in the text.
  const std::optional<std::string>& query() const noexcept { return _parts.query; }
  const std::optional<std::string>& fragment() const noexcept { return _parts.fragment; }
  // None if there is no port or it is not a number up to 65535.
  std::optional<std::int64_t> port() const;

  bool isEqual(const Object& other) const override;
  std::string description() const override { return _text; }

 private:
  std::string _text;
  URLParts _parts;
};

}  // namespace platform
