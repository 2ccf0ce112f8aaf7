#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/uikit/views/UIView.h"

namespace platform {

// Bit flags of control events.
enum UIControlEvents : std::uint32_t {
  UIControlEventTouchUpInside = 1U << 6U,
  UIControlEventValueChanged = 1U << 12U,
  UIControlEventEditingDidBegin = 1U << 16U,
  UIControlEventEditingChanged = 1U << 17U,
  UIControlEventEditingDidEnd = 1U << 18U,
  UIControlEventEditingDidEndOnExit = 1U << 19U,
};

// A view that the user operates. Setters do not send actions. The functions that begin with "user"
// simulate user input and do send them. Threads: main.
class UIControl : public UIView {
  PLATFORM_CLASS(UIControl)

 public:
  bool isEnabled() const noexcept { return _enabled; }
  virtual void setEnabled(bool enabled);
  bool isSelected() const noexcept { return _selected; }
  void setSelected(bool selected);
  bool isHighlighted() const noexcept { return _highlighted; }
  void setHighlighted(bool highlighted);
  // Like a view, and the control must be enabled.
  bool acceptsTouches() const override;

  // Does not keep the target alive. The action is a selector with no argument, one (the sender) or
  // two (the sender and the event, which is none). Ignores a triple that was added before.
  void addTarget(const std::shared_ptr<Object>& target, std::string_view action,
                 std::uint32_t events);
  // An empty target or action matches all.
  void removeTarget(const std::shared_ptr<Object>& target, std::string_view action,
                    std::uint32_t events);
  // Sends the actions of all living targets for any of the events, in the order in which they were
  // added. Raises like Object::perform if a target does not have the operation.
  void sendActionsForControlEvents(std::uint32_t events);

 private:
  struct TargetAction {
    std::weak_ptr<Object> target;
    std::string action;
    std::uint32_t events = 0;
  };
  std::vector<TargetAction> _targets;
  bool _enabled = true;
  bool _selected = false;
  bool _highlighted = false;
};

}  // namespace platform
