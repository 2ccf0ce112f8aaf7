#include "settings/web/PageServer.h"

#include <algorithm>
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <chrono>
#include <map>
#include <thread>
#include <utility>

#include "settings/web/PageRoutes.h"
#include "settings/web/RandomToken.h"

namespace settings {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using Tcp = asio::ip::tcp;
using boost::system::error_code;

constexpr std::size_t headerBytes = 16ULL * 1024;
constexpr std::size_t messageBytes = 64ULL * 1024;
constexpr std::size_t drainedBytes = 1024ULL * 1024;
constexpr std::chrono::seconds drainTime(1);
constexpr std::chrono::milliseconds farewellTime(300);
constexpr std::chrono::milliseconds acceptPause(100);

class HttpSession;
class SocketSession;

// What all sessions share. Everything in here happens on the server's thread.
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
};

std::chrono::milliseconds idleTime(const PageServerOptions& options) {
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

// One page's WebSocket, from the handshake to its end.
class SocketSession : public std::enable_shared_from_this<SocketSession> {
 public:
  SocketSession(Shared& shared, ConnectionId id, beast::tcp_stream stream)
      : _shared(shared), _id(id), _socket(std::move(stream)) {}

  template <class Request>
  void accept(const Request& request) {
    websocket::stream_base::timeout timeout{};
    timeout.handshake_timeout = idleTime(_shared.options);
    timeout.idle_timeout = idleTime(_shared.options);
    timeout.keep_alive_pings = true;
    _socket.set_option(timeout);
    _socket.read_message_max(messageBytes);
    _socket.auto_fragment(false);
    _socket.async_accept(request, [self = shared_from_this()](error_code error) {
      if (error) {
        self->finish();
        return;
      }
      self->_opened = true;
      self->_shared.events.opened(self->_id);
      self->read();
    });
  }

  void send(OutgoingMessage message) {
    _queue.push(std::move(message));
    write();
  }

  void handled() {
    if (_waiting > 0) --_waiting;
    if (_paused) read();
  }

  void close(websocket::close_code code) {
    if (_closing) return;
    if (!_opened) {
      finish();
      return;
    }
    _closing = true;
    _socket.async_close(code, [self = shared_from_this()](error_code) { self->finish(); });
  }

  void cut() { beast::get_lowest_layer(_socket).close(); }

 private:
  void read() {
    _paused = _waiting >= _shared.options.waiting;
    if (_paused || _closing) return;
    _socket.async_read(_buffer, [self = shared_from_this()](error_code error, std::size_t) {
      self->onRead(error);
    });
  }

  void onRead(error_code error) {
    if (error) {
      finish();
      return;
    }
    if (_socket.got_binary()) {
      close(websocket::close_code::unknown_data);
      return;
    }
    ++_waiting;
    _shared.events.received(_id, beast::buffers_to_string(_buffer.data()));
    _buffer.consume(_buffer.size());
    read();
  }

  void write() {
    const auto text = _queue.front();
    if (!text || _writing || _closing) return;
    _writing = true;
    _socket.text(true);
    _socket.async_write(asio::buffer(*text),
                        [self = shared_from_this(), text](error_code error, std::size_t) {
                          self->onWritten(error);
                        });
  }

  void onWritten(error_code error) {
    _writing = false;
    if (error) {
      finish();
      return;
    }
    _queue.pop();
    if (_queue.takeWantsWhole()) _shared.events.wantsWhole(_id);
    write();
  }

  void finish() {
    _closing = true;
    cut();
    if (_shared.sockets.erase(_id) > 0 && _opened) _shared.events.closed(_id);
  }

  Shared& _shared;
  ConnectionId _id;
  websocket::stream<beast::tcp_stream> _socket;
  beast::flat_buffer _buffer;
  SendQueue _queue;
  std::size_t _waiting = 0;
  bool _opened = false;
  bool _paused = false;
  bool _writing = false;
  bool _closing = false;
};

// One HTTP connection, request after request, until it ends or becomes a WebSocket.
class HttpSession : public std::enable_shared_from_this<HttpSession> {
 public:
  HttpSession(Shared& shared, std::uint64_t id, Tcp::socket socket)
      : _shared(shared), _id(id), _stream(std::move(socket)) {}

  void read() {
    _parser.emplace();
    _parser->header_limit(headerBytes);
    _stream.expires_after(idleTime(_shared.options));
    http::async_read_header(
        _stream, _buffer, *_parser,
        [self = shared_from_this()](error_code error, std::size_t) { self->onRead(error); });
  }

  void answerImage(std::shared_ptr<const std::string> image) {
    answer(_shared.routes.image(_facts, std::move(image)));
  }

  void cut() { finish(); }

 private:
  void onRead(error_code error) {
    if (error) {
      refuseUnreadable(error);
      return;
    }
    _stream.expires_never();
    _facts = factsOf(_parser->get());
    // A body is never read, so nothing that follows it can be understood.
    _keepAlive = _parser->keep_alive() && _parser->is_done();
    const Routed routed = _shared.routes.route(_facts);
    if (const auto* image = std::get_if<ImageWanted>(&routed)) {
      _shared.events.imageWanted(_id, image->hash);
    } else if (const auto* finished = std::get_if<HttpAnswer>(&routed)) {
      answer(*finished);
    } else {
      becomeSocket();
    }
  }

  void refuseUnreadable(error_code error) {
    const bool tooLarge = error == http::error::header_limit;
    // Beast's own errors: the request is malformed. Others: the connection is gone.
    if (error.category() != make_error_code(http::error::bad_method).category() ||
        error == http::error::end_of_stream || error == http::error::partial_message) {
      finish();
      return;
    }
    _keepAlive = false;
    _facts = {};
    answer(_shared.routes.refusal(
        _facts, tooLarge ? 431 : 400,
        tooLarge ? "The request's header is longer than 16 KiB." : "This is not an HTTP request."));
  }

  void becomeSocket() {
    if (_shared.sockets.size() >= _shared.options.pages) {
      _keepAlive = false;
      answer(_shared.routes.refusal(_facts, 503, "Too many windows show this page. Close one."));
      return;
    }
    const auto keep = shared_from_this();
    _shared.requests.erase(_id);
    auto session = std::make_shared<SocketSession>(_shared, _id, std::move(_stream));
    _shared.sockets.emplace(_id, session);
    session->accept(_parser->get());
  }

  template <class Body>
  http::response<Body> begin(const HttpAnswer& made) const {
    http::response<Body> response(static_cast<http::status>(made.status), _version);
    for (const auto& [name, value] : made.headers) response.insert(name, value);
    response.content_length(made.body->size());
    response.keep_alive(_keepAlive);
    return response;
  }

  void answer(const HttpAnswer& made) {
    if (_facts.method == "HEAD") {
      write(begin<http::empty_body>(made), made.body);
      return;
    }
    auto response = begin<http::span_body<const char>>(made);
    response.body() = {made.body->data(), made.body->size()};
    write(std::move(response), made.body);
  }

  template <class Response>
  void write(Response response, std::shared_ptr<const std::string> body) {
    auto kept = std::make_shared<Response>(std::move(response));
    _stream.expires_after(idleTime(_shared.options));
    http::async_write(_stream, *kept,
                      [self = shared_from_this(), kept, body = std::move(body)](
                          error_code error, std::size_t) { self->onWritten(error); });
  }

  void onWritten(error_code error) {
    if (!error && _keepAlive) {
      read();
      return;
    }
    if (error) {
      finish();
      return;
    }
    _stream.socket().shutdown(Tcp::socket::shutdown_send, error);
    _stream.expires_after(drainTime);
    _buffer.clear();
    drain();
  }

  // Reads what the client still sends: to close over it could take the answer from the client.
  void drain() {
    _stream.async_read_some(_buffer.prepare(headerBytes),
                            [self = shared_from_this()](error_code error, std::size_t count) {
                              self->_drained += count;
                              if (error || self->_drained > drainedBytes) {
                                self->finish();
                              } else {
                                self->drain();
                              }
                            });
  }

  void finish() {
    _stream.close();
    _shared.requests.erase(_id);
  }

  static constexpr unsigned _version = 11;

  Shared& _shared;
  std::uint64_t _id;
  beast::tcp_stream _stream;
  beast::flat_buffer _buffer;
  std::optional<http::request_parser<http::empty_body>> _parser;
  RequestFacts _facts;
  std::size_t _drained = 0;
  bool _keepAlive = false;
};

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

  // The machine is short of descriptors or memory: others must let go first.
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
  if (error == asio::error::address_in_use) {
    return "port " + name +
           " is in use; choose another one with --port N, or --port 0 for a free one";
  }
  return "cannot listen on port " + name + ": " + error.message();
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
  if (!token || !session) return {nullptr, "the system gives no random numbers for a token"};
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

void PageServer::answerImage(ImageRequestId request, std::shared_ptr<const std::string> image) {
  asio::post(*_state->context, [state = _state.get(), request, image = std::move(image)]() mutable {
    const auto found = state->shared.requests.find(request);
    if (found == state->shared.requests.end()) return;
    const auto session = found->second;
    session->answerImage(std::move(image));
  });
}

}  // namespace settings
