#include "settings/web/SendQueue.h"

#include <utility>

namespace settings {

void SendQueue::push(OutgoingMessage message) {
  if (message.whole) {
    // The whole tree replaces everything that is still queued.
    if (_lagging) dropWaiting();
    _lagging = false;
    _asked = false;
  } else if (_lagging || !fits(message)) {
    dropWaiting();
    _lagging = true;
    return;
  }
  _bytes += message.text->size();
  _messages.push_back(std::move(message));
}

std::shared_ptr<const std::string> SendQueue::front() const {
  return _messages.empty() ? nullptr : _messages.front().text;
}

void SendQueue::pop() {
  _bytes -= _messages.front().text->size();
  _messages.pop_front();
}

bool SendQueue::takeWantsWhole() {
  if (!_lagging || _asked || !_messages.empty()) return false;
  _asked = true;
  return true;
}

bool SendQueue::fits(const OutgoingMessage& message) const {
  return _messages.empty() ||
         (_messages.size() < _limits.messages && _bytes + message.text->size() <= _limits.bytes);
}

void SendQueue::dropWaiting() {
  while (_messages.size() > 1) {
    _bytes -= _messages.back().text->size();
    _messages.pop_back();
  }
}

}  // namespace settings
