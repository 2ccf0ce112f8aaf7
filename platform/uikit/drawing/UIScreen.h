#pragma once

#include <memory>

#include "platform/foundation/objects/Object.h"
#include "platform/uikit/drawing/Geometry.h"

namespace platform {

// The device's screen, as described by its traits. Threads: main.
class UIScreen : public Object {
  PLATFORM_CLASS(UIScreen)

 public:
  // One per process.
  static std::shared_ptr<UIScreen> mainScreen();

  Rect bounds() const;   // in points
  double scale() const;  // pixels per point
};

}  // namespace platform
