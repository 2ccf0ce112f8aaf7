#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/Geometry.h"

namespace platform {

class UIView;

enum class UIGestureRecognizerState : std::uint8_t {
  possible = 0,
  began = 1,
  changed = 2,
  ended = 3,
  cancelled = 4,
  failed = 5,
};

// Watches the touches of the view that it is added to, which owns it. The application simulates the
// finger: it calls the touch functions with points in the root's coordinates. Threads: main.
class UIGestureRecognizer : public Object {
  PLATFORM_CLASS(UIGestureRecognizer)

 public:
  virtual bool initWithTarget(const std::shared_ptr<Object>& target, std::string_view action);

  // Does not keep the target alive. The action has no argument or one, the recogniser.
  void addTarget(const std::shared_ptr<Object>& target, std::string_view action);
  std::shared_ptr<UIView> view() const { return _view.lock(); }
  UIGestureRecognizerState state() const noexcept { return _state; }
  bool isEnabled() const noexcept { return _enabled; }
  void setEnabled(bool enabled);  // disabling cancels the current gesture
  // Whether a recognised touch is not delivered to the view (a row is then not tapped).
  bool cancelsTouchesInView() const noexcept { return _cancelsTouchesInView; }
  void setCancelsTouchesInView(bool cancels) noexcept { _cancelsTouchesInView = cancels; }
  // Returns the last touch in the view's coordinates; in the root's if the view is empty.
  Point locationInView(const std::shared_ptr<UIView>& view) const;
  // Whether the current or last touch was recognised.
  bool hasRecognized() const noexcept { return _recognized; }

  void touchBegan(Point point);
  void touchMoved(Point point);
  void touchEnded();
  void touchCancelled();

 protected:
  virtual void handleTouchBegan() {}
  virtual void handleTouchMoved(Point /*from*/) {}
  virtual void handleTouchEnded() {}
  virtual void handleTouchCancelled() {}
  // Sends the actions for the states began, changed, ended and cancelled.
  void setState(UIGestureRecognizerState state);
  Point location() const noexcept { return _location; }

 private:
  friend class UIView;

  struct TargetAction {
    std::weak_ptr<Object> target;
    std::string action;
  };
  std::vector<TargetAction> _targets;
  std::weak_ptr<UIView> _view;
  UIGestureRecognizerState _state = UIGestureRecognizerState::possible;
  Point _location;
  bool _enabled = true;
  bool _cancelsTouchesInView = true;
  bool _recognized = false;
};

}  // namespace platform
