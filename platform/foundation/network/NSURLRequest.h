#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/network/NSURL.h"

namespace platform {

enum class NSURLRequestCachePolicy : std::uint8_t { useProtocolCachePolicy = 0 };

// Orders header names case-insensitively (RFC 9110, section 5.1).
struct HeaderNameOrder {
  bool operator()(std::string_view a, std::string_view b) const noexcept;
};
using HTTPHeaderFields = std::map<std::string, std::string, HeaderNameOrder>;

// The request of a URL session task. A task keeps a copy. Threads: one at a time.
class NSMutableURLRequest : public Object {
  PLATFORM_CLASS(NSMutableURLRequest)

 public:
  // Makes a GET request with the default cache policy and timeout. The URL may be an empty pointer.
  static std::shared_ptr<NSMutableURLRequest> requestWithURL(std::shared_ptr<NSURL> url);
  std::shared_ptr<NSMutableURLRequest> copy() const;

  const std::shared_ptr<NSURL>& URL() const noexcept { return _url; }
  const std::string& HTTPMethod() const noexcept { return _method; }
  NSURLRequestCachePolicy cachePolicy() const noexcept { return _cachePolicy; }
  double timeoutInterval() const noexcept { return _timeoutInterval; }  // in seconds

  // None removes the header.
  void setValue(const std::optional<std::string>& value, const std::string& headerField);
  std::optional<std::string> valueForHTTPHeaderField(std::string_view headerField) const;
  const HTTPHeaderFields& allHTTPHeaderFields() const noexcept { return _headers; }

  static constexpr double defaultTimeoutInterval = 60;

 private:
  std::shared_ptr<NSURL> _url;
  std::string _method = "GET";
  NSURLRequestCachePolicy _cachePolicy = NSURLRequestCachePolicy::useProtocolCachePolicy;
  double _timeoutInterval = defaultTimeoutInterval;
  HTTPHeaderFields _headers;
};

}  // namespace platform
