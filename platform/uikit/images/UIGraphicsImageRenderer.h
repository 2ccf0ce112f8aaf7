#pragma once

#include <functional>
#include <memory>

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/CGContext.h"

namespace platform {

class UIImage;

struct UIGraphicsImageRendererFormat {
  double scale = 0;  // pixels per point; 0 is the main screen's
  bool opaque = false;
};

// Makes images by drawing. Threads: any with a scale of its own, main with the screen's.
class UIGraphicsImageRenderer {
 public:
  explicit UIGraphicsImageRenderer(Size size, UIGraphicsImageRendererFormat format = {});

  // Opens a context of the size, lets the actions draw into it, and gives what it holds then.
  // Empty, and the actions do not run, where the size has no pixels or more than are allowed.
  std::shared_ptr<UIImage> imageWithActions(const std::function<void(CGContext&)>& actions) const;

 private:
  Size _size;
  UIGraphicsImageRendererFormat _format;
};

}  // namespace platform
