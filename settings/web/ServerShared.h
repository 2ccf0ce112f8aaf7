#pragma once

#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "settings/web/PageRoutes.h"
#include "settings/web/PageServerOptions.h"
#include "settings/web/PageSink.h"
#include "settings/web/RequestCheck.h"

// Internals of the server's connections. Only PageServer.cpp includes this, so that Boost is
// compiled once.
namespace settings::server {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using Tcp = asio::ip::tcp;
using boost::system::error_code;

class HttpSession;
class SocketSession;

// State that all sessions share. Used only on the server's thread.
struct Shared {
  Shared(PageRoutes pageRoutes, const PageServerOptions& pageOptions, PageEvents& pageEvents)
      : routes(std::move(pageRoutes)), options(pageOptions), events(pageEvents) {}

  bool isFull() const { return requests.size() + sockets.size() >= options.connections; }

  PageRoutes routes;
  PageServerOptions options;
  PageEvents& events;
  std::map<std::uint64_t, std::shared_ptr<HttpSession>> requests;
  std::map<ConnectionId, std::shared_ptr<SocketSession>> sockets;
  std::uint64_t lastId = 0;
  std::size_t uploads = 0;  // current photo uploads
};

inline std::chrono::milliseconds idleTime(const PageServerOptions& options) {
  return std::chrono::milliseconds(static_cast<std::int64_t>(options.idleSeconds * 1000));
}

template <class Request>
RequestFacts factsOf(const Request& request) {
  RequestFacts facts;
  facts.method = std::string(request.method_string());
  facts.target = std::string(request.target());
  facts.wantsSocket = websocket::is_upgrade(request);
  for (const auto& field : request) {
    if (field.name() == http::field::host) facts.hosts.emplace_back(field.value());
    if (field.name() == http::field::origin) facts.origins.emplace_back(field.value());
    if (field.name() == http::field::cookie) facts.cookies.emplace_back(field.value());
  }
  return facts;
}

}  // namespace settings::server
