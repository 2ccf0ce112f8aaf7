#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/network/NSURL.h"

namespace platform {

// One "name=value" of a query, without "=" if there is no value. Immutable. Threads: any.
class NSURLQueryItem : public Object {
  PLATFORM_CLASS(NSURLQueryItem)

 public:
  static std::shared_ptr<NSURLQueryItem> queryItemWithName(std::string name,
                                                           std::optional<std::string> value);

  const std::string& name() const noexcept { return _name; }
  const std::optional<std::string>& value() const noexcept { return _value; }

 private:
  std::string _name;
  std::optional<std::string> _value;
};

// The editable parts of a URL, according to RFC 3986. Threads: one at a time.
class NSURLComponents : public Object {
  PLATFORM_CLASS(NSURLComponents)

 public:
  using QueryItems = std::vector<std::shared_ptr<NSURLQueryItem>>;

  // Returns an empty pointer if the text is not a URL: NSURL cannot parse it, it has brackets
  // outside of the host, or the port is not a number.
  static std::shared_ptr<NSURLComponents> componentsWithString(std::string_view text);

  // Returns the query without percent escapes, split at "&", and each item at its first "="; none
  // if there is no query. A name that does not decode to UTF-8 becomes empty, such a value becomes
  // none.
  std::optional<QueryItems> queryItems() const;
  // Replaces the query; none removes it. Names and values are percent-encoded, except for
  // characters allowed in a query. "&" and "=" are encoded too, because they separate items; "+" is
  // not. A name that cannot be encoded becomes empty, such a value becomes none.
  void setQueryItems(const std::optional<QueryItems>& items);

  // Joins the parts.
  std::shared_ptr<NSURL> URL() const;

 private:
  URLParts _parts;
};

}  // namespace platform
