#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace settings {

struct Paint {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  std::uint8_t alpha = 255;
};

struct Position {
  double x = 0.0;
  double y = 0.0;
};

// How far a position lies outside a form (negative: inside), in the unit of the position.
double distanceToDisc(Position at, Position centre, double radius);
double distanceToRing(Position at, Position centre, double radius, double width);
double distanceToStroke(Position at, Position from, Position to, double width);
double distanceToBox(Position at, Position centre, Position halfSize, double cornerRadius);

// A picture that is painted form by form, with smooth edges. Positions run from 0 to 1 over the
// shorter side, from the top left corner.
class Canvas {
 public:
  Canvas(int width, int height, Paint background);

  int width() const noexcept { return _width; }
  int height() const noexcept { return _height; }
  // Rows from the top, four bytes a pixel: red, green, blue, alpha.
  const std::vector<std::uint8_t>& pixels() const noexcept { return _pixels; }

  // Paints where `distance(position)` is negative.
  template <class Distance>
  void fill(Paint paint, Distance distance) {
    const double unit = std::min(_width, _height);
    for (int y = 0; y < _height; ++y) {
      for (int x = 0; x < _width; ++x) {
        const Position at{(x + 0.5) / unit, (y + 0.5) / unit};
        const double coverage = std::clamp(0.5 - distance(at) * unit, 0.0, 1.0);
        if (coverage > 0.0) blend(x, y, paint, coverage);
      }
    }
  }

 private:
  void blend(int x, int y, Paint paint, double coverage);

  int _width;
  int _height;
  std::vector<std::uint8_t> _pixels;
};

// The encoded picture; empty where the codec refuses, which it does for lack of memory only.
std::string encodePng(const Canvas& canvas);
std::string encodeJpeg(const Canvas& canvas, double quality);  // from 0 to 1

}  // namespace settings
