#include "settings/web/PageServer.h"

#include <boost/asio.hpp>
#include <chrono>
#include <map>
#include <thread>
#include <utility>

#include "settings/web/HttpSession.h"
#include "settings/web/PageRoutes.h"
#include "settings/web/RandomToken.h"
#include "settings/web/ServerShared.h"
#include "settings/web/SocketSession.h"

namespace settings {

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;
using boost::system::error_code;
using server::HttpSession;
using server::Shared;
using server::Tcp;

namespace {

constexpr std::chrono::milliseconds farewellTime(300);
constexpr std::chrono::milliseconds acceptPause(100);

}  // namespace

struct PageServer::State {
  State(std::uint16_t boundPort, std::string secret, std::shared_ptr<asio::io_context> loop,
        Tcp::acceptor listener, Shared sessions)
      : port(boundPort),
        token(std::move(secret)),
        context(std::move(loop)),
        acceptor(std::move(listener)),
        pause(*context),
        shared(std::move(sessions)) {}

  void accept() {
    acceptor.async_accept([this](error_code error, Tcp::socket socket) {
      if (error == asio::error::operation_aborted) return;
      if (error) {
        retryAccept();
        return;
      }
      admit(std::move(socket));
      accept();
    });
  }

  // The machine is out of descriptors or memory: waits until other connections release some.
  void retryAccept() {
    pause.expires_after(acceptPause);
    pause.async_wait([this](error_code error) {
      if (!error && acceptor.is_open()) accept();
    });
  }

  void admit(Tcp::socket socket) {
    if (shared.isFull()) return;
    error_code ignored;
    socket.set_option(Tcp::no_delay(true), ignored);
    const std::uint64_t id = ++shared.lastId;
    const auto session = std::make_shared<HttpSession>(shared, id, std::move(socket));
    shared.requests.emplace(id, session);
    session->read();
  }

  void shutDown() {
    error_code ignored;
    acceptor.close(ignored);
    for (const auto& [id, session] : std::exchange(shared.requests, {})) session->cut();
    const auto sockets = shared.sockets;
    for (const auto& [id, session] : sockets) session->close(websocket::close_code::going_away);
    pause.expires_after(farewellTime);
    pause.async_wait([this](error_code) {
      for (const auto& [id, session] : std::map(shared.sockets)) session->cut();
    });
    if (sockets.empty()) pause.cancel();
  }

  std::uint16_t port;
  std::string token;
  std::shared_ptr<asio::io_context> context;
  Tcp::acceptor acceptor;
  asio::steady_timer pause;
  Shared shared;
  std::thread thread;
};

namespace {

std::string bindProblem(std::uint16_t port, const error_code& error) {
  const std::string name = std::to_string(port);
  const std::string problem = error == asio::error::address_in_use
                                  ? "port " + name + " is in use"
                                  : "cannot listen on port " + name + ": " + error.message();
  return problem + "; choose another one with --port N, or --port 0 for a free one";
}

error_code listen(Tcp::acceptor& acceptor, std::uint16_t port) {
  const Tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
  error_code error;
  if (!acceptor.open(endpoint.protocol(), error) &&
      !acceptor.set_option(asio::socket_base::reuse_address(true), error) &&
      !acceptor.bind(endpoint, error)) {
    acceptor.listen(asio::socket_base::max_listen_connections, error);
  }
  return error;
}

}  // namespace

PageServerResult PageServer::create(const PageServerOptions& options, StaticFiles files,
                                    PageEvents& events) {
  auto token = randomToken();
  auto session = randomToken();
  if (!token || !session) return {nullptr, "the system returned no random numbers for the token"};
  auto context = std::make_shared<asio::io_context>(1);
  Tcp::acceptor acceptor(*context);
  const error_code error = listen(acceptor, options.port);
  if (error) return {nullptr, bindProblem(options.port, error)};
  const std::uint16_t port = acceptor.local_endpoint().port();
  PageRoutes routes({port, {*token, *session}}, std::move(files));
  auto state = std::make_unique<State>(port, *token, std::move(context), std::move(acceptor),
                                       Shared(std::move(routes), options, events));
  return {std::unique_ptr<PageServer>(new PageServer(std::move(state))), {}};
}

PageServer::PageServer(std::unique_ptr<State> state) : _state(std::move(state)) {}
PageServer::~PageServer() {
  stop();
}

void PageServer::start() {
  _state->accept();
  _state->thread = std::thread([state = _state.get()] { state->context->run(); });
}

void PageServer::stop() {
  if (!_state->thread.joinable()) return;
  asio::post(*_state->context, [state = _state.get()] { state->shutDown(); });
  _state->thread.join();
}

std::uint16_t PageServer::port() const noexcept {
  return _state->port;
}

std::string PageServer::address() const {
  return "http://127.0.0.1:" + std::to_string(_state->port) + "/?token=" + _state->token;
}

void PageServer::send(ConnectionId connection, OutgoingMessage message) {
  asio::post(*_state->context,
             [state = _state.get(), connection, message = std::move(message)]() mutable {
               const auto found = state->shared.sockets.find(connection);
               if (found != state->shared.sockets.end()) found->second->send(std::move(message));
             });
}

void PageServer::handled(ConnectionId connection) {
  asio::post(*_state->context, [state = _state.get(), connection] {
    const auto found = state->shared.sockets.find(connection);
    if (found != state->shared.sockets.end()) found->second->handled();
  });
}

void PageServer::answerImage(RequestId request, std::shared_ptr<const std::string> image) {
  asio::post(*_state->context, [state = _state.get(), request, image = std::move(image)]() mutable {
    const auto found = state->shared.requests.find(request);
    if (found == state->shared.requests.end()) return;
    const auto session = found->second;
    session->answerImage(std::move(image));
  });
}

void PageServer::answerPhoto(RequestId request, unsigned status, std::string told) {
  asio::post(*_state->context,
             [state = _state.get(), request, status, told = std::move(told)]() mutable {
               const auto found = state->shared.requests.find(request);
               if (found == state->shared.requests.end()) return;
               const auto session = found->second;
               session->answerPhoto(status, std::move(told));
             });
}

}  // namespace settings
