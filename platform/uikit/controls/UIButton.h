#pragma once

#include <optional>
#include <string>

#include "platform/uikit/controls/UIControl.h"

namespace platform {

// Threads: main.
class UIButton : public UIControl {
  PLATFORM_CLASS(UIButton)

 public:
  const std::optional<std::string>& title() const noexcept { return _title; }
  void setTitle(std::optional<std::string> title);

  // User input: sends touchUpInside. Returns false if the button cannot be touched.
  bool userTap();

 private:
  std::optional<std::string> _title;
};

}  // namespace platform
