#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

#include "settings/web/RequestCheck.h"
#include "settings/web/SecurityHeaders.h"
#include "settings/web/StaticFiles.h"

namespace settings {

// A finished answer to an HTTP request, Content-Length left to whoever sends it.
struct HttpAnswer {
  unsigned status = 200;
  HttpHeaders headers;
  std::shared_ptr<const std::string> body;  // never null
};

// The request is answered with the image of that hash.
struct ImageWanted {
  std::string hash;
};

// The connection becomes a WebSocket.
struct SocketWanted {};

// The request brings a photo of the user's own: its body is to be read.
struct PhotoWanted {};

// The most that such a body may have, in bytes: what is taken as a photo.
inline constexpr std::uint64_t largestUploadBytes = 64ULL * 1024 * 1024;
inline constexpr const char* uploadTooLarge =
    "The file is larger than 64 MiB, the limit for a photo.";

using Routed = std::variant<HttpAnswer, ImageWanted, SocketWanted, PhotoWanted>;

// What the page server answers to a request. Decides everything that does not need the
// application, so that it can be tested without a network. No answer changes any state.
// Threads: immutable, safe from any.
class PageRoutes {
 public:
  PageRoutes(AccessRules rules, StaticFiles files);

  Routed route(const RequestFacts& request) const;
  // The answer to ImageWanted: a PNG or JPEG that a browser may keep for good, since its name is
  // the hash of its content; 404 for an empty pointer.
  HttpAnswer image(const RequestFacts& request, std::shared_ptr<const std::string> bytes) const;
  // An answer to the page's own program: a JSON text.
  HttpAnswer data(const RequestFacts& request, unsigned status, std::string json) const;
  // Says to the page's program why a photo is refused: {"message": ...}.
  HttpAnswer refusedPhoto(const RequestFacts& request, unsigned status,
                          const std::string& why) const;
  // An answer that says why something is refused, as a small page.
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
