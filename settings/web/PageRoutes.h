#pragma once

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

using Routed = std::variant<HttpAnswer, ImageWanted, SocketWanted>;

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
  // An answer that says why something is refused, as a small page.
  HttpAnswer refusal(const RequestFacts& request, unsigned status, std::string text) const;

 private:
  Routed routeWithSession(const RequestFacts& request) const;
  HttpAnswer exchange(const RequestFacts& request, std::string_view token) const;
  HttpAnswer answer(const RequestFacts& request, unsigned status, std::string type,
                    std::shared_ptr<const std::string> body) const;

  AccessRules _rules;
  StaticFiles _files;
};

}  // namespace settings
