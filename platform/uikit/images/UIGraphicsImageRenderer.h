#pragma once

#include <functional>
#include <memory>

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/CGContext.h"

namespace platform {

class UIImage;

struct UIGraphicsImageRendererFormat {
  double scale = 0;  // pixels per point; 0 for the main screen's scale
  bool opaque = false;
};

// Makes images by drawing. Threads: any if the scale is set, main if it is the screen's.
class UIGraphicsImageRenderer {
 public:
  explicit UIGraphicsImageRenderer(Size size, UIGraphicsImageRendererFormat format = {});

  // Calls the actions with a context of the size and returns the resulting image. If the size has
  // no pixels or too many, returns an empty pointer and does not call the actions.
  std::shared_ptr<UIImage> imageWithActions(const std::function<void(CGContext&)>& actions) const;

 private:
  Size _size;
  UIGraphicsImageRendererFormat _format;
};

}  // namespace platform
