#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "settings/web/SendQueue.h"

namespace settings {

// Identifies one page's WebSocket. Not reused within a run of the server.
using ConnectionId = std::uint64_t;
// Identifies one request that waits for its answer.
using RequestId = std::uint64_t;

// Receives messages to the pages. Threads: any.
class PageSink {
 public:
  virtual ~PageSink() = default;
  // Does nothing if the page has disconnected.
  virtual void send(ConnectionId connection, OutgoingMessage message) = 0;
  // A message of the page has been handled: there is room for another one.
  virtual void handled(ConnectionId connection) = 0;
  // Null if there is no such image.
  virtual void answerImage(RequestId request, std::shared_ptr<const std::string> image) = 0;
  // The result of an upload, as an HTTP status and JSON text.
  virtual void answerPhoto(RequestId request, unsigned status, std::string told) = 0;
};

// Receives events of the pages. Called on the server's thread; must return at once.
class PageEvents {
 public:
  virtual ~PageEvents() = default;
  virtual void opened(ConnectionId connection) = 0;
  // A message of a page: an untrusted text of at most 64 KiB.
  virtual void received(ConnectionId connection, std::string text) = 0;
  // The page missed messages and is ready to receive a whole tree.
  virtual void wantsWhole(ConnectionId connection) = 0;
  virtual void closed(ConnectionId connection) = 0;
  virtual void imageWanted(RequestId request, std::string hash) = 0;
  // An uploaded file: untrusted bytes, at most largestUploadBytes.
  virtual void photoSent(RequestId request, std::string bytes) = 0;
};

}  // namespace settings
