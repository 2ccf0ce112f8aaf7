#pragma once

#include <optional>
#include <utility>

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

class UIColor;
class UIImage;

// A bitmap to draw into, with coordinates in points from the top left corner. Drawing is blended
// with the existing content and has smooth edges. Anything outside of the bitmap or without a
// finite position is ignored. Threads: one at a time; system colours are resolved on the main
// thread.
class CGContext {
 public:
  // Makes a bitmap with that size in points, rounded up to whole pixels. An opaque bitmap is black
  // and stays opaque; others are transparent. scale is in pixels per point. Returns nothing if the
  // size is not positive or exceeds the limits of ImagePixels.h.
  static std::optional<CGContext> create(Size size, double scale, bool opaque);

  void fillRect(Rect rect, const UIColor& color);
  // The radius is limited to half of the shorter side.
  void fillRoundedRect(Rect rect, double radius, const UIColor& color);
  // Scales the image to fill the rectangle. Returns false if the image has no pixels: it is a
  // symbol or cannot be decoded.
  bool drawImage(const UIImage& image, Rect rect);

  const ImagePixels& pixels() const noexcept { return _pixels; }
  // Returns the bitmap. Do not use the context afterwards.
  ImagePixels takePixels() noexcept { return std::move(_pixels); }

 private:
  CGContext(ImagePixels pixels, double scale) : _pixels(std::move(pixels)), _scale(scale) {}

  ImagePixels _pixels;
  double _scale;
};

}  // namespace platform
