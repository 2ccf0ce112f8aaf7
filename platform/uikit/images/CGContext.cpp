#include "platform/uikit/images/CGContext.h"

#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/ImageScaler.h"
#include "platform/uikit/images/PixelBlending.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {
namespace {

Ink inkOf(const UIColor& color) {
  const ColorComponents parts = color.components();
  const auto kept = [](double part) { return part > 0 ? std::min(part, 1.0) : 0.0; };
  return {kept(parts.red), kept(parts.green), kept(parts.blue), kept(parts.alpha)};
}

Rect scaled(const Rect& rect, double scale) {
  return {rect.x * scale, rect.y * scale, rect.width * scale, rect.height * scale};
}

// Blends the ink over every pixel of the rectangle, weighted by coverage(x, y).
template <class Coverage>
void paint(ImagePixels& pixels, const Rect& rect, const Ink& ink, Coverage coverage) {
  const PixelRange range = PixelRange::of(rect, pixels);
  for (std::uint32_t y = range.top; y < range.bottom; ++y) {
    std::uint8_t* row = &pixels.rgba[bytesPerPixel * pixels.width * y];
    for (std::uint32_t x = range.left; x < range.right; ++x) {
      const double covered = coverage(x, y);
      if (covered <= 0) continue;
      blendPixel(row + bytesPerPixel * x, {ink.red, ink.green, ink.blue, ink.alpha * covered});
    }
  }
}

// Returns the distance of a position from a rounded box; negative inside.
double distanceToRoundedBox(Point at, const Rect& box, double radius) {
  const double x = std::abs(at.x - box.x - box.width / 2) - box.width / 2 + radius;
  const double y = std::abs(at.y - box.y - box.height / 2) - box.height / 2 + radius;
  return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
}

}  // namespace

std::optional<CGContext> CGContext::create(Size size, double scale, bool opaque) {
  const double width = std::ceil(size.width * scale);
  const double height = std::ceil(size.height * scale);
  constexpr double longest = maximumImageSide;
  if (!(scale > 0) || !(width > 0 && width <= longest) || !(height > 0 && height <= longest)) {
    return std::nullopt;
  }
  ImagePixels pixels{static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), {}};
  if (refusalOfImageSize(pixels.width, pixels.height)) return std::nullopt;
  pixels.rgba.resize(bytesPerPixel * pixels.width * pixels.height);
  if (opaque) {
    for (std::size_t at = 3; at < pixels.rgba.size(); at += bytesPerPixel) pixels.rgba[at] = 255;
  }
  return CGContext(std::move(pixels), scale);
}

void CGContext::fillRect(Rect rect, const UIColor& color) {
  const Rect area = scaled(rect, _scale);
  paint(_pixels, area, inkOf(color), [&](std::uint32_t x, std::uint32_t y) {
    return coverageOfPixel(x, area.x, area.maxX()) * coverageOfPixel(y, area.y, area.maxY());
  });
}

void CGContext::fillRoundedRect(Rect rect, double radius, const UIColor& color) {
  const Rect area = scaled(rect, _scale);
  const double largest = std::min(area.width, area.height) / 2;
  const double kept = radius > 0 ? std::min(radius * _scale, largest) : 0;
  paint(_pixels, area, inkOf(color), [&](std::uint32_t x, std::uint32_t y) {
    return std::clamp(0.5 - distanceToRoundedBox({x + 0.5, y + 0.5}, area, kept), 0.0, 1.0);
  });
}

bool CGContext::drawImage(const UIImage& image, Rect rect) {
  const auto source = image.decodedPixels();
  if (!source) return false;
  drawScaled(*source, scaled(rect, _scale), _pixels);
  return true;
}

}  // namespace platform
