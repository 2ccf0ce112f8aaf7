#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace settings {

// What the page server looks at in an HTTP request.
struct RequestFacts {
  std::string method;
  std::string target;                // as sent: "/?token=..."
  std::vector<std::string> hosts;    // every Host header; there must be exactly one
  std::vector<std::string> origins;  // every Origin header; there may be at most one
  std::vector<std::string> cookies;  // every Cookie header
  bool wantsSocket = false;          // asks for an upgrade to a WebSocket
};

// The two secrets of one run: `token` stands in the printed address, `session` in the cookie that
// the token is exchanged for.
struct AccessSecrets {
  std::string token;
  std::string session;
};

// Who may speak to the page server, and from where.
struct AccessRules {
  std::uint16_t port = 0;
  AccessSecrets secrets;
};

enum class Access {
  granted,
  badRequest,     // no Host or several, several Origins
  wrongHost,      // the request was meant for another server: a name that was rebound to us
  wrongOrigin,    // another site's page asks
  missingOrigin,  // a WebSocket without one
};

// Checks Host and Origin, both by exact equality: "127.0.0.1:PORT" or "localhost:PORT", and
// "http://" with that same host. Says nothing of the cookie.
Access checkHostAndOrigin(const RequestFacts& request, const AccessRules& rules);

// The name of the cookie. It bears the port, since a browser keeps one set of cookies for all
// ports of an address.
std::string sessionCookieName(std::uint16_t port);
// The value of the Set-Cookie header that hands the session over.
std::string sessionCookie(const AccessRules& rules);
// Whether one of the request's cookies is this run's session.
bool hasSession(const RequestFacts& request, const AccessRules& rules);

// The path of a target, without its query.
std::string_view targetPath(std::string_view target);
// The value of a parameter in a target's query, as it stands there. Empty where it is absent.
std::optional<std::string_view> queryParameter(std::string_view target, std::string_view name);

}  // namespace settings
