#pragma once

#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// Makes everything outside of the shape of an application icon transparent: a rectangle whose
// corners join the straight edges with continuous curvature.
void cutOutIconShape(ImagePixels& pixels);

// Sets each pixel to the colour; its alpha is multiplied by the colour's alpha.
void tintPixels(ImagePixels& pixels, const ColorComponents& color);

}  // namespace platform
