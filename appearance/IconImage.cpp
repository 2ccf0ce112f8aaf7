#include "appearance/IconImage.h"

#include <cmath>

#include "platform/uikit/drawing/UIScreen.h"
#include "platform/uikit/images/UIGraphicsImageRenderer.h"

namespace zentrova {

using platform::CGContext;
using platform::Rect;
using platform::Size;
using platform::UIImage;

namespace {

constexpr float bigSide = 40.0F;
constexpr float smallSide = 29.0F;

// In single precision: in double, four fifths of 40 are slightly more than 32, which gives 33.
double glyphSide(float side) {
  constexpr float share = 0.8F;
  return static_cast<double>(std::ceil(side * share));
}

Size fitted(Size glyph, double side) {
  if (glyph.width > glyph.height) return {side, side / (glyph.width / glyph.height)};
  if (glyph.height > glyph.width) return {side / (glyph.height / glyph.width), side};
  return {side, side};
}

Rect glyphRect(const UIImage& glyph, float iconSide) {
  const auto side = static_cast<double>(iconSide);
  const Size size = fitted(glyph.size(), glyphSide(iconSide));
  return {(side - size.width) / 2, (side - size.height) / 2, size.width, size.height};
}

}  // namespace

std::shared_ptr<UIImage> iconFromColorAndGlyph(const std::shared_ptr<platform::UIColor>& color,
                                               std::int64_t format,
                                               const std::shared_ptr<UIImage>& glyph) {
  const float iconSide = format != 0 ? bigSide : smallSide;
  const auto side = static_cast<double>(iconSide);
  const platform::UIGraphicsImageRenderer renderer({side, side});
  const auto image = renderer.imageWithActions([&](CGContext& context) {
    if (color) context.fillRect({0, 0, side, side}, *color);
    if (glyph) context.drawImage(*glyph, glyphRect(*glyph, iconSide));
  });
  if (!image) return nullptr;
  return image->applicationIconImageForFormat(format, true,
                                              platform::UIScreen::mainScreen()->scale());
}

}  // namespace zentrova
