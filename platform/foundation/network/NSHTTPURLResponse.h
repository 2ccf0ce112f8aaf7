#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/foundation/network/NSURL.h"

namespace platform {

// The response to a request, without its data. Immutable. Threads: any.
class NSURLResponse : public Object {
  PLATFORM_CLASS(NSURLResponse)

 public:
  virtual bool initWithURL(std::shared_ptr<NSURL> url);
  const std::shared_ptr<NSURL>& URL() const noexcept { return _url; }

 private:
  std::shared_ptr<NSURL> _url;
};

// A response with an HTTP status. Immutable. Threads: any.
class NSHTTPURLResponse : public NSURLResponse {
  PLATFORM_CLASS(NSHTTPURLResponse)

 public:
  using NSURLResponse::initWithURL;
  virtual bool initWithURL(std::shared_ptr<NSURL> url, std::int64_t statusCode);
  std::int64_t statusCode() const noexcept { return _statusCode; }

  // Returns the platform's English phrase for a status: "no error" for 200, "not found" for 404. A
  // status without a phrase gets the phrase of its class ("client error"), an invalid status
  // "unknown status".
  static std::string localizedStringForStatusCode(std::int64_t statusCode);

 private:
  std::int64_t _statusCode = 0;
};

}  // namespace platform
