#pragma once

#include <string_view>

#include "platform/uikit/drawing/ColorComponents.h"

namespace platform {

// A system colour with its values for light and dark appearance.
struct SystemColor {
  std::string_view name;
  ColorComponents light;
  ColorComponents dark;
};

// Returns null if there is no such colour.
const SystemColor* findSystemColor(std::string_view name) noexcept;

}  // namespace platform
