#include "platform/uikit/controls/UIButton.h"

namespace platform {

void UIButton::setTitle(std::optional<std::string> title) {
  assign(_title, std::move(title));
}

bool UIButton::userTap() {
  if (!acceptsTouches()) return false;
  sendActionsForControlEvents(UIControlEventTouchUpInside);
  return true;
}

}  // namespace platform
