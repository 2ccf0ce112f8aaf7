#include "platform/uikit/images/ImageShapes.h"

#include <array>

#include "platform/uikit/images/PixelBlending.h"

namespace platform {
namespace {

// The length of the corner, as a fraction of the side, and its exponent. The corner is the curve
// u^n + v^n = 1 in a square of that length. With n above 2, its curvature is zero where it meets
// the straight edge. With these values, it is as deep as a round corner of 0.225 sides.
constexpr double cornerLength = 0.345;
constexpr double cornerExponent = 3.27;

// Returns the distance of a position from the curve, in corner lengths; negative inside. u and v
// start at the inner end of the corner's square.
double distanceToCorner(double u, double v) {
  const double power = std::pow(u, cornerExponent) + std::pow(v, cornerExponent);
  const double value = std::pow(power, 1 / cornerExponent);
  if (value <= 0) return -1;
  const double slope =
      std::hypot(std::pow(u / value, cornerExponent - 1), std::pow(v / value, cornerExponent - 1));
  return (value - 1) / slope;
}

// Returns the coverage of the pixel that is x and y pixels from the corner.
double coverageInCorner(double x, double y, double length) {
  const double u = 1 - (x + 0.5) / length;
  const double v = 1 - (y + 0.5) / length;
  if (u <= 0 || v <= 0) return 1;
  return std::clamp(0.5 - distanceToCorner(u, v) * length, 0.0, 1.0);
}

}  // namespace

void cutOutIconShape(ImagePixels& pixels) {
  const double length = cornerLength * std::min(pixels.width, pixels.height);
  const auto reach = static_cast<std::uint32_t>(std::ceil(length));
  for (std::uint32_t y = 0; y < reach; ++y) {
    for (std::uint32_t x = 0; x < reach; ++x) {
      const double covered = coverageInCorner(x, y, length);
      if (covered >= 1) continue;
      const std::uint32_t right = pixels.width - 1 - x;
      const std::size_t above = std::size_t{pixels.width} * y;
      const std::size_t below = std::size_t{pixels.width} * (pixels.height - 1 - y);
      for (const std::size_t at : {above + x, above + right, below + x, below + right}) {
        std::uint8_t& alpha = pixels.rgba[at * bytesPerPixel + 3];
        alpha = byteOf(alpha / 255.0 * covered);
      }
    }
  }
}

void tintPixels(ImagePixels& pixels, const ColorComponents& color) {
  const std::array<std::uint8_t, 3> parts = {byteOf(color.red), byteOf(color.green),
                                             byteOf(color.blue)};
  for (std::size_t at = 0; at < pixels.rgba.size(); at += bytesPerPixel) {
    std::ranges::copy(parts, &pixels.rgba[at]);
    pixels.rgba[at + 3] = byteOf(pixels.rgba[at + 3] / 255.0 * color.alpha);
  }
}

}  // namespace platform
