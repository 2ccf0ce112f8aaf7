#pragma once

#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// Draws the source over the target, scaled to fill the rectangle (in pixels of the target).
// Averages pixels when it shrinks and interpolates when it enlarges. If the size is unchanged and
// aligned to whole pixels, copies pixels exactly. Threads: any, if no other thread uses the target.
void drawScaled(const ImagePixels& source, const Rect& rect, ImagePixels& target);

}  // namespace platform
