#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// A URL split according to RFC 3986, section 3. Parts keep their percent escapes. An absent part
// differs from an empty one.
struct URLParts {
  std::optional<std::string> scheme;
  std::optional<std::string> user;
  std::optional<std::string> password;
  std::optional<std::string> host;  // absent without "//"
  std::optional<std::string> port;
  std::string path;
  std::optional<std::string> query;
  std::optional<std::string> fragment;

  // Joins the parts.
  std::string text() const;
};

// Splits any text; text that is not a URL becomes the path. Runs in linear time.
URLParts splitURL(std::string_view text);

// Returns whether all characters are allowed in a URL: the unreserved and reserved characters of
// RFC 2396, section 2, the brackets of RFC 2732, well-formed percent escapes and one "#".
bool isLegalURLText(std::string_view text) noexcept;

}  // namespace platform
