#pragma once

#include <cstddef>
#include <cstdint>

namespace settings {

struct PageServerOptions {
  std::uint16_t port = 8080;     // 0: a free one
  std::size_t connections = 32;  // at a time; a browser opens several to load the page
  std::size_t pages = 8;         // WebSockets at a time
  std::size_t uploads = 2;       // photos that are being sent at a time
  std::size_t waiting = 200;     // messages of one page that have not been dealt with
  double idleSeconds = 30;       // after which a connection that says nothing is closed
};

}  // namespace settings
