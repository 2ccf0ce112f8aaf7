#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

namespace settings {

// A message to a page.
struct OutgoingMessage {
  std::shared_ptr<const std::string> text;
  // A whole tree: a page that receives it does not need the previous messages.
  bool whole = false;
};

// The outgoing messages of one page. The size is limited: if a page does not read, its queued
// messages are dropped, and it receives the whole tree when it reads again.
//
// Threads: one.
class SendQueue {
 public:
  struct Limits {
    std::size_t messages = 256;
    std::size_t bytes = 8ULL * 1024 * 1024;
  };

  SendQueue() : SendQueue(Limits()) {}
  explicit SendQueue(Limits limits) : _limits(limits) {}

  // Queues the message. If the page lags behind, drops it and all queued messages.
  void push(OutgoingMessage message);
  // The message to send now, which stays in the queue until `pop`; null if there is none.
  std::shared_ptr<const std::string> front() const;
  // Removes the front message after it was sent.
  void pop();
  // Returns true once when a page that lagged has received all queued messages: send it a whole
  // tree.
  bool takeWantsWhole();

  bool isLagging() const noexcept { return _lagging; }

 private:
  bool fits(const OutgoingMessage& message) const;
  // Drops all messages but the front one, which may be partly sent.
  void dropWaiting();

  Limits _limits;
  std::deque<OutgoingMessage> _messages;
  std::size_t _bytes = 0;
  bool _lagging = false;
  bool _asked = false;
};

}  // namespace settings
