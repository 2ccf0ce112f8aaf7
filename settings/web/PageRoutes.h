#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

#include "settings/web/RequestCheck.h"
#include "settings/web/SecurityHeaders.h"
#include "settings/web/StaticFiles.h"

namespace settings {

// A complete answer to an HTTP request. The sender adds Content-Length.
struct HttpAnswer {
  unsigned status = 200;
  HttpHeaders headers;
  std::shared_ptr<const std::string> body;  // never null
};

// The request must be answered with the image with this hash.
struct ImageWanted {
  std::string hash;
};

// The connection becomes a WebSocket.
struct SocketWanted {};

// The request uploads a photo: its body must be read.
struct PhotoWanted {};

// The size limit of such a body in bytes, which is the limit for a photo.
inline constexpr std::uint64_t largestUploadBytes = 64ULL * 1024 * 1024;
inline constexpr const char* uploadTooLarge =
    "The file is larger than 64 MiB, the limit for a photo.";

using Routed = std::variant<HttpAnswer, ImageWanted, SocketWanted, PhotoWanted>;

// Decides the page server's answer to a request, as far as it does not depend on the application.
// Needs no network, so it can be tested without one. No answer changes any state. Threads:
// immutable, any.
class PageRoutes {
 public:
  PageRoutes(AccessRules rules, StaticFiles files);

  Routed route(const RequestFacts& request) const;
  // The answer to ImageWanted: a PNG or JPEG, which browsers may cache forever because its name is
  // the hash of its content. 404 if the pointer is empty.
  HttpAnswer image(const RequestFacts& request, std::shared_ptr<const std::string> bytes) const;
  // An answer to a script of the page: JSON text.
  HttpAnswer data(const RequestFacts& request, unsigned status, std::string json) const;
  // Tells the page why a photo is refused: {"message": ...}.
  HttpAnswer refusedPhoto(const RequestFacts& request, unsigned status,
                          const std::string& why) const;
  // A small HTML page that says why the request is refused.
  HttpAnswer refusal(const RequestFacts& request, unsigned status, std::string text) const;

 private:
  Routed routePhoto(const RequestFacts& request) const;
  HttpAnswer wrongMethod(const RequestFacts& request, const std::string& allowed) const;
  Routed routeWithSession(const RequestFacts& request) const;
  HttpAnswer exchange(const RequestFacts& request, std::string_view token) const;
  HttpAnswer answer(const RequestFacts& request, unsigned status, std::string type,
                    std::shared_ptr<const std::string> body) const;

  AccessRules _rules;
  StaticFiles _files;
};

}  // namespace settings
