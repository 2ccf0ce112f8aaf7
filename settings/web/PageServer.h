#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "settings/web/PageServerOptions.h"
#include "settings/web/PageSink.h"
#include "settings/web/StaticFiles.h"

namespace settings {

struct PageServerResult;

// The HTTP and WebSocket server of the page, on the loopback address only. It lets in nobody but
// the browser that was given this run's token, and knows nothing of the application: it carries
// texts and images.
//
// A page that sends more messages than may wait is not read from until some were dealt with.
//
// Threads: one of its own, on which it calls its events; its functions from any.
class PageServer : public PageSink {
 public:
  // Binds the port. Fails where it is in use or no random token can be had. `events` must outlive
  // the server.
  static PageServerResult create(const PageServerOptions& options, StaticFiles files,
                                 PageEvents& events);
  ~PageServer() override;
  PageServer(const PageServer&) = delete;
  PageServer& operator=(const PageServer&) = delete;

  // Begins to answer.
  void start();
  // Closes every connection and ends the thread. Nothing is called after it has returned.
  void stop();

  std::uint16_t port() const noexcept;
  // The address to open, with the token.
  std::string address() const;

  void send(ConnectionId connection, OutgoingMessage message) override;
  void handled(ConnectionId connection) override;
  void answerImage(RequestId request, std::shared_ptr<const std::string> image) override;
  void answerPhoto(RequestId request, unsigned status, std::string told) override;

 private:
  struct State;
  explicit PageServer(std::unique_ptr<State> state);
  std::unique_ptr<State> _state;
};

struct PageServerResult {
  std::unique_ptr<PageServer> server;  // empty where it could not be made
  std::string error;                   // why, for people
};

}  // namespace settings
