#include "settings/web/RequestCheck.h"

#include <algorithm>
#include <array>

#include "settings/device/Product.h"
#include "settings/web/RandomToken.h"

namespace settings {
namespace {

bool isOurHost(std::string_view host, std::uint16_t port) {
  const std::string suffix = ":" + std::to_string(port);
  constexpr std::array<std::string_view, 2> names = {"127.0.0.1", "localhost"};
  return std::any_of(names.begin(), names.end(), [&](std::string_view name) {
    // Browsers omit the default port of HTTP.
    return host == std::string(name) + suffix || (port == 80 && host == name);
  });
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// Passes each part of a list to the visitor until it returns true.
template <class Visitor>
bool anyPart(std::string_view list, char separator, Visitor visitor) {
  while (true) {
    const std::size_t end = list.find(separator);
    if (visitor(list.substr(0, end))) return true;
    if (end == std::string_view::npos) return false;
    list.remove_prefix(end + 1);
  }
}

}  // namespace

Access checkHostAndOrigin(const RequestFacts& request, const AccessRules& rules) {
  if (request.hosts.size() != 1 || request.origins.size() > 1) return Access::badRequest;
  const std::string& host = request.hosts.front();
  if (!isOurHost(host, rules.port)) return Access::wrongHost;
  if (request.origins.empty()) {
    return request.wantsSocket ? Access::missingOrigin : Access::granted;
  }
  return request.origins.front() == "http://" + host ? Access::granted : Access::wrongOrigin;
}

std::string sessionCookieName(std::uint16_t port) {
  return std::string(cookiePrefix) + std::to_string(port);
}

std::string sessionCookie(const AccessRules& rules) {
  return sessionCookieName(rules.port) + "=" + rules.secrets.session +
         "; Path=/; HttpOnly; SameSite=Strict";
}

bool hasSession(const RequestFacts& request, const AccessRules& rules) {
  const std::string prefix = sessionCookieName(rules.port) + "=";
  const auto isSession = [&](std::string_view cookie) {
    cookie = trimmed(cookie);
    return cookie.starts_with(prefix) &&
           sameSecret(cookie.substr(prefix.size()), rules.secrets.session);
  };
  return std::any_of(request.cookies.begin(), request.cookies.end(),
                     [&](const std::string& header) { return anyPart(header, ';', isSession); });
}

std::string_view targetPath(std::string_view target) {
  return target.substr(0, target.find('?'));
}

std::optional<std::string_view> queryParameter(std::string_view target, std::string_view name) {
  const std::size_t start = target.find('?');
  if (start == std::string_view::npos) return std::nullopt;
  std::optional<std::string_view> value;
  anyPart(target.substr(start + 1), '&', [&](std::string_view pair) {
    const std::size_t equals = pair.find('=');
    if (equals == std::string_view::npos || pair.substr(0, equals) != name) return false;
    value = pair.substr(equals + 1);
    return true;
  });
  return value;
}

}  // namespace settings
