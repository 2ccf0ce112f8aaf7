#include "settings/web/SecurityHeaders.h"

namespace settings {
namespace {

std::string contentSecurityPolicy(std::string_view host) {
  std::string policy =
      "default-src 'none'; script-src 'self'; style-src 'self'; font-src 'self'; "
      "img-src 'self' blob: data:; base-uri 'none'; frame-ancestors 'none'; form-action 'none'; "
      "connect-src 'self'";
  // Some browsers do not treat a WebSocket to the same host as 'self'.
  if (!host.empty()) policy += " ws://" + std::string(host);
  return policy;
}

}  // namespace

HttpHeaders securityHeaders(std::string_view host) {
  return {
      {"Content-Security-Policy", contentSecurityPolicy(host)},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"X-Frame-Options", "DENY"},
      {"Cross-Origin-Opener-Policy", "same-origin"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
  };
}

}  // namespace settings
