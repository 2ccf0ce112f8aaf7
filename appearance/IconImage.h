#pragma once

#include <cstdint>
#include <memory>

#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova {

// An icon in the shape of the system's icons: a square of the colour, 29 points wide for format 0
// and 40 for any other, with the glyph in the middle. The glyph is scaled to four fifths of the
// side and keeps its proportions. Without a colour the square is transparent; without a glyph, or
// with one that has no pixels, it stays plain. Empty if no image can be made at the screen's scale.
// Threads: main.
std::shared_ptr<platform::UIImage> iconFromColorAndGlyph(
    const std::shared_ptr<platform::UIColor>& color, std::int64_t format,
    const std::shared_ptr<platform::UIImage>& glyph);

}  // namespace zentrova
