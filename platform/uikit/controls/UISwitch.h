#pragma once

#include "platform/uikit/controls/UIControl.h"

namespace platform {

// Threads: main.
class UISwitch : public UIControl {
  PLATFORM_CLASS(UISwitch)

 public:
  bool isOn() const noexcept { return _on; }
  void setOn(bool on, bool animated = false);
  const std::shared_ptr<UIColor>& onTintColor() const noexcept { return _onTintColor; }
  void setOnTintColor(std::shared_ptr<UIColor> color);
  Size intrinsicContentSize() const override { return {51, 31}; }

  // User input: sends valueChanged if the value changes. Returns false if the switch cannot be
  // touched.
  bool userSetOn(bool on);

 private:
  bool _on = false;
  std::shared_ptr<UIColor> _onTintColor;
};

}  // namespace platform
