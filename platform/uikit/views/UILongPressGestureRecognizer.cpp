#include "platform/uikit/views/UILongPressGestureRecognizer.h"

#include <cmath>

#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/Scheduler.h"

namespace platform {

namespace {

constexpr double allowableMovement = 10;  // in points

}  // namespace

bool UILongPressGestureRecognizer::isUnderWay() const noexcept {
  return state() == UIGestureRecognizerState::began || state() == UIGestureRecognizerState::changed;
}

void UILongPressGestureRecognizer::handleTouchBegan() {
  _start = location();
  const std::uint64_t touch = ++_touch;
  const auto weak = weakSelf<UILongPressGestureRecognizer>();
  Process::current().service<Scheduler>().mainAfter(_minimumPressDuration, [weak, touch] {
    if (const auto recognizer = weak.lock()) recognizer->pressed(touch);
  });
}

void UILongPressGestureRecognizer::pressed(std::uint64_t touch) {
  if (touch != _touch || state() != UIGestureRecognizerState::possible) return;
  setState(UIGestureRecognizerState::began);
}

void UILongPressGestureRecognizer::handleTouchMoved(Point /*from*/) {
  if (isUnderWay()) {
    setState(UIGestureRecognizerState::changed);
  } else if (std::hypot(location().x - _start.x, location().y - _start.y) > allowableMovement) {
    setState(UIGestureRecognizerState::failed);
  }
}

void UILongPressGestureRecognizer::handleTouchEnded() {
  ++_touch;  // invalidates running timers
  setState(isUnderWay() ? UIGestureRecognizerState::ended : UIGestureRecognizerState::failed);
}

void UILongPressGestureRecognizer::handleTouchCancelled() {
  ++_touch;
  setState(isUnderWay() ? UIGestureRecognizerState::cancelled : UIGestureRecognizerState::failed);
}

}  // namespace platform
