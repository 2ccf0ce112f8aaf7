#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// An address taken apart as RFC 3986, section 3, says, each part as it stands in the text, percent
// escapes included. A part that is absent is not the same as one that is empty.
struct URLParts {
  std::optional<std::string> scheme;
  std::optional<std::string> user;
  std::optional<std::string> password;
  std::optional<std::string> host;  // absent where there is no "//"
  std::optional<std::string> port;
  std::string path;
  std::optional<std::string> query;
  std::optional<std::string> fragment;

  // The address as one text.
  std::string text() const;
};

// Takes any text apart; what is no address is all path. Takes time in proportion to the length.
URLParts splitURL(std::string_view text);

// Whether every character may stand in an address: the unreserved and reserved characters of RFC
// 2396, section 2, with the brackets of RFC 2732, well-formed percent escapes, and "#" once.
bool isLegalURLText(std::string_view text) noexcept;

}  // namespace platform
