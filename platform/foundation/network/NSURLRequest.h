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

// The order of header names, in which letter case does not count (RFC 9110, section 5.1).
struct HeaderNameOrder {
  bool operator()(std::string_view a, std::string_view b) const noexcept;
};
using HTTPHeaderFields = std::map<std::string, std::string, HeaderNameOrder>;

// What a task of a URL session asks for. Threads: one at a time; a task keeps a copy.
class NSMutableURLRequest : public Object {
  PLATFORM_CLASS(NSMutableURLRequest)

 public:
  // The default cache policy, the default time-out and the method "GET". An empty address makes a
  // request that asks for nothing.
  static std::shared_ptr<NSMutableURLRequest> requestWithURL(std::shared_ptr<NSURL> url);
  std::shared_ptr<NSMutableURLRequest> copy() const;

  const std::shared_ptr<NSURL>& URL() const noexcept { return _url; }
  const std::string& HTTPMethod() const noexcept { return _method; }
  NSURLRequestCachePolicy cachePolicy() const noexcept { return _cachePolicy; }
  double timeoutInterval() const noexcept { return _timeoutInterval; }  // seconds

  // A value of none takes the header away.
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
