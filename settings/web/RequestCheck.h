#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace settings {

// The parts of an HTTP request that the page server checks.
struct RequestFacts {
  std::string method;
  std::string target;                // as sent: "/?token=..."
  std::vector<std::string> hosts;    // all Host headers; there must be exactly one
  std::vector<std::string> origins;  // all Origin headers; there may be at most one
  std::vector<std::string> cookies;  // all Cookie headers
  bool wantsSocket = false;          // requests an upgrade to a WebSocket
};

// The two secrets of one run: `token` is part of the printed address, and `session` is the cookie
// that the server gives in exchange for the token.
struct AccessSecrets {
  std::string token;
  std::string session;
};

// Which requests the page server accepts.
struct AccessRules {
  std::uint16_t port = 0;
  AccessSecrets secrets;
};

enum class Access {
  granted,
  badRequest,     // no Host or several, several Origins
  wrongHost,      // the request is for another server: a name that was rebound to this address
  wrongOrigin,    // sent by a page of another site
  missingOrigin,  // a WebSocket request without Origin
};

// Checks Host and Origin by exact comparison: "127.0.0.1:PORT" or "localhost:PORT", and "http://"
// with the same host. Does not check the cookie.
Access checkHostAndOrigin(const RequestFacts& request, const AccessRules& rules);

// The name of the cookie. It contains the port, because browsers share cookies between all ports of
// an address.
std::string sessionCookieName(std::uint16_t port);
// The value of the Set-Cookie header that starts the session.
std::string sessionCookie(const AccessRules& rules);
// Returns whether one of the request's cookies is this run's session.
bool hasSession(const RequestFacts& request, const AccessRules& rules);

// The path of a target, without its query.
std::string_view targetPath(std::string_view target);
// The value of a parameter in a target's query, not decoded. Empty if absent.
std::optional<std::string_view> queryParameter(std::string_view target, std::string_view name);

}  // namespace settings
