#pragma once

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <map>
#include <netinet/in.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

// A browser from the server's point of view, over a plain socket, so that a test can send what no
// browser would.
namespace settings::test {

struct HttpReply {
  int status = 0;                              // 0: the connection was closed without an answer
  std::map<std::string, std::string> headers;  // names in lower case
  std::string body;
};

struct Frame {
  int opcode = -1;  // 1 text, 2 binary, 8 close; -1: the connection has ended
  std::string payload;
  // Of a close frame.
  int closeCode() const {
    if (opcode != 8 || payload.size() < 2) return 0;
    return static_cast<unsigned char>(payload[0]) * 256 + static_cast<unsigned char>(payload[1]);
  }
};

class LoopbackClient {
 public:
  explicit LoopbackClient(std::uint16_t port)
      : _port(port), _socket(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // A test that waits in vain fails instead of hanging.
    const timeval patience{20, 0};
    ::setsockopt(_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (::connect(_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) close();
  }
  ~LoopbackClient() { close(); }
  LoopbackClient(const LoopbackClient&) = delete;
  LoopbackClient& operator=(const LoopbackClient&) = delete;

  void close() {
    if (_socket >= 0) ::close(_socket);
    _socket = -1;
  }

  bool send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t sent = ::send(_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }

  // Sends a request with the correct Host and reads the answer. `headers` are complete lines.
  HttpReply get(const std::string& target, const std::string& headers = {},
                const std::string& method = "GET") {
    send(method + " " + target + " HTTP/1.1\r\nHost: " + host() + "\r\n" + headers + "\r\n");
    return readReply(method != "HEAD");
  }

  HttpReply readReply(bool hasBody = true) {
    HttpReply reply;
    const auto head = readUntil("\r\n\r\n");
    if (!head || head->size() < 12) return reply;
    reply.status = std::stoi(head->substr(9, 3));
    for (std::size_t start = head->find("\r\n") + 2; start < head->size();) {
      const std::size_t end = head->find("\r\n", start);
      addHeader(reply, std::string_view(*head).substr(start, end - start));
      start = end + 2;
    }
    const auto length = reply.headers.find("content-length");
    if (hasBody && length != reply.headers.end()) reply.body = take(std::stoul(length->second));
    return reply;
  }

  // Requests the page's WebSocket. The status is 101 on success.
  HttpReply openSocket(const std::string& headers) {
    return get("/socket",
               "Upgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
               "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n" +
                   headers);
  }
  std::string originLine() const { return "Origin: http://" + host() + "\r\n"; }

  bool sendText(std::string_view text) { return sendFrame(1, text); }
  bool sendFrame(int opcode, std::string_view payload) {
    return send(frameHead(opcode, payload.size()) + std::string(payload));
  }
  // The header of a masked frame whose mask is zero, so that the payload is unchanged.
  static std::string frameHead(int opcode, std::size_t size) {
    std::string head(1, static_cast<char>(0x80 | opcode));
    if (size < 126) {
      head += static_cast<char>(0x80 | size);
    } else {
      head += static_cast<char>(0x80 | 127);
      for (int shift = 56; shift >= 0; shift -= 8) head += static_cast<char>((size >> shift) & 255);
    }
    return head + std::string(4, '\0');
  }

  // The next frame that is not a ping.
  Frame receive() {
    while (true) {
      Frame frame = receiveAny();
      if (frame.opcode != 9) return frame;
    }
  }

  // Returns whether the peer has closed the connection; reads its remaining data.
  bool waitForEnd() {
    std::array<char, 65536> buffer{};
    while (true) {
      const ssize_t size = ::recv(_socket, buffer.data(), buffer.size(), 0);
      if (size == 0) return true;
      if (size < 0) return errno == ECONNRESET;
    }
  }

  std::string host() const { return "127.0.0.1:" + std::to_string(_port); }

 private:
  Frame receiveAny() {
    const std::string head = take(2);
    if (head.size() < 2) return {};
    std::size_t size = static_cast<unsigned char>(head[1]) & 127U;
    if (size >= 126) {
      const std::string longSize = take(size == 126 ? 2 : 8);
      size = 0;
      for (const char byte : longSize) size = size * 256 + static_cast<unsigned char>(byte);
    }
    return {static_cast<unsigned char>(head[0]) & 15, take(size)};
  }

  static void addHeader(HttpReply& reply, std::string_view line) {
    const std::size_t colon = line.find(": ");
    if (colon == std::string_view::npos) return;
    std::string name(line.substr(0, colon));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char character) { return std::tolower(character); });
    reply.headers[name] = std::string(line.substr(colon + 2));
  }

  bool fill() {
    std::array<char, 65536> buffer{};
    const ssize_t size = ::recv(_socket, buffer.data(), buffer.size(), 0);
    if (size <= 0) return false;
    _received.append(buffer.data(), static_cast<std::size_t>(size));
    return true;
  }

  std::optional<std::string> readUntil(std::string_view end) {
    while (_received.find(end) == std::string::npos) {
      if (!fill()) return std::nullopt;
    }
    return take(_received.find(end) + end.size());
  }

  // Reads this many bytes, or fewer if the connection ends before.
  std::string take(std::size_t count) {
    while (_received.size() < count && fill()) {
    }
    const std::string taken = _received.substr(0, count);
    _received.erase(0, taken.size());
    return taken;
  }

  std::uint16_t _port;
  int _socket;
  std::string _received;
};

}  // namespace settings::test
