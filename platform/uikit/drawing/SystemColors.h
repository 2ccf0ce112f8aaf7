#pragma once

#include <string_view>

#include "platform/uikit/drawing/ColorComponents.h"

namespace platform {

// A colour of the system: what it resolves to in light and in dark appearance.
struct SystemColor {
  std::string_view name;
  ColorComponents light;
  ColorComponents dark;
};

// Null where there is none of that name.
const SystemColor* findSystemColor(std::string_view name) noexcept;

}  // namespace platform
