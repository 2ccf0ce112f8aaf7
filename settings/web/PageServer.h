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

// The HTTP and WebSocket server of the page. Listens on the loopback address only, and accepts only
// the browser that was given this run's token. Does not know the application: it only transfers
// texts and images.
//
// If too many messages of a page are pending, the server stops reading from the page until some are
// handled.
//
// Threads: has its own thread, on which it calls its events. Its functions may be called from any
// thread.
class PageServer : public PageSink {
 public:
  // Binds the port. Fails if the port is in use or no random token is available. `events` must
  // outlive the server.
  static PageServerResult create(const PageServerOptions& options, StaticFiles files,
                                 PageEvents& events);
  ~PageServer() override;
  PageServer(const PageServer&) = delete;
  PageServer& operator=(const PageServer&) = delete;

  // Starts answering.
  void start();
  // Closes all connections and ends the thread. No event is called after this returns.
  void stop();

  std::uint16_t port() const noexcept;
  // The address to open, including the token.
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
  std::unique_ptr<PageServer> server;  // empty on failure
  std::string error;                   // the reason, for the user
};

}  // namespace settings
