#include "platform/uikit/controls/UISwitch.h"

namespace platform {

void UISwitch::setOn(bool on, bool /*animated*/) {
  assign(_on, on);
}

void UISwitch::setOnTintColor(std::shared_ptr<UIColor> color) {
  assign(_onTintColor, std::move(color));
}

bool UISwitch::userSetOn(bool on) {
  if (!acceptsTouches()) return false;
  if (assign(_on, on)) sendActionsForControlEvents(UIControlEventValueChanged);
  return true;
}

}  // namespace platform
