#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/uikit/views/UIView.h"

namespace platform {

// Bits of control events.
enum UIControlEvents : std::uint32_t {
  UIControlEventTouchUpInside = 1U << 6U,
  UIControlEventValueChanged = 1U << 12U,
  UIControlEventEditingDidBegin = 1U << 16U,
  UIControlEventEditingChanged = 1U << 17U,
  UIControlEventEditingDidEnd = 1U << 18U,
  UIControlEventEditingDidEndOnExit = 1U << 19U,
};

// A view that the user works. What a program sets sends no action; the functions whose names begin
// with "user" stand for the user's hand and do. Threads: main.
class UIControl : public UIView {
  PLATFORM_CLASS(UIControl)

 public:
  bool isEnabled() const noexcept { return _enabled; }
  virtual void setEnabled(bool enabled);
  bool isSelected() const noexcept { return _selected; }
  void setSelected(bool selected);
  bool isHighlighted() const noexcept { return _highlighted; }
  void setHighlighted(bool highlighted);
  // As of a view, and enabled.
  bool acceptsTouches() const override;

  // The target is not kept alive. The action is a selector with no, one (the sender) or two (the
  // sender and the event, which is none) arguments. The same triple given twice counts once.
  void addTarget(const std::shared_ptr<Object>& target, std::string_view action,
                 std::uint32_t events);
  // An empty target or action stands for all.
  void removeTarget(const std::shared_ptr<Object>& target, std::string_view action,
                    std::uint32_t events);
  // Sends the actions of every target that is registered for one of the events and still lives, in
  // the order in which they were added. Raises as Object::perform where a target does not offer
  // its action.
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
