#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "settings/web/SendQueue.h"
#include "settings/web/ServerShared.h"

namespace settings::server {

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
    _socket.read_message_max(_messageBytes);
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

  static constexpr std::size_t _messageBytes = 64ULL * 1024;

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

}  // namespace settings::server
