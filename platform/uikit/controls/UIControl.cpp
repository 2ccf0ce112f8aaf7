#include "platform/uikit/controls/UIControl.h"

#include <algorithm>

#include "platform/uikit/views/TargetAction.h"

namespace platform {

void UIControl::setEnabled(bool enabled) {
  assign(_enabled, enabled);
}

void UIControl::setSelected(bool selected) {
  assign(_selected, selected);
}

void UIControl::setHighlighted(bool highlighted) {
  assign(_highlighted, highlighted);
}

bool UIControl::acceptsTouches() const {
  return _enabled && UIView::acceptsTouches();
}

void UIControl::addTarget(const std::shared_ptr<Object>& target, std::string_view action,
                          std::uint32_t events) {
  if (!target || action.empty()) return;
  const bool known = std::ranges::any_of(_targets, [&](const TargetAction& entry) {
    return entry.target.lock() == target && entry.action == action && entry.events == events;
  });
  if (!known) _targets.push_back({target, std::string(action), events});
}

void UIControl::removeTarget(const std::shared_ptr<Object>& target, std::string_view action,
                             std::uint32_t events) {
  for (TargetAction& entry : _targets) {
    if (target && entry.target.lock() != target) continue;
    if (!action.empty() && entry.action != action) continue;
    entry.events &= ~events;
  }
  std::erase_if(_targets, [](const TargetAction& entry) { return entry.events == 0; });
}

void UIControl::sendActionsForControlEvents(std::uint32_t events) {
  const auto keptAlive = shared_from_this();
  const auto targets = _targets;  // an action may change the list
  for (const TargetAction& entry : targets) {
    if ((entry.events & events) == 0) continue;
    if (const auto target = entry.target.lock()) sendAction(*target, entry.action, keptAlive);
  }
}

}  // namespace platform
