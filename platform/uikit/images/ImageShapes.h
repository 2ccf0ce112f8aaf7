#pragma once

#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// Makes transparent what lies outside the shape of an application's icon: a rectangle whose
// corners leave the straight edges with no jump in curvature.
void cutOutIconShape(ImagePixels& pixels);

// Gives every pixel the colour; its alpha is the pixel's times the colour's.
void tintPixels(ImagePixels& pixels, const ColorComponents& color);

}  // namespace platform
