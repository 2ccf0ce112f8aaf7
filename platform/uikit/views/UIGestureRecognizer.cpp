#include "platform/uikit/views/UIGestureRecognizer.h"

#include "platform/uikit/views/TargetAction.h"
#include "platform/uikit/views/UIView.h"

namespace platform {

bool UIGestureRecognizer::initWithTarget(const std::shared_ptr<Object>& target,
                                         std::string_view action) {
  if (!init()) return false;
  addTarget(target, action);
  return true;
}

void UIGestureRecognizer::addTarget(const std::shared_ptr<Object>& target,
                                    std::string_view action) {
  if (target && !action.empty()) _targets.push_back({target, std::string(action)});
}

void UIGestureRecognizer::setEnabled(bool enabled) {
  if (!enabled) touchCancelled();
  _enabled = enabled;
}

Point UIGestureRecognizer::locationInView(const std::shared_ptr<UIView>& view) const {
  if (!view) return _location;
  const Point origin = view->convertPointToView({}, nullptr);
  return {_location.x - origin.x, _location.y - origin.y};
}

void UIGestureRecognizer::touchBegan(Point point) {
  if (!_enabled) return;
  _location = point;
  _recognized = false;
  _state = UIGestureRecognizerState::possible;
  handleTouchBegan();
}

void UIGestureRecognizer::touchMoved(Point point) {
  if (!_enabled) return;
  const Point previous = std::exchange(_location, point);
  handleTouchMoved(previous);
}

void UIGestureRecognizer::touchEnded() {
  if (_enabled) handleTouchEnded();
}

void UIGestureRecognizer::touchCancelled() {
  if (_enabled) handleTouchCancelled();
}

void UIGestureRecognizer::setState(UIGestureRecognizerState state) {
  _state = state;
  if (state == UIGestureRecognizerState::possible || state == UIGestureRecognizerState::failed) {
    return;
  }
  _recognized = true;
  const auto keptAlive = shared_from_this();
  const auto targets = _targets;  // an action may change the list
  for (const TargetAction& entry : targets) {
    if (const auto target = entry.target.lock()) sendAction(*target, entry.action, keptAlive);
  }
}

}  // namespace platform
