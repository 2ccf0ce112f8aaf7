#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/network/NSURL.h"

namespace platform {

// One "name=value" of a query; without a value there is no "=". Immutable. Threads: any.
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

// An address in parts, by RFC 3986, that can be put together anew.
// Threads: one at a time.
class NSURLComponents : public Object {
  PLATFORM_CLASS(NSURLComponents)

 public:
  using QueryItems = std::vector<std::shared_ptr<NSURLQueryItem>>;

  // Empty where the text is no address: it does not parse as NSURL does, has brackets outside of
  // the host, or a port that is no number.
  static std::shared_ptr<NSURLComponents> componentsWithString(std::string_view text);

  // The query without percent escapes, split at "&" and each item at its first "="; none where
  // there is no query. What is no UTF-8 without its escapes counts as none or empty.
  std::optional<QueryItems> queryItems() const;
  // Writes the query anew. In names and values everything is percent-encoded but the characters
  // that a query may hold, and of these "&" and "=" are encoded too, since they mean something
  // between items. "+" is left as it is. A name that cannot be encoded becomes empty, a value that
  // cannot be encoded counts as none. None takes the query away.
  void setQueryItems(const std::optional<QueryItems>& items);

  // The parts as one address.
  std::shared_ptr<NSURL> URL() const;

 private:
  URLParts _parts;
};

}  // namespace platform
