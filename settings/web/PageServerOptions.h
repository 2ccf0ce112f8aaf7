#pragma once

#include <cstddef>
#include <cstdint>

namespace settings {

struct PageServerOptions {
  std::uint16_t port = 8080;     // 0: any free port
  std::size_t connections = 32;  // at the same time; a browser opens several to load the page
  std::size_t pages = 8;         // WebSockets at the same time
  std::size_t uploads = 2;       // photo uploads at the same time
  std::size_t waiting = 200;     // pending messages of one page
  double idleSeconds = 30;       // after which an idle connection is closed
};

}  // namespace settings
