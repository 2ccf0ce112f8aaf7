#pragma once

#include <optional>
#include <utility>

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

class UIColor;
class UIImage;

// A bitmap that is drawn into, in points from the top left corner. Everything is drawn over what
// is there, with smooth edges; what lies outside of the bitmap, or has no finite place, is left
// out. Threads: one at a time; a colour of the system is resolved on the main thread.
class CGContext {
 public:
  // A bitmap of that size in points, rounded up to whole pixels: black where it is opaque (and
  // stays so), else transparent. scale is pixels per point. Nothing where the size is not positive
  // or not within the limits of ImagePixels.h.
  static std::optional<CGContext> create(Size size, double scale, bool opaque);

  void fillRect(Rect rect, const UIColor& color);
  // Round corners of that radius, at most half of the shorter side.
  void fillRoundedRect(Rect rect, double radius, const UIColor& color);
  // Scaled to fill the rectangle. False where the image has no pixels: a symbol, or what does not
  // decode.
  bool drawImage(const UIImage& image, Rect rect);

  const ImagePixels& pixels() const noexcept { return _pixels; }
  // The bitmap; the context is not to be used afterwards.
  ImagePixels takePixels() noexcept { return std::move(_pixels); }

 private:
  CGContext(ImagePixels pixels, double scale) : _pixels(std::move(pixels)), _scale(scale) {}

  ImagePixels _pixels;
  double _scale;
};

}  // namespace platform
