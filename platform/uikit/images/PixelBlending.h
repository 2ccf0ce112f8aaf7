#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// A colour to blend, not premultiplied. Each component is 0 to 1.
struct Ink {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;
};

// NaN becomes 0.
inline std::uint8_t byteOf(double part) {
  return static_cast<std::uint8_t>(std::lround((part > 0 ? std::min(part, 1.0) : 0.0) * 255));
}

// Blends the ink over the four bytes of a pixel.
inline void blendPixel(std::uint8_t* pixel, const Ink& ink) {
  const double below = pixel[3] / 255.0 * (1 - ink.alpha);
  const double alpha = ink.alpha + below;
  if (alpha <= 0) return;
  const auto mixed = [&](double above, std::uint8_t old) {
    return byteOf((above * ink.alpha + old / 255.0 * below) / alpha);
  };
  pixel[0] = mixed(ink.red, pixel[0]);
  pixel[1] = mixed(ink.green, pixel[1]);
  pixel[2] = mixed(ink.blue, pixel[2]);
  pixel[3] = byteOf(alpha);
}

// The pixels of a bitmap that a rectangle touches.
struct PixelRange {
  std::uint32_t left = 0;
  std::uint32_t top = 0;
  std::uint32_t right = 0;   // exclusive
  std::uint32_t bottom = 0;  // exclusive

  // Empty if the rectangle is outside, has no area or is not finite.
  static PixelRange of(const Rect& rect, const ImagePixels& pixels) {
    if (!(rect.width > 0) || !(rect.height > 0)) return {};
    const auto inside = [](double at, std::uint32_t end) {
      return static_cast<std::uint32_t>(std::clamp(at, 0.0, static_cast<double>(end)));
    };
    if (std::isnan(rect.x + rect.width) || std::isnan(rect.y + rect.height)) return {};
    return {inside(std::floor(rect.x), pixels.width), inside(std::floor(rect.y), pixels.height),
            inside(std::ceil(rect.maxX()), pixels.width),
            inside(std::ceil(rect.maxY()), pixels.height)};
  }
};

// Returns the overlap of [at, at + 1] with [start, end], from 0 to 1.
inline double coverageOfPixel(std::uint32_t at, double start, double end) {
  return std::clamp(std::min(end, at + 1.0) - std::max(start, static_cast<double>(at)), 0.0, 1.0);
}

}  // namespace platform
