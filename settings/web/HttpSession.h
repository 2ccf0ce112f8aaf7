#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "settings/web/ServerShared.h"
#include "settings/web/SocketSession.h"

namespace settings::server {

// A photo that is being uploaded. It counts as an upload during its lifetime.
struct Upload {
  Upload(Shared& sharedState, http::request_parser<http::empty_body>&& header)
      : shared(sharedState), parser(std::move(header)) {
    ++shared.uploads;
    parser.body_limit(largestUploadBytes);
  }
  ~Upload() { --shared.uploads; }
  Upload(const Upload&) = delete;
  Upload& operator=(const Upload&) = delete;

  Shared& shared;
  http::request_parser<http::string_body> parser;
};

// One HTTP connection. Handles request after request until it ends or becomes a WebSocket.
class HttpSession : public std::enable_shared_from_this<HttpSession> {
 public:
  HttpSession(Shared& shared, std::uint64_t id, Tcp::socket socket)
      : _shared(shared), _id(id), _stream(std::move(socket)) {}

  void read() {
    _parser.emplace();
    _parser->header_limit(_headerBytes);
    // Only the bodies of photos are read, and they have their own limit.
    _parser->body_limit(boost::none);
    _stream.expires_after(idleTime(_shared.options));
    http::async_read_header(
        _stream, _buffer, *_parser,
        [self = shared_from_this()](error_code error, std::size_t) { self->onRead(error); });
  }

  void answerImage(std::shared_ptr<const std::string> image) {
    answer(_shared.routes.image(_facts, std::move(image)));
  }

  void answerPhoto(unsigned status, std::string told) {
    answer(_shared.routes.data(_facts, status, std::move(told)));
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
    // Other bodies are not read, so the connection cannot be reused after them.
    _keepAlive = _parser->keep_alive() && _parser->is_done();
    const Routed routed = _shared.routes.route(_facts);
    if (const auto* image = std::get_if<ImageWanted>(&routed)) {
      _shared.events.imageWanted(_id, image->hash);
    } else if (const auto* finished = std::get_if<HttpAnswer>(&routed)) {
      answer(*finished);
    } else if (std::holds_alternative<PhotoWanted>(routed)) {
      beginUpload();
    } else {
      becomeSocket();
    }
  }

  void beginUpload() {
    if (_parser->is_done()) {
      answer(_shared.routes.refusedPhoto(_facts, 400, "The request contains no picture."));
    } else if (_parser->content_length().value_or(0) > largestUploadBytes) {
      answer(_shared.routes.refusedPhoto(_facts, 413, uploadTooLarge));
    } else if (_shared.uploads >= _shared.options.uploads) {
      answer(_shared.routes.refusedPhoto(_facts, 503, "Other pictures are being sent. Try again."));
    } else {
      _keepAlive = _parser->keep_alive();
      _upload.emplace(_shared, std::move(*_parser));
      readUpload();
    }
  }

  void readUpload() {
    _stream.expires_after(idleTime(_shared.options));
    http::async_read_some(
        _stream, _buffer, _upload->parser,
        [self = shared_from_this()](error_code error, std::size_t) { self->onUploaded(error); });
  }

  void onUploaded(error_code error) {
    if (!error && !_upload->parser.is_done()) {
      readUpload();
      return;
    }
    _stream.expires_never();
    std::string bytes = std::move(_upload->parser.get().body());
    _upload.reset();
    if (!error) {
      _shared.events.photoSent(_id, std::move(bytes));
    } else if (error == http::error::body_limit) {
      _keepAlive = false;
      answer(_shared.routes.refusedPhoto(_facts, 413, uploadTooLarge));
    } else {
      finish();
    }
  }

  void refuseUnreadable(error_code error) {
    const bool tooLarge = error == http::error::header_limit;
    // An error of Beast itself means a malformed request. Any other error means a lost connection.
    if (error.category() != make_error_code(http::error::bad_method).category() ||
        error == http::error::end_of_stream || error == http::error::partial_message) {
      finish();
      return;
    }
    _keepAlive = false;
    _facts = {};
    answer(_shared.routes.refusal(
        _facts, tooLarge ? 431 : 400,
        tooLarge ? "The request's header is larger than 16 KiB." : "This is not an HTTP request."));
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
    _stream.expires_after(_drainTime);
    _buffer.clear();
    drain();
  }

  // Reads the rest of the client's data. Closing earlier could discard the answer before the client
  // has read it.
  void drain() {
    _stream.async_read_some(_buffer.prepare(_headerBytes),
                            [self = shared_from_this()](error_code error, std::size_t count) {
                              self->_drained += count;
                              if (error || self->_drained > _drainedBytes) {
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
  static constexpr std::size_t _headerBytes = 16ULL * 1024;
  static constexpr std::size_t _drainedBytes = 1024ULL * 1024;
  static constexpr std::chrono::seconds _drainTime{1};

  Shared& _shared;
  std::uint64_t _id;
  beast::tcp_stream _stream;
  beast::flat_buffer _buffer;
  std::optional<http::request_parser<http::empty_body>> _parser;
  std::optional<Upload> _upload;
  RequestFacts _facts;
  std::size_t _drained = 0;
  bool _keepAlive = false;
};

}  // namespace settings::server
