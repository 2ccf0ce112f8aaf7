#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "settings/web/SendQueue.h"

namespace settings {

// One page's WebSocket. Never used again in a run of the server.
using ConnectionId = std::uint64_t;
// One request that waits for its answer.
using RequestId = std::uint64_t;

// Where messages to the pages go. Threads: any.
class PageSink {
 public:
  virtual ~PageSink() = default;
  // Nothing happens where the page has gone.
  virtual void send(ConnectionId connection, OutgoingMessage message) = 0;
  // A message that came from the page has been dealt with: there is room for another.
  virtual void handled(ConnectionId connection) = 0;
  // Null where there is no such image.
  virtual void answerImage(RequestId request, std::shared_ptr<const std::string> image) = 0;
  // What has become of a photo that was sent, as an HTTP status and a JSON text.
  virtual void answerPhoto(RequestId request, unsigned status, std::string told) = 0;
};

// What comes from the pages. Called on the server's own thread; must return at once.
class PageEvents {
 public:
  virtual ~PageEvents() = default;
  virtual void opened(ConnectionId connection) = 0;
  // A message of a page, a text of at most 64 KiB that may hold anything.
  virtual void received(ConnectionId connection, std::string text) = 0;
  // The page missed messages, and can take a whole tree now.
  virtual void wantsWhole(ConnectionId connection) = 0;
  virtual void closed(ConnectionId connection) = 0;
  virtual void imageWanted(RequestId request, std::string hash) = 0;
  // A file of the user's own, of at most largestUploadBytes, that may hold anything.
  virtual void photoSent(RequestId request, std::string bytes) = 0;
};

}  // namespace settings
