#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

namespace settings {

// A message on its way to a page.
struct OutgoingMessage {
  std::shared_ptr<const std::string> text;
  // A tree as a whole: a page that gets it needs nothing that was sent before.
  bool whole = false;
};

// What one page has still to be sent. Bounded: a page that does not read loses what waits for it,
// and is sent the whole tree once it reads again.
//
// Threads: belongs to one.
class SendQueue {
 public:
  struct Limits {
    std::size_t messages = 256;
    std::size_t bytes = 8ULL * 1024 * 1024;
  };

  SendQueue() : SendQueue(Limits()) {}
  explicit SendQueue(Limits limits) : _limits(limits) {}

  // Queues the message, or drops it (and all that waits) where the page lags behind.
  void push(OutgoingMessage message);
  // The message to be sent now, which stays in the queue until `pop`; null where nothing waits.
  std::shared_ptr<const std::string> front() const;
  // The front message has been sent.
  void pop();
  // True, once, when a page that lagged has been sent all there was: it wants a whole tree now.
  bool takeWantsWhole();

  bool isLagging() const noexcept { return _lagging; }

 private:
  bool fits(const OutgoingMessage& message) const;
  // Drops all but the front one, which may be half sent.
  void dropWaiting();

  Limits _limits;
  std::deque<OutgoingMessage> _messages;
  std::size_t _bytes = 0;
  bool _lagging = false;
  bool _asked = false;
};

}  // namespace settings
