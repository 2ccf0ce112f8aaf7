#include "settings/web/PageRoutes.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "settings/device/JsonText.h"
#include "settings/device/Product.h"
#include "settings/web/RandomToken.h"

namespace settings {
namespace {

constexpr std::string_view imagesPath = "/images/";
constexpr std::string_view uploadPath = "/photos";

bool isHash(std::string_view text) {
  return text.size() == 64 && std::all_of(text.begin(), text.end(), [](char character) {
           return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f');
         });
}

std::string openPrintedAddress() {
  return "This page is only for the user who started " + std::string(programName) +
         ". Open the address that it printed, with its token, in this browser.";
}

}  // namespace

PageRoutes::PageRoutes(AccessRules rules, StaticFiles files)
    : _rules(std::move(rules)), _files(std::move(files)) {}

Routed PageRoutes::route(const RequestFacts& request) const {
  switch (checkHostAndOrigin(request, _rules)) {
    case Access::granted:
      break;
    case Access::badRequest:
      return refusal(request, 400,
                     "A request needs one Host header and at most one Origin header.");
    case Access::wrongHost:
      return refusal(request, 421, "This server answers to 127.0.0.1 and localhost only.");
    case Access::wrongOrigin:
    case Access::missingOrigin:
      return refusal(request, 403, "Only this server's own page may ask for this.");
  }
  if (targetPath(request.target) == uploadPath) return routePhoto(request);
  if (request.method != "GET" && request.method != "HEAD") return wrongMethod(request, "GET, HEAD");
  if (targetPath(request.target) == "/") {
    const auto token = queryParameter(request.target, "token");
    if (token) return exchange(request, *token);
  }
  if (!hasSession(request, _rules)) return refusal(request, 403, openPrintedAddress());
  return routeWithSession(request);
}

// An upload changes what the application shows, so the page must send its Origin.
Routed PageRoutes::routePhoto(const RequestFacts& request) const {
  if (request.method != "POST") return wrongMethod(request, "POST");
  if (request.origins.empty() || !hasSession(request, _rules)) {
    return refusedPhoto(request, 403, openPrintedAddress());
  }
  return PhotoWanted{};
}

HttpAnswer PageRoutes::wrongMethod(const RequestFacts& request, const std::string& allowed) const {
  HttpAnswer refused = refusal(request, 405, "Allowed methods: " + allowed + ".");
  refused.headers.emplace_back("Allow", allowed);
  return refused;
}

HttpAnswer PageRoutes::exchange(const RequestFacts& request, std::string_view token) const {
  if (!sameSecret(token, _rules.secrets.token)) return refusal(request, 403, openPrintedAddress());
  HttpAnswer redirect = refusal(request, 303, "The page is at /.");
  redirect.headers.emplace_back("Location", "/");
  redirect.headers.emplace_back("Set-Cookie", sessionCookie(_rules));
  return redirect;
}

Routed PageRoutes::routeWithSession(const RequestFacts& request) const {
  const std::string_view path = targetPath(request.target);
  if (path == "/socket") {
    if (request.wantsSocket && request.method == "GET") return SocketWanted{};
    HttpAnswer refused = refusal(request, 426, "This address is for the page's WebSocket.");
    refused.headers.emplace_back("Upgrade", "websocket");
    return refused;
  }
  if (path.starts_with(imagesPath) && isHash(path.substr(imagesPath.size()))) {
    return ImageWanted{std::string(path.substr(imagesPath.size()))};
  }
  if (const StaticFile* file = _files.find(path)) {
    return answer(request, 200, file->contentType, file->bytes);
  }
  return refusal(request, 404, "There is nothing at this address.");
}

HttpAnswer PageRoutes::image(const RequestFacts& request,
                             std::shared_ptr<const std::string> bytes) const {
  if (!bytes) return refusal(request, 404, "No image has this hash.");
  const bool isJpeg = bytes->starts_with("\xFF\xD8\xFF");
  HttpAnswer found = answer(request, 200, isJpeg ? "image/jpeg" : "image/png", std::move(bytes));
  for (auto& [name, value] : found.headers) {
    if (name == "Cache-Control") value = "private, max-age=31536000, immutable";
  }
  return found;
}

HttpAnswer PageRoutes::data(const RequestFacts& request, unsigned status, std::string json) const {
  return answer(request, status, "application/json",
                std::make_shared<const std::string>(std::move(json)));
}

HttpAnswer PageRoutes::refusedPhoto(const RequestFacts& request, unsigned status,
                                    const std::string& why) const {
  return data(request, status, jsonText(nlohmann::json{{"message", why}}));
}

HttpAnswer PageRoutes::refusal(const RequestFacts& request, unsigned status,
                               std::string text) const {
  auto body = std::make_shared<std::string>("<!doctype html><html lang=\"en\"><title>" +
                                            std::string(programName) + "</title><p>" +
                                            std::move(text) + "</p></html>\n");
  return answer(request, status, "text/html; charset=utf-8", std::move(body));
}

HttpAnswer PageRoutes::answer(const RequestFacts& request, unsigned status, std::string type,
                              std::shared_ptr<const std::string> body) const {
  const bool known = checkHostAndOrigin(request, _rules) == Access::granted;
  HttpAnswer made{status, securityHeaders(known ? request.hosts.front() : std::string()),
                  std::move(body)};
  made.headers.emplace_back("Content-Type", std::move(type));
  made.headers.emplace_back("Cache-Control", "no-store");
  return made;
}

}  // namespace settings
