#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/network/URLParts.h"
#include "platform/foundation/objects/Object.h"

namespace platform {

// An address. It is read as the platform's system versions up to 16 read one: a text that holds a
// character which RFC 2396 (with the brackets of RFC 2732) does not know, such as a blank, a letter
// beyond ASCII or a "%" without two digits, is none and is not mended; everything else is taken
// apart as RFC 3986, section 3, says. The empty text is an address without any part.
//
// Immutable. Threads: any.
class NSURL : public Object {
  PLATFORM_CLASS(NSURL)

 public:
  NSURL() = default;  // the empty address
  explicit NSURL(std::string text);

  // Empty where the text does not parse.
  static std::shared_ptr<NSURL> URLWithString(std::string_view text);

  const std::string& absoluteString() const noexcept { return _text; }
  const std::optional<std::string>& scheme() const noexcept { return _parts.scheme; }
  // Without percent escapes; none where the part is absent or is no UTF-8 without them.
  std::optional<std::string> host() const;
  std::optional<std::string> user() const;
  // Without percent escapes and without a slash at its end, but for that of the root path.
  std::optional<std::string> path() const;
  // As they stand in the text.
  const std::optional<std::string>& query() const noexcept { return _parts.query; }
  const std::optional<std::string>& fragment() const noexcept { return _parts.fragment; }
  // None where there is no number, or none up to 65535.
  std::optional<std::int64_t> port() const;

  bool isEqual(const Object& other) const override;
  std::string description() const override { return _text; }

 private:
  std::string _text;
  URLParts _parts;
};

}  // namespace platform
