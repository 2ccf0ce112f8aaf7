#pragma once

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// Lays the source over the target, scaled to fill the rectangle (in the target's pixels). A smaller
// picture is the mean of what it stands for, a larger one is interpolated; one that keeps its size
// and lies on whole pixels keeps its pixels. Threads: any, with a target that nobody else uses.
void drawScaled(const ImagePixels& source, const Rect& rect, ImagePixels& target);

}  // namespace platform
