#pragma once

namespace platform {

// Red, green, blue and alpha, normally 0 to 1. Not clamped.
struct ColorComponents {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  friend bool operator==(const ColorComponents&, const ColorComponents&) = default;
};

}  // namespace platform
