#pragma once

#include <cstdint>
#include <memory>

#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova {

// An icon in the shape of the system's icons: a square of the colour, of 29 points for format 0 and
// of 40 for every other, with the glyph in its middle, as large as four fifths of the side allow at
// the glyph's own proportions. Without a colour the square is transparent; without a glyph, or with
// one that has no pixels, it stays empty. Empty where the screen's scale makes no image.
// Threads: main.
std::shared_ptr<platform::UIImage> iconFromColorAndGlyph(
    const std::shared_ptr<platform::UIColor>& color, std::int64_t format,
    const std::shared_ptr<platform::UIImage>& glyph);

}  // namespace zentrova
