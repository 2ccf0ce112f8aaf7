#include "settings/device/Painting.h"

namespace settings {

double distanceToDisc(Position at, Position centre, double radius) {
  return std::hypot(at.x - centre.x, at.y - centre.y) - radius;
}

double distanceToRing(Position at, Position centre, double radius, double width) {
  return std::abs(distanceToDisc(at, centre, radius)) - width / 2;
}

double distanceToStroke(Position at, Position from, Position to, double width) {
  const Position along{to.x - from.x, to.y - from.y};
  const double length = along.x * along.x + along.y * along.y;
  const double dot = (at.x - from.x) * along.x + (at.y - from.y) * along.y;
  const double part = length > 0.0 ? std::clamp(dot / length, 0.0, 1.0) : 0.0;
  return distanceToDisc(at, {from.x + part * along.x, from.y + part * along.y}, width / 2);
}

double distanceToBox(Position at, Position centre, Position halfSize, double cornerRadius) {
  const double dx = std::abs(at.x - centre.x) - halfSize.x + cornerRadius;
  const double dy = std::abs(at.y - centre.y) - halfSize.y + cornerRadius;
  const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
  return outside + std::min(std::max(dx, dy), 0.0) - cornerRadius;
}

Canvas::Canvas(int width, int height, Paint background) : _width(width), _height(height) {
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  _pixels.reserve(count * 4);
  for (std::size_t index = 0; index < count; ++index) {
    _pixels.insert(_pixels.end(),
                   {background.red, background.green, background.blue, background.alpha});
  }
}

void Canvas::blend(int x, int y, Paint paint, double coverage) {
  const auto index =
      static_cast<std::size_t>(y) * static_cast<std::size_t>(_width) + static_cast<std::size_t>(x);
  std::uint8_t* pixel = &_pixels[index * 4];
  const double above = coverage * paint.alpha / 255.0;
  const double below = pixel[3] / 255.0 * (1.0 - above);
  const double sum = above + below;
  if (sum <= 0.0) return;
  const auto mix = [&](std::uint8_t over, std::uint8_t under) {
    return static_cast<std::uint8_t>(std::lround((over * above + under * below) / sum));
  };
  pixel[0] = mix(paint.red, pixel[0]);
  pixel[1] = mix(paint.green, pixel[1]);
  pixel[2] = mix(paint.blue, pixel[2]);
  pixel[3] = static_cast<std::uint8_t>(std::lround(sum * 255.0));
}

}  // namespace settings
